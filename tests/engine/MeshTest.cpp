#include "engine/3DObject.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{
using vyr::c3DObject;
using vyr::cVector3;

c3DObject::cVertex Vertex(float x, float y, float z)
{
    c3DObject::cVertex vertex;
    vertex.mPosition = {x, y, z};
    return vertex;
}

c3DObject::cPolygon Polygon(std::vector<int> indices, c3DObject::cSurface *surface = nullptr)
{
    c3DObject::cPolygon polygon;
    polygon.mIndices = std::move(indices);
    polygon.mSurface = surface;
    return polygon;
}

void ExpectNear(const cVector3 &vector, float x, float y, float z)
{
    EXPECT_FLOAT_EQ(vector.x, x);
    EXPECT_FLOAT_EQ(vector.y, y);
    EXPECT_FLOAT_EQ(vector.z, z);
}

c3DObject Triangle()
{
    c3DObject object;
    object.mVertices = {Vertex(0, 0, 0), Vertex(1, 0, 0), Vertex(0, 1, 0)};
    object.mPolygons = {Polygon({0, 1, 2})};
    return object;
}

std::vector<int> Ints(const int *values, int count) { return {values, values + count}; }

// The outline and the texture coordinates outlive a render object by design; tests free them.
struct cHeld
{
    c3DObject::cRenderObject *mObject;

    explicit cHeld(c3DObject &object) : mObject(object.CreateRenderObject()) {}
    ~cHeld()
    {
        delete[] mObject->mLineIndices;
        delete[] mObject->mTexCoords;
        delete mObject;
    }
    c3DObject::cRenderObject *operator->() const { return mObject; }
};

TEST(Mesh, RecordsStartPlain)
{
    const c3DObject::cVertex vertex;
    EXPECT_EQ(vertex.mTexCoord[0], 0.0f);
    static_assert(sizeof vertex.mTexCoord == 2 * sizeof(float));
    static_assert(sizeof vertex.mReserved == 4 * sizeof(float));
    EXPECT_EQ(c3DObject::cPolygon().mSurface, nullptr);
    EXPECT_EQ(c3DObject::cSurface().mTexture, -1);
    EXPECT_EQ(c3DObject::cTexture().mTexture, -1);
}

TEST(Mesh, TriangleFacesTheViewer)
{
    c3DObject object = Triangle();
    object.CalculateNormals();
    ExpectNear(object.mPolygons[0].mNormal, 0, 0, 1);
    for (const auto &vertex : object.mVertices)
        ExpectNear(vertex.mNormal, 0, 0, 1);
}

// The second face has twice the area and looks along x: shared normals are (2, 0, 1) before
// scaling.
TEST(Mesh, LargerFacesCountMore)
{
    c3DObject object;
    object.mVertices = {Vertex(0, 0, 0), Vertex(0, 1, 0), Vertex(-1, 0, 0), Vertex(0, 0, -2)};
    object.mPolygons = {Polygon({0, 1, 2}), Polygon({1, 0, 3})};
    object.CalculateNormals();
    ExpectNear(object.mPolygons[0].mNormal, 0, 0, 1);
    ExpectNear(object.mPolygons[1].mNormal, 1, 0, 0);
    const float scale = std::sqrt(5.0f);
    ExpectNear(object.mVertices[0].mNormal, 2 / scale, 0, 1 / scale);
    ExpectNear(object.mVertices[2].mNormal, 0, 0, 1);
}

TEST(Mesh, VertexListedTwiceCountsTwice)
{
    c3DObject object;
    object.mVertices = {Vertex(0, 0, 0), Vertex(1, 0, 0), Vertex(0, 1, 0), Vertex(0, 0, 1)};
    object.mPolygons = {Polygon({0, 1, 2, 0}), Polygon({0, 2, 3})};
    object.CalculateNormals();
    const float scale = std::sqrt(5.0f);
    ExpectNear(object.mVertices[0].mNormal, 1 / scale, 0, 2 / scale);
}

TEST(Mesh, PolygonOfTwoVerticesHasNoNormal)
{
    c3DObject object;
    object.mVertices = {Vertex(1, 0, 0), Vertex(0, 1, 0)};
    object.mPolygons = {Polygon({0, 1})};
    object.CalculateNormals();
    ExpectNear(object.mPolygons[0].mNormal, 0, 0, 0);
    ExpectNear(object.mVertices[0].mNormal, 0, 0, 0);
}

// Normals are added to what the vertices hold.
TEST(Mesh, NormalsAccumulate)
{
    c3DObject object = Triangle();
    object.mVertices[0].mNormal = {1, 0, 0};
    object.CalculateNormals();
    const float half = std::sqrt(0.5f);
    ExpectNear(object.mVertices[0].mNormal, half, 0, half);
}

TEST(Mesh, BackupKeepsTheVertices)
{
    c3DObject object = Triangle();
    object.BackupVertices();
    object.mVertices[0].mPosition = {9, 9, 9};
    ASSERT_EQ(object.mBackupVertices.size(), 3u);
    ExpectNear(object.mBackupVertices[0].mPosition, 0, 0, 0);
}

// Of the first polygon, whatever the second one has.
TEST(RenderObject, TextureIsTheFirstPolygonsOrNone)
{
    c3DObject object;
    object.mVertices.resize(3);
    object.mSurfaces.resize(1);
    object.mSurfaces[0].mTexture = 7;
    object.mPolygons.resize(2);
    for (c3DObject::cPolygon &polygon : object.mPolygons)
        polygon.mIndices = {0, 1, 2};
    for (size_t shown : {size_t(0), size_t(1)}) {
        object.mPolygons[shown].mSurface = &object.mSurfaces[0];
        object.mPolygons[1 - shown].mSurface = nullptr;
        const cHeld held(object);
        EXPECT_EQ(held->mTexture, shown == 0 ? 7 : -1);
    }
}

TEST(RenderObject, HoldsTheVerticesWithTheTextureTurnedUpsideDown)
{
    c3DObject object = Triangle();
    object.mVertices[1].mNormal = {0.25f, 0.5f, 0.75f};
    object.mVertices[1].mTexCoord[0] = 0.125f;
    object.mVertices[1].mTexCoord[1] = 0.25f;
    const cHeld held(object);
    EXPECT_EQ(held->mVertexCount, 3);
    EXPECT_EQ(held->mPolygonCount, 1);
    EXPECT_EQ(held->mPositions[3], 1.0f);
    EXPECT_EQ(held->mNormals[4], 0.5f);
    EXPECT_EQ(held->mTexCoords[2], 0.125f);
    EXPECT_EQ(held->mTexCoords[3], 0.75f);
}

TEST(RenderObject, QuadHasFourIndicesAndAClosedOutline)
{
    c3DObject object;
    object.mVertices.resize(4);
    object.mPolygons = {Polygon({3, 0, 1, 2})};
    const cHeld held(object);
    EXPECT_EQ(held->mIndexCount, 4);
    EXPECT_EQ(Ints(held->mIndices, 4), (std::vector<int>{3, 0, 1, 2}));
    EXPECT_EQ(Ints(held->mLineIndices, 8), (std::vector<int>{3, 0, 0, 1, 1, 2, 2, 3}));
}

TEST(RenderObject, WithoutSurfaceIsOpaqueRedAndUntextured)
{
    c3DObject object = Triangle();
    const cHeld held(object);
    EXPECT_EQ(held->mTexture, -1);
    const float red[4] = {1, 0, 0, 1};
    for (int i = 0; i < 3; i++)
        EXPECT_EQ(std::memcmp(held->mColors + 4 * i, red, sizeof red), 0);
}

TEST(RenderObject, SharedVertexEndsWithTheLastPolygonsColour)
{
    c3DObject object = Triangle();
    object.mSurfaces.resize(2);
    object.mSurfaces[0].mColor = {0.1f, 0.2f, 0.3f, 1};
    object.mSurfaces[0].mTexture = 7;
    object.mSurfaces[1].mColor = {0.4f, 0.5f, 0.6f, 1};
    object.mVertices.push_back(Vertex(1, 1, 0));
    object.mPolygons = {Polygon({0, 1, 2}, &object.mSurfaces[0]),
                        Polygon({1, 3, 2}, &object.mSurfaces[1])};
    const cHeld held(object);
    EXPECT_EQ(held->mTexture, 7); // the first polygon's
    EXPECT_EQ(held->mColors[0], 0.1f);
    EXPECT_EQ(held->mColors[4], 0.4f);
    EXPECT_EQ(held->mColors[8], 0.4f);
}

TEST(RenderObject, OfNothingIsEmpty)
{
    c3DObject object;
    const cHeld held(object);
    EXPECT_EQ(held->mTexture, -1);
    EXPECT_EQ(held->mIndexCount, 0);
    EXPECT_EQ(held->mVertexCount, 0);
    EXPECT_EQ(held->mPolygonCount, 0);
}

// Filled drawing takes three indices of it all the same: the missing one names vertex 0.
TEST(RenderObject, PolygonOfTwoVerticesAddsNoOutlineBeyondItsOwn)
{
    c3DObject object = Triangle();
    object.mPolygons = {Polygon({1, 2}), Polygon({})};
    const cHeld held(object);
    EXPECT_EQ(held->mIndexCount, 2);
    EXPECT_EQ(Ints(held->mIndices, 6), (std::vector<int>{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(Ints(held->mLineIndices, 4), (std::vector<int>{1, 2, 2, 1}));
}

TEST(RenderObject, OutlivesItsMesh)
{
    auto *object = new c3DObject(Triangle());
    const cHeld held(*object);
    delete object;
    EXPECT_EQ(held->mPositions[7], 1.0f);
}
} // namespace
