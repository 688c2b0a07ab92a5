#include "engine/3DObject.h"

#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Resources.h"

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>

// Chunks come in file order, and later ones rely on earlier ones: surfaces (TAGS) before what
// refers to them (PTAG, SURF), polygons before PTAG and VMAD, points before VMAP and VMAD, images
// (CLIP) before the surfaces that show them. A function here that returns false has met a malformed
// file.

namespace vyr
{
namespace
{
using std::FILE;

const size_t maximumPath = 200; // bytes, with the terminating zero

enum class eChunk
{
    Consumed,
    Skip, // the caller skips it, starting at the size field
    Malformed
};

// Numbers in the file are big-endian --------------------------------------------------------------

bool ReadBytes(FILE *file, void *bytes, size_t count)
{
    return std::fread(bytes, 1, count, file) == count;
}

bool ReadU4(FILE *file, uint32_t &value)
{
    unsigned char b[4];
    if (!ReadBytes(file, b, sizeof b))
        return false;
    value = uint32_t(b[0]) << 24 | uint32_t(b[1]) << 16 | uint32_t(b[2]) << 8 | uint32_t(b[3]);
    return true;
}

bool ReadI4(FILE *file, int &value)
{
    uint32_t bits = 0;
    if (!ReadU4(file, bits))
        return false;
    value = static_cast<int>(bits);
    return true;
}

bool ReadU2(FILE *file, int &value)
{
    unsigned char b[2];
    if (!ReadBytes(file, b, sizeof b))
        return false;
    value = b[0] << 8 | b[1];
    return true;
}

bool ReadFloat(FILE *file, float &value)
{
    uint32_t bits = 0;
    if (!ReadU4(file, bits))
        return false;
    value = std::bit_cast<float>(bits);
    return true;
}

// An index of 2 bytes, or of 4 when the first is 0xFF; `remaining` is lowered by its length.
bool ReadIndex(FILE *file, int &index, int &remaining)
{
    if (!ReadU2(file, index))
        return false;
    remaining -= 2;
    if (index >> 8 != 0xFF)
        return true;
    int low = 0;
    if (!ReadU2(file, low))
        return false;
    index = (index & 0xFF) << 16 | low;
    remaining -= 2;
    return true;
}

bool ReadId(FILE *file, std::string &id)
{
    char bytes[4];
    if (!ReadBytes(file, bytes, sizeof bytes))
        return false;
    id.assign(bytes, sizeof bytes);
    return true;
}

// Never backwards: a negative size would be read for ever.
bool Skip(FILE *file, int count) { return count >= 0 && std::fseek(file, count, SEEK_CUR) == 0; }

bool SkipToEven(FILE *file, int count)
{
    return count >= 0 && Skip(file, count) && Skip(file, count & 1);
}

template <typename T>
bool IsIndexOf(const std::vector<T> &list, int index)
{
    return index >= 0 && size_t(index) < list.size();
}

// Points and texture coordinates ------------------------------------------------------------------

bool ReadPosition(FILE *file, cVector3 &position)
{
    return ReadFloat(file, position.x) && ReadFloat(file, position.y) &&
           ReadFloat(file, position.z);
}

bool ReadPoints(FILE *file, uint32_t size, c3DObject &object)
{
    for (uint32_t i = 0; i < size / 12; i++) {
        c3DObject::cVertex vertex;
        if (!ReadPosition(file, vertex.mPosition))
            return false;
        object.mVertices.push_back(vertex);
    }
    return Skip(file, int(size & 1)); // other bytes behind the last whole point are not skipped
}

bool ReadTexCoord(FILE *file, float (&texCoord)[2], int &remaining)
{
    remaining -= 8;
    return ReadFloat(file, texCoord[0]) && ReadFloat(file, texCoord[1]);
}

// The common head of VMAP and VMAD; of all maps only two-dimensional texture coordinates are read.
bool ReadMapHeader(FILE *file, int &remaining, bool &isTexCoordMap)
{
    std::string type, name;
    int dimension = 0;
    if (!ReadId(file, type) || !ReadU2(file, dimension))
        return false;
    const int nameLength = c3DObject::ReadString(name, file);
    remaining -= 6 + nameLength;
    isTexCoordMap = type == "TXUV" && dimension == 2;
    return nameLength > 0 && remaining >= 0;
}

bool ReadVertexMap(FILE *file, int remaining, c3DObject &object)
{
    bool isTexCoordMap = false;
    if (!ReadMapHeader(file, remaining, isTexCoordMap))
        return false;
    if (!isTexCoordMap)
        return SkipToEven(file, remaining);
    while (remaining > 0) {
        int index = 0;
        if (!ReadIndex(file, index, remaining) || !IsIndexOf(object.mVertices, index))
            return false;
        if (!ReadTexCoord(file, object.mVertices[size_t(index)].mTexCoord, remaining))
            return false;
    }
    return remaining == 0;
}

// One polygon sees one of its vertices with a texture coordinate of its own: it gets a copy of it.
bool SplitVertex(FILE *file, int &remaining, c3DObject &object)
{
    int index = 0, polygonIndex = 0;
    if (!ReadIndex(file, index, remaining) || !ReadIndex(file, polygonIndex, remaining))
        return false;
    if (!IsIndexOf(object.mVertices, index) || !IsIndexOf(object.mPolygons, polygonIndex))
        return false;
    c3DObject::cVertex vertex = object.mVertices[size_t(index)];
    if (!ReadTexCoord(file, vertex.mTexCoord, remaining))
        return false;
    object.mVertices.push_back(vertex);
    for (int &each : object.mPolygons[size_t(polygonIndex)].mIndices)
        if (each == index)
            each = int(object.mVertices.size()) - 1;
    return true;
}

bool ReadDiscontinuousMap(FILE *file, int remaining, c3DObject &object)
{
    bool isTexCoordMap = false;
    if (!ReadMapHeader(file, remaining, isTexCoordMap))
        return false;
    if (!isTexCoordMap)
        return SkipToEven(file, remaining);
    while (remaining > 0)
        if (!SplitVertex(file, remaining, object))
            return false;
    return remaining == 0;
}

// Polygons and their surfaces ---------------------------------------------------------------------

bool ReadPolygon(FILE *file, int &remaining, c3DObject &object)
{
    int header = 0;
    if (!ReadU2(file, header))
        return false;
    remaining -= 2;
    c3DObject::cPolygon polygon;
    polygon.mIndices.resize(size_t(header & 0x3FF)); // the six bits above are flags
    for (int &index : polygon.mIndices) {
        if (!ReadU2(file, index)) // always two bytes, unlike every other index
            return false;
        remaining -= 2;
    }
    object.mPolygons.push_back(std::move(polygon));
    return true;
}

eChunk ReadPolygons(FILE *file, int remaining, c3DObject &object)
{
    std::string type;
    if (!ReadId(file, type))
        return eChunk::Malformed;
    remaining -= 4;
    if (type != "FACE") {
        // Only faces are known. The caller takes the type for a size, which ends the file here.
        return std::fseek(file, -4, SEEK_CUR) == 0 ? eChunk::Skip : eChunk::Malformed;
    }
    while (remaining > 0)
        if (!ReadPolygon(file, remaining, object))
            return eChunk::Malformed;
    return remaining == 0 ? eChunk::Consumed : eChunk::Malformed;
}

bool ReadPolygonTags(FILE *file, int remaining, c3DObject &object)
{
    std::string type;
    if (!ReadId(file, type))
        return false;
    remaining -= 4;
    if (type != "SURF")
        return SkipToEven(file, remaining);
    while (remaining > 0) {
        int polygon = 0, tag = 0;
        if (!ReadIndex(file, polygon, remaining) || !ReadU2(file, tag))
            return false;
        remaining -= 2;
        if (!IsIndexOf(object.mPolygons, polygon) || !IsIndexOf(object.mSurfaces, tag))
            return false;
        object.mPolygons[size_t(polygon)].mSurface = &object.mSurfaces[size_t(tag)];
    }
    return remaining == 0;
}

bool HasPolygonWithSurface(const c3DObject &object)
{
    for (const c3DObject::cPolygon &polygon : object.mPolygons)
        if (polygon.mSurface)
            return true;
    return false;
}

bool ReadSurfaceNames(FILE *file, int remaining, c3DObject &object)
{
    if (remaining != 0 && HasPolygonWithSurface(object))
        return false; // the list would grow under polygons that point into it
    while (remaining > 0) {
        c3DObject::cSurface surface;
        const int length = c3DObject::ReadString(surface.mName, file);
        if (length == 0)
            return false;
        remaining -= length;
        object.mSurfaces.push_back(surface);
    }
    return remaining == 0;
}

// What a surface looks like -----------------------------------------------------------------------

// The surface of that name, else the last one; null when there is none at all.
c3DObject::cSurface *FindSurface(c3DObject &object, const std::string &name)
{
    for (c3DObject::cSurface &surface : object.mSurfaces)
        if (surface.mName == name)
            return &surface;
    return object.mSurfaces.empty() ? nullptr : &object.mSurfaces.back();
}

bool ReadColor(FILE *file, cColor &color)
{
    color.a = 1.0f;
    const int envelopeLength = 2;
    return ReadFloat(file, color.r) && ReadFloat(file, color.g) && ReadFloat(file, color.b) &&
           Skip(file, envelopeLength);
}

bool IndexInBlock(const std::vector<unsigned char> &block, size_t offset, int &index)
{
    if (offset + 2 > block.size())
        return false;
    index = block[offset] << 8 | block[offset + 1];
    if (block[offset] != 0xFF)
        return true;
    if (offset + 4 > block.size())
        return false;
    index = block[offset + 1] << 16 | block[offset + 2] << 8 | block[offset + 3];
    return true;
}

// Of a block only the image matters. It is compared with the first clip alone: textured surfaces
// refer to the first clip, and one that refers to another stays untextured.
bool ReadBlock(FILE *file, int size, const c3DObject &object, c3DObject::cSurface &surface)
{
    std::vector<unsigned char> block(static_cast<size_t>(size));
    if (!ReadBytes(file, block.data(), block.size()))
        return false;
    for (size_t i = 0; i + 4 <= block.size(); i++) {
        if (std::memcmp(block.data() + i, "IMAG", 4) != 0)
            continue;
        int clip = 0;
        if (!IndexInBlock(block, i + 6, clip))
            return false;
        if (!object.mClips.empty() && object.mClips[0].mClipIndex == clip)
            surface.mTexture = object.mClips[0].mTexture;
        return true;
    }
    return true;
}

bool ReadSurfacePart(FILE *file, int &remaining, const c3DObject &object,
                     c3DObject::cSurface &surface)
{
    std::string id;
    int size = 0;
    if (!ReadId(file, id) || !ReadU2(file, size))
        return false;
    const int colorLength = 14; // whatever the stated size
    remaining -= 6 + (id == "COLR" ? colorLength : size) + (size & 1);
    const bool isRead = id == "COLR"   ? ReadColor(file, surface.mColor)
                        : id == "BLOK" ? ReadBlock(file, size, object, surface)
                                       : Skip(file, size);
    return isRead && Skip(file, size & 1);
}

bool ReadSurface(FILE *file, int remaining, c3DObject &object)
{
    std::string name, source;
    const int nameLength = c3DObject::ReadString(name, file);
    const int sourceLength = nameLength > 0 ? c3DObject::ReadString(source, file) : 0;
    c3DObject::cSurface *surface = FindSurface(object, name);
    if (sourceLength == 0 || !surface)
        return false;
    remaining -= nameLength + sourceLength;
    while (remaining > 0)
        if (!ReadSurfacePart(file, remaining, object, *surface))
            return false;
    return remaining == 0;
}

// Images ------------------------------------------------------------------------------------------

// Objects carry the paths of their author's machine: what counts begins at the last "data/".
int LoadClipTexture(const std::string &path)
{
    size_t start = path.rfind("data/");
    if (start == std::string::npos)
        start = path.rfind("Data/");
    if (start == std::string::npos)
        return -1;
    return tSingleton<cTextureManager>::GetSingleton().LoadTexture(path.substr(start), false);
}

bool ReadClipPart(FILE *file, int &remaining, int clip, c3DObject &object)
{
    std::string id;
    int size = 0;
    if (!ReadId(file, id) || !ReadU2(file, size))
        return false;
    remaining -= 6 + (size & 1);
    if (id != "STIL") {
        remaining -= size;
        return Skip(file, size) && Skip(file, size & 1);
    }
    std::string path;
    const int length = c3DObject::ReadString(path, file);
    if (length == 0)
        return false;
    remaining -= length;
    object.mClips.push_back({clip, LoadClipTexture(path)});
    return Skip(file, size & 1);
}

bool ReadClip(FILE *file, int remaining, c3DObject &object)
{
    int clip = 0;
    if (!ReadI4(file, clip))
        return false;
    remaining -= 4;
    while (remaining > 0)
        if (!ReadClipPart(file, remaining, clip, object))
            return false;
    return remaining == 0;
}

// The file ----------------------------------------------------------------------------------------

bool IsKnownTag(const std::string &tag)
{
    for (const char *known : {"PNTS", "VMAP", "VMAD", "POLS", "PTAG", "TAGS", "SURF", "CLIP"})
        if (tag == known)
            return true;
    return false;
}

eChunk ReadChunk(const std::string &tag, FILE *file, c3DObject &object)
{
    if (!IsKnownTag(tag))
        return eChunk::Skip;
    uint32_t bits = 0;
    if (!ReadU4(file, bits))
        return eChunk::Malformed;
    const int size = static_cast<int>(bits);
    if (size < 0)
        return eChunk::Malformed;
    if (tag == "POLS")
        return ReadPolygons(file, size, object);
    const bool isRead = tag == "PNTS"   ? ReadPoints(file, bits, object)
                        : tag == "VMAP" ? ReadVertexMap(file, size, object)
                        : tag == "VMAD" ? ReadDiscontinuousMap(file, size, object)
                        : tag == "PTAG" ? ReadPolygonTags(file, size, object)
                        : tag == "TAGS" ? ReadSurfaceNames(file, size, object)
                        : tag == "SURF" ? ReadSurface(file, size, object)
                                        : ReadClip(file, size, object);
    return isRead ? eChunk::Consumed : eChunk::Malformed;
}

bool SkipChunk(FILE *file)
{
    int size = 0;
    return ReadI4(file, size) && SkipToEven(file, size);
}

// The position just behind the form, in signed 32-bit arithmetic; false when this is no LWO2
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

bool ReadChunks(FILE *file, int end, c3DObject &object)
{
    while (std::ftell(file) < end) {
        std::string tag;
        if (!ReadId(file, tag))
            return false;
        const eChunk chunk = ReadChunk(tag, file, object);
        if (chunk == eChunk::Malformed || (chunk == eChunk::Skip && !SkipChunk(file)))
            return false;
        if (std::feof(file))
            break;
    }
    return true;
}

// Polygons may come before the points, so their indices are tested when all is read.
bool AreIndicesInRange(const c3DObject &object)
{
    for (const c3DObject::cPolygon &polygon : object.mPolygons)
        for (int index : polygon.mIndices)
            if (!IsIndexOf(object.mVertices, index))
                return false;
    return true;
}

FILE *OpenResource(const std::string &filename)
{
    char path[maximumPath];
    return platform::ResolveResource(filename, path, sizeof path) ? std::fopen(path, "r") : nullptr;
}
} // namespace

c3DObject *c3DObject::CreateFromLWO2(const std::string &filename)
{
    FILE *file = OpenResource(filename);
    if (!file)
        return nullptr;
    int end = 0;
    if (!ReadFormHeader(file, end)) {
        std::fclose(file);
        return nullptr;
    }
    auto *object = new c3DObject;
    if (!ReadChunks(file, end, *object) || !AreIndicesInRange(*object)) {
        std::fclose(file);
        delete object;
        return nullptr;
    }
    object->CalculateNormals();
    return object; // the file stays open for the rest of the run
}

bool c3DObject::HandleTag(const std::string &tag, FILE *file, c3DObject *object)
{
    return ReadChunk(tag, file, *object) == eChunk::Consumed;
}

int c3DObject::ReadString(std::string &text, FILE *file)
{
    int length = 0;
    for (int c = std::fgetc(file); c != '\0'; c = std::fgetc(file)) {
        if (c == EOF || length == INT_MAX - 2)
            return 0;
        text.push_back(char(c));
        length++;
    }
    if (length % 2 != 0)
        return length + 1;
    return Skip(file, 1) ? length + 2 : 0;
}
} // namespace vyr
