// LWO2 objects, opened by the reader itself: its fopen is answered here with a file in memory.
//
// Promises: every index of a mesh lies in its list; normals have length 1 or 0; reading takes a
// bounded number of steps for each byte; the file is closed when the reader gives up and left open
// otherwise; textures are asked for under data/ only; a mesh written again reads the same.

#include "engine/3DObject.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "fuzz/Fuzz.h"
#include "tests/support/LWO2Builder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

using vyr::c3DObject;

namespace
{
const char objectName[] = "object";

struct cMemoryFile
{
    const char *mData = nullptr;
    size_t mSize = 0;
    off_t mPosition = 0;
    size_t mCalls = 0;
    FILE *mStream = nullptr;
};
cMemoryFile file;

ssize_t Read(void *, char *destination, size_t size)
{
    file.mCalls++;
    const size_t start = std::min(size_t(file.mPosition), file.mSize);
    const size_t count = std::min(size, file.mSize - start);
    if (count > 0)
        std::memcpy(destination, file.mData + start, count);
    file.mPosition += off_t(count);
    return ssize_t(count);
}

// As in a file on disk: the position may lie behind the end.
int Seek(void *, off64_t *offset, int whence)
{
    file.mCalls++;
    const off_t base = whence == SEEK_SET   ? 0
                       : whence == SEEK_CUR ? file.mPosition
                                            : off_t(file.mSize);
    if (base + *offset < 0)
        return -1;
    *offset = file.mPosition = base + *offset;
    return 0;
}

int Close(void *)
{
    file.mStream = nullptr;
    return 0;
}

c3DObject *ReadObject(const char *data, size_t size)
{
    file = {data, size, 0, 0, nullptr};
    return c3DObject::CreateFromLWO2(objectName);
}

// The reader leaves the file of a good object open for the rest of the run; there are many here.
void CloseFile()
{
    if (file.mStream)
        std::fclose(file.mStream);
}

// What holds for every mesh
// ------------------------------------------------------------------------

bool IsFinite(const vyr::cVector3 &v)
{
    return std::fabs(v.x) < 1e9f && std::fabs(v.y) < 1e9f && std::fabs(v.z) < 1e9f;
}

// Squares of the numbers between must be numbers of a float.
bool IsModest(const c3DObject &object)
{
    return std::all_of(object.mVertices.begin(), object.mVertices.end(),
                       [](const c3DObject::cVertex &v) { return IsFinite(v.mPosition); });
}

void ExpectUnitOrZero(const vyr::cVector3 &normal)
{
    const float length = normal.Magnitude();
    // A very short one is rounded before it is scaled.
    FUZZ_EXPECT(length == 0.0f || std::fabs(length - 1.0f) < 0.5f);
}

void ExpectConsistent(const c3DObject &object)
{
    const auto surfacesEnd = object.mSurfaces.data() + object.mSurfaces.size();
    for (const c3DObject::cPolygon &polygon : object.mPolygons) {
        for (int index : polygon.mIndices)
            FUZZ_EXPECT(index >= 0 && size_t(index) < object.mVertices.size());
        FUZZ_EXPECT(polygon.mIndices.size() < 1024);
        FUZZ_EXPECT(!polygon.mSurface || (polygon.mSurface >= object.mSurfaces.data() &&
                                          polygon.mSurface < surfacesEnd));
    }
    FUZZ_EXPECT(object.mBackupVertices.empty());
    if (!IsModest(object))
        return;
    for (const c3DObject::cPolygon &polygon : object.mPolygons)
        ExpectUnitOrZero(polygon.mNormal);
    for (const c3DObject::cVertex &vertex : object.mVertices)
        ExpectUnitOrZero(vertex.mNormal);
}

void ExpectWithinFile(const c3DObject &object, size_t size)
{
    FUZZ_EXPECT(object.mVertices.size() <= size / 12);
    FUZZ_EXPECT(object.mPolygons.size() <= size / 2);
    FUZZ_EXPECT(object.mSurfaces.size() <= size / 2);
    FUZZ_EXPECT(object.mClips.size() <= size / 8);
}

void ExpectDrawable(c3DObject &object)
{
    const std::unique_ptr<c3DObject::cRenderObject> drawn(object.CreateRenderObject());
    FUZZ_EXPECT(size_t(drawn->mVertexCount) == object.mVertices.size());
    FUZZ_EXPECT(size_t(drawn->mPolygonCount) == object.mPolygons.size());
    for (int i = 0; i < drawn->mIndexCount; i++)
        FUZZ_EXPECT(drawn->mIndices[i] >= 0 && drawn->mIndices[i] < drawn->mVertexCount);
    for (int i = 0; i < 2 * drawn->mIndexCount; i++)
        FUZZ_EXPECT(drawn->mLineIndices[i] >= 0 && drawn->mLineIndices[i] < drawn->mVertexCount);
    delete[] drawn->mLineIndices; // these two outlive their object
    delete[] drawn->mTexCoords;
}

// Written again
// ------------------------------------------------------------------------------------

bool IsSame(const vyr::cVector3 &a, const vyr::cVector3 &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::string PointsOf(const c3DObject &object)
{
    std::string body, maps = "TXUV" + lwo2::U2(2) + lwo2::S0("map");
    for (size_t i = 0; i < object.mVertices.size(); i++) {
        const c3DObject::cVertex &v = object.mVertices[i];
        body += lwo2::F4(v.mPosition.x) + lwo2::F4(v.mPosition.y) + lwo2::F4(v.mPosition.z);
        maps += lwo2::U2(int(i)) + lwo2::F4(v.mTexCoord[0]) + lwo2::F4(v.mTexCoord[1]);
    }
    return lwo2::Chunk("PNTS", body) + lwo2::Chunk("VMAP", maps);
}

std::string PolygonsOf(const c3DObject &object)
{
    std::vector<std::vector<int>> polygons;
    std::vector<std::pair<int, int>> tags;
    for (size_t i = 0; i < object.mPolygons.size(); i++) {
        const c3DObject::cPolygon &polygon = object.mPolygons[i];
        polygons.push_back(polygon.mIndices);
        if (polygon.mSurface)
            tags.push_back({int(i), int(polygon.mSurface - object.mSurfaces.data())});
    }
    return lwo2::Faces(polygons) + lwo2::PolygonTags(tags);
}

std::string Write(const c3DObject &object)
{
    std::vector<std::string> names;
    for (const c3DObject::cSurface &surface : object.mSurfaces)
        names.push_back(surface.mName);
    return lwo2::Form(lwo2::Tags(names) + PointsOf(object) + PolygonsOf(object));
}

void ExpectSame(const c3DObject &a, const c3DObject &b)
{
    FUZZ_EXPECT(a.mVertices.size() == b.mVertices.size());
    for (size_t i = 0; i < a.mVertices.size(); i++) {
        FUZZ_EXPECT(IsSame(a.mVertices[i].mPosition, b.mVertices[i].mPosition));
        FUZZ_EXPECT(std::memcmp(a.mVertices[i].mTexCoord, b.mVertices[i].mTexCoord,
                                sizeof a.mVertices[i].mTexCoord) == 0);
    }
    FUZZ_EXPECT(a.mPolygons.size() == b.mPolygons.size());
    for (size_t i = 0; i < a.mPolygons.size(); i++) {
        FUZZ_EXPECT(a.mPolygons[i].mIndices == b.mPolygons[i].mIndices);
        FUZZ_EXPECT(!a.mPolygons[i].mSurface == !b.mPolygons[i].mSurface);
    }
    FUZZ_EXPECT(a.mSurfaces.size() == b.mSurfaces.size());
}

// Indices of two bytes reach 65279; beyond, an index takes four, which polygons don't have.
void ExpectTheSameWhenWrittenAgain(const c3DObject &object)
{
    const size_t limit = 0xFF00;
    if (object.mVertices.size() > limit || object.mPolygons.size() > limit ||
        object.mSurfaces.size() > limit)
        return;
    const std::string bytes = Write(object);
    const std::unique_ptr<c3DObject> again(ReadObject(bytes.data(), bytes.size()));
    CloseFile();
    FUZZ_EXPECT(again != nullptr);
    ExpectSame(object, *again);
}
} // namespace

extern "C" FILE *__real_fopen(const char *path, const char *mode);

// The linker sends the reader's calls here, and those of the fuzzer itself too.
extern "C" FILE *__wrap_fopen(const char *path, const char *mode)
{
    if (std::strcmp(path, objectName) != 0)
        return __real_fopen(path, mode);
    file.mStream = fopencookie(nullptr, mode, {Read, nullptr, Seek, Close});
    return file.mStream;
}

extern "C" unsigned char *__wrap_stbi_load(const char *path, int *, int *, int *, int)
{
    FUZZ_EXPECT(std::strncmp(path, "data/", 5) == 0 || std::strncmp(path, "Data/", 5) == 0);
    return nullptr;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static bool hasTextures = false;
    if (!std::exchange(hasTextures, true))
        vyr::tSingleton<vyr::cTextureManager>::CreateSingleton();
    const std::unique_ptr<c3DObject> object(ReadObject(reinterpret_cast<const char *>(data), size));
    FUZZ_EXPECT(file.mCalls <= 16 + 8 * size);
    FUZZ_EXPECT((file.mStream != nullptr) == (object != nullptr));
    CloseFile();
    if (!object)
        return 0;
    ExpectConsistent(*object);
    ExpectWithinFile(*object, size);
    ExpectDrawable(*object);
    ExpectTheSameWhenWrittenAgain(*object);
    return 0;
}
