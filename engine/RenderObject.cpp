#include "engine/3DObject.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vyr
{
namespace
{
const cColor colorWithoutSurface(1.0f, 0.0f, 0.0f, 1.0f);

int CountIndices(const std::vector<c3DObject::cPolygon> &polygons)
{
    size_t count = 0;
    for (const c3DObject::cPolygon &polygon : polygons)
        count += polygon.mIndices.size();
    return int(count);
}

int FirstTexture(const std::vector<c3DObject::cPolygon> &polygons)
{
    const bool hasSurface = !polygons.empty() && polygons[0].mSurface;
    return hasSurface ? polygons[0].mSurface->mTexture : -1;
}

void Store(float *destination, const cVector3 &vector)
{
    destination[0] = vector.x;
    destination[1] = vector.y;
    destination[2] = vector.z;
}

void Store(float *destination, const cColor &color)
{
    destination[0] = color.r;
    destination[1] = color.g;
    destination[2] = color.b;
    destination[3] = color.a;
}

// The file of each render object that lives and was made from one.
std::map<c3DObject::cRenderObject *, std::string> &Files()
{
    static std::map<c3DObject::cRenderObject *, std::string> files;
    return files;
}

// The closed outline as pairs: a b, b c, c a.
int *AppendOutline(int *lines, const std::vector<int> &indices)
{
    for (size_t i = 0; i < indices.size(); i++) {
        *lines++ = indices[i];
        *lines++ = indices[i + 1 < indices.size() ? i + 1 : 0];
    }
    return lines;
}
} // namespace

c3DObject::cRenderObject::cRenderObject(const std::vector<cVertex> &vertices,
                                        const std::vector<cPolygon> &polygons)
    : mIndexCount(CountIndices(polygons)), mVertexCount(int(vertices.size())),
      mPolygonCount(int(polygons.size())), mTexture(FirstTexture(polygons))
{
    CopyVertices(vertices);
    FlattenPolygons(polygons);
}

// Filled drawing takes three indices a polygon, also of polygons that have fewer: there is room for
// them, and a vertex that they can name, in every object.
void c3DObject::cRenderObject::CopyVertices(const std::vector<cVertex> &vertices)
{
    const size_t room = std::max<size_t>(vertices.size(), 1);
    mPositions = new float[3 * room];
    mColors = new float[4 * room];
    mNormals = new float[3 * room];
    mTexCoords = new float[2 * room];
    for (size_t i = 0; i < vertices.size(); i++) {
        Store(mPositions + 3 * i, vertices[i].mPosition);
        Store(mNormals + 3 * i, vertices[i].mNormal);
        mTexCoords[2 * i] = vertices[i].mTexCoord[0];
        mTexCoords[2 * i + 1] = 1.0f - vertices[i].mTexCoord[1];
    }
}

void c3DObject::cRenderObject::FlattenPolygons(const std::vector<cPolygon> &polygons)
{
    const size_t indexRoom = std::max(size_t(mIndexCount), 3 * polygons.size());
    mIndices = new int[indexRoom];
    mLineIndices = new int[2 * size_t(mIndexCount)];
    int *indices = mIndices, *lines = mLineIndices;
    for (const cPolygon &polygon : polygons) {
        // A vertex shared by several surfaces ends with the colour of the last polygon.
        const cColor &color = polygon.mSurface ? polygon.mSurface->mColor : colorWithoutSurface;
        for (int index : polygon.mIndices) {
            *indices++ = index;
            Store(mColors + 4 * size_t(index), color);
        }
        lines = AppendOutline(lines, polygon.mIndices);
    }
    std::fill(indices, mIndices + indexRoom, 0);
}

void c3DObject::cRenderObject::NoteFile(const std::string &file) { Files()[this] = file; }

std::vector<c3DObject::cRenderObject *> c3DObject::cRenderObject::MadeFrom(const std::string &file)
{
    std::vector<cRenderObject *> objects;
    for (const auto &[object, name] : Files())
        if (name == file)
            objects.push_back(object);
    return objects;
}

void c3DObject::cRenderObject::Exchange(cRenderObject &other)
{
    std::swap(mPositions, other.mPositions);
    std::swap(mIndices, other.mIndices);
    std::swap(mLineIndices, other.mLineIndices);
    std::swap(mIndexCount, other.mIndexCount);
    std::swap(mColors, other.mColors);
    std::swap(mNormals, other.mNormals);
    std::swap(mTexCoords, other.mTexCoords);
    std::swap(mVertexCount, other.mVertexCount);
    std::swap(mPolygonCount, other.mPolygonCount);
    std::swap(mTexture, other.mTexture);
}

c3DObject::cRenderObject::~cRenderObject()
{
    Files().erase(this);
    delete[] mPositions;
    delete[] mIndices;
    delete[] mColors;
    delete[] mNormals;
    mPositions = nullptr;
    mIndices = nullptr;
    mColors = nullptr;
    mNormals = nullptr;
    // contract: mLineIndices and mTexCoords are not freed
}
} // namespace vyr
