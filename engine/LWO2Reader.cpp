#include "engine/LWO2Reader.h"

#include "engine/LWO2Numbers.h"
#include "platform/Resources.h"

#include <algorithm>
#include <climits>
#include <memory>

namespace vyr
{
using namespace lwo2;

namespace
{
using std::FILE;

const size_t maximumPath = 200; // bytes, with the terminating zero

// Longest string; leaves headroom, so that the count of what remains cannot overflow.
const int maximumLength = INT_MAX - 0x20000;

bool IsKnownTag(const std::string &tag)
{
    for (const char *known : {"PNTS", "VMAP", "VMAD", "POLS", "PTAG", "TAGS", "SURF", "CLIP"})
        if (tag == known)
            return true;
    return false;
}

// The position just after the form, in signed 32-bit arithmetic; false when this is no LWO2
// object.
bool ReadFormHeader(FILE *file, int &end)
{
    std::string id, type;
    uint32_t size = 0;
    if (!ReadId(file, id) || id != "FORM" || !ReadU4(file, size) || !ReadId(file, type))
        return false;
    end = static_cast<int>(size + 8);
    return type == "LWO2";
}

// A form may state more than its file holds: where the last chunk is whole, so is the object. A
// skipped chunk that is cut off ends beyond the file's end.
bool IsFilesEnd(FILE *file, long position)
{
    return std::fseek(file, 0, SEEK_END) == 0 && std::ftell(file) == position;
}

FILE *OpenResource(const std::string &filename)
{
    char path[maximumPath];
    return platform::ResolveResource(filename, path, sizeof path) ? std::fopen(path, "r") : nullptr;
}
} // namespace

bool cLWO2Reader::ReadKnownChunk(const std::string &tag, uint32_t size)
{
    const int remaining = static_cast<int>(size);
    return tag == "PNTS"   ? ReadPoints(size)
           : tag == "VMAP" ? ReadVertexMap(remaining)
           : tag == "VMAD" ? ReadDiscontinuousMap(remaining)
           : tag == "PTAG" ? ReadPolygonTags(remaining)
           : tag == "TAGS" ? ReadSurfaceNames(remaining)
           : tag == "SURF" ? ReadSurface(remaining)
                           : ReadClip(remaining);
}

cLWO2Reader::eChunk cLWO2Reader::ReadChunk(const std::string &tag)
{
    if (!IsKnownTag(tag))
        return eChunk::Skip;
    uint32_t size = 0;
    if (!ReadU4(mFile, size) || size > INT_MAX)
        return eChunk::Malformed;
    if (tag == "POLS")
        return ReadPolygons(static_cast<int>(size));
    return ReadKnownChunk(tag, size) ? eChunk::Consumed : eChunk::Malformed;
}

bool cLWO2Reader::SkipChunk()
{
    int size = 0;
    return ReadI4(mFile, size) && SkipToEven(mFile, size);
}

bool cLWO2Reader::ReadChunks(int end)
{
    for (long start = std::ftell(mFile); start < end; start = std::ftell(mFile)) {
        std::string tag;
        if (!ReadId(mFile, tag))
            return IsFilesEnd(mFile, start);
        const eChunk chunk = ReadChunk(tag);
        if (chunk == eChunk::Malformed || (chunk == eChunk::Skip && !SkipChunk()))
            return false;
    }
    return true;
}

// Polygons may come before their points. What VMAD puts in an index's place is always in range.
bool cLWO2Reader::AreIndicesInRange() const
{
    return mLargestIndex < 0 || size_t(mLargestIndex) < mObject.mVertices.size();
}

namespace
{
// The object in `file`, which stays open; null when it is none.
std::unique_ptr<c3DObject> ReadObject(FILE *file)
{
    int end = 0;
    if (!ReadFormHeader(file, end))
        return nullptr;
    auto object = std::make_unique<c3DObject>();
    cLWO2Reader reader(file, *object);
    if (!reader.ReadChunks(end) || !reader.AreIndicesInRange())
        return nullptr;
    object->CalculateNormals();
    return object;
}
} // namespace

c3DObject *c3DObject::CreateFromLWO2(const std::string &filename)
{
    FILE *file = OpenResource(filename);
    if (!file)
        return nullptr;
    auto object = ReadObject(file);
    if (!object) {
        std::fclose(file);
        return nullptr;
    }
    object->mFile = filename;
    return object.release(); // contract: the file stays open for the rest of the run
}

bool c3DObject::Refresh(const std::string &filename)
{
    FILE *file = OpenResource(filename);
    if (!file)
        return false;
    const auto object = ReadObject(file);
    std::fclose(file);
    if (!object)
        return false;
    for (cRenderObject *drawn : cRenderObject::MadeFrom(filename)) {
        cRenderObject now(object->mVertices, object->mPolygons);
        drawn->Exchange(now);
        delete[] now.mLineIndices; // a render object leaves these two
        delete[] now.mTexCoords;
    }
    return true;
}

bool c3DObject::HandleTag(const std::string &tag, FILE *file, c3DObject *object)
{
    return cLWO2Reader(file, *object).ReadChunk(tag) == cLWO2Reader::eChunk::Consumed;
}

int c3DObject::ReadString(std::string &text, FILE *file)
{
    int length = 0;
    for (int c = getc_unlocked(file); c != '\0'; c = getc_unlocked(file)) {
        if (c == EOF || length == maximumLength)
            return 0;
        text.push_back(char(c));
        length++;
    }
    if (length % 2 != 0)
        return length + 1;
    return Skip(file, 1) ? length + 2 : 0;
}
} // namespace vyr
