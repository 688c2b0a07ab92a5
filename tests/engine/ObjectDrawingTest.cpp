#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"

#include <epoxy/gl.h>

namespace
{
using test::tPixel;
using vyr::c3DObject;
using vyr::cRenderer;
using vyr::cVector3;

const tPixel black = {0, 0, 0, 255};
const tPixel red = {255, 0, 0, 255};
const tPixel green = {0, 255, 0, 255};
const tPixel blue = {0, 0, 255, 255};

// Objects are seen from the origin, six units away along -z, on a window of 320 by 180.
class Objects : public test::cOffscreenTest
{
protected:
    Objects() : cOffscreenTest(320, 180)
    {
        mRenderer.Reset();
        glTranslatef(0, 0, -6);
        mMesh.mSurfaces.resize(1);
        mMesh.mSurfaces[0].mColor = {0, 1, 0, 1};
    }
    ~Objects() override
    {
        for (c3DObject::cRenderObject *object : mObjects) {
            delete[] object->mLineIndices; // outlive the object by design
            delete[] object->mTexCoords;
            delete object;
        }
    }

    void AddVertex(float x, float y, float u = 0, float v = 0)
    {
        c3DObject::cVertex vertex;
        vertex.mPosition = {x, y, 0};
        vertex.mNormal = {0, 0, 1};
        vertex.mTexCoord[0] = u;
        vertex.mTexCoord[1] = v;
        mMesh.mVertices.push_back(vertex);
    }

    void AddPolygon(std::vector<int> indices)
    {
        c3DObject::cPolygon polygon;
        polygon.mIndices = std::move(indices);
        polygon.mSurface = &mMesh.mSurfaces[0];
        mMesh.mPolygons.push_back(polygon);
    }

    // A square of half-width 2 from two triangles: it covers the middle of the window.
    c3DObject::cRenderObject *MakeSquare(int texture = -1)
    {
        mMesh.mSurfaces[0].mTexture = texture;
        AddVertex(-2, -2, 0, 0);
        AddVertex(2, -2, 1, 0);
        AddVertex(2, 2, 1, 1);
        AddVertex(-2, 2, 0, 1);
        AddPolygon({0, 1, 2});
        AddPolygon({0, 2, 3});
        return Flatten();
    }

    c3DObject::cRenderObject *Flatten()
    {
        mObjects.push_back(mMesh.CreateRenderObject());
        return mObjects.back();
    }

    void Draw(c3DObject::cRenderObject *object, int mode, int texture = -1)
    {
        mRenderer.RenderObject(object, cRenderer::RENDERMODE(mode), texture);
    }

    tPixel Middle() const { return ReadPixel(160, 90); }

    int CountLit() const
    {
        const test::cPicture picture = ReadPicture();
        int lit = 0;
        for (size_t i = 0; i < picture.mBytes.size(); i += 4)
            lit += picture.mBytes[i] + picture.mBytes[i + 1] + picture.mBytes[i + 2] > 0;
        return lit;
    }

    void ExpectNoClientArrays() const
    {
        for (GLenum array :
             {GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
            EXPECT_FALSE(glIsEnabled(array));
    }

    c3DObject mMesh;
    std::vector<c3DObject::cRenderObject *> mObjects;
};

TEST_F(Objects, WithoutTextureShowTheirColour)
{
    Draw(MakeSquare(), cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(Middle(), green);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    ExpectNoClientArrays();
}

// An object without a texture of its own is never textured, whatever it is given.
TEST_F(Objects, WithoutTextureIgnoreAReplacement)
{
    const int texture = MakeTexture(1, 1, tPixel{0, 0, 0, 255});
    glBindTexture(GL_TEXTURE_2D, 0);
    Draw(MakeSquare(), cRenderer::RENDERMODE_TEXTURED, texture);
    EXPECT_EQ(Middle(), green);
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(bound, 0);
}

TEST_F(Objects, WithTextureShowTheirOwnOrItsReplacement)
{
    mMesh.mSurfaces[0].mColor = {1, 1, 1, 1};
    const int own = MakeTexture(1, 1, red), other = MakeTexture(1, 1, blue);
    c3DObject::cRenderObject *object = MakeSquare(own);
    glEnable(GL_TEXTURE_GEN_S);
    Draw(object, cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(Middle(), red);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_S));
    Draw(object, cRenderer::RENDERMODE_TEXTURED, other);
    EXPECT_EQ(Middle(), blue);
    ExpectNoClientArrays();
}

TEST_F(Objects, TextureStandsUpright)
{
    mMesh.mSurfaces[0].mColor = {1, 1, 1, 1};
    const int texture = MakeUprightTexture({255, 0, 0, 255}, {0, 0, 255, 255});
    Draw(MakeSquare(texture), cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(ReadPixel(160, 60), red); // v = 1, the image's first row, is on top
    EXPECT_EQ(ReadPixel(160, 120), blue);
}

TEST_F(Objects, BackFacesAreCulled)
{
    MakeSquare();
    mMesh.mPolygons.clear();
    AddPolygon({2, 1, 0});
    Draw(Flatten(), cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(CountLit(), 0);
}

// Three indices a polygon, whatever it has: behind a quad every triangle is shifted by one.
TEST_F(Objects, EveryPolygonCountsAsATriangle)
{
    AddVertex(-2, -2);
    AddVertex(2, -2);
    AddVertex(2, 2);
    AddVertex(-2, 2);
    AddPolygon({0, 1, 2, 3});
    Draw(Flatten(), cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(ReadPixel(190, 110), green); // the half below the diagonal
    EXPECT_EQ(ReadPixel(130, 70), black);
}

// Three polygons are three triangles, and the indices behind those are not drawn: here the fourth
// triangle that they would make is the only one to be seen.
TEST_F(Objects, IndicesBehindTheLastTriangleAreNotDrawn)
{
    AddVertex(-2, -2);
    AddVertex(2, -2);
    AddVertex(2, 2);
    AddPolygon({0, 0, 0, 0});
    AddPolygon({0, 0, 0, 0});
    AddPolygon({0, 0, 1, 2}); // ends with 0 1 2
    Draw(Flatten(), cRenderer::RENDERMODE_TEXTURED);
    EXPECT_EQ(CountLit(), 0);
}

TEST_F(Objects, SphereMapNeedsATexture)
{
    Draw(MakeSquare(), cRenderer::RENDERMODE_SPHEREMAP);
    EXPECT_EQ(CountLit(), 0);
    ExpectNoClientArrays();
}

// Seen from the front, a normal toward the viewer reflects the middle of the map.
TEST_F(Objects, SphereMapGeneratesItsCoordinates)
{
    mMesh.mSurfaces[0].mColor = {1, 1, 1, 1};
    std::vector<uint8_t> pixels;
    for (int i = 0; i < 16 * 16; i++) {
        const bool isMiddle = i % 16 / 4 % 3 != 0 && i / 16 / 4 % 3 != 0;
        for (int channel : isMiddle ? blue : red)
            pixels.push_back(uint8_t(channel));
    }
    Draw(MakeSquare(MakeTexture(16, 16, pixels)), cRenderer::RENDERMODE_SPHEREMAP);
    EXPECT_EQ(Middle(), blue);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_S));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_T));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    ExpectNoClientArrays();
}

// The end of a normal's line, caught by feedback: (1, 2, 3) with (0, 1, 0) ends at (1, 2.1, 3).
// From each point a tenth of its normal on, each coordinate by its own.
TEST_F(Objects, NormalsGoFromTheirPointsOn)
{
    AddVertex(1, 2);
    mMesh.mVertices[0].mPosition.z = 4;
    mMesh.mVertices[0].mNormal = {2.5f, 5, -10};
    c3DObject::cRenderObject *object = Flatten();
    const test::cOpenGLLog log;
    mRenderer.RenderObject(object, cRenderer::RENDERMODE_NORMALS, -1);
    EXPECT_EQ(log.LinesOf("glVertex3f"),
              (std::vector<std::string>{"glVertex3f 1 2 4", "glVertex3f 1.25 2.5 3"}));
}

TEST_F(Objects, NormalsAreLinesOfATenth)
{
    AddVertex(1, 2);
    mMesh.mVertices[0].mPosition.z = 3;
    mMesh.mVertices[0].mNormal = {0, 1, 0};
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, 320, 0, 180, -10, 10);
    glMatrixMode(GL_MODELVIEW);
    mRenderer.Reset();
    glDisable(GL_BLEND);
    glDisable(GL_LINE_SMOOTH);
    GLfloat found[64] = {};
    glFeedbackBuffer(64, GL_3D, found);
    glRenderMode(GL_FEEDBACK);
    Draw(Flatten(), cRenderer::RENDERMODE_NORMALS);
    ASSERT_EQ(glRenderMode(GL_RENDER), 7); // one token, two vertices
    EXPECT_NEAR(found[1], 1.0f, 1e-4f);
    EXPECT_NEAR(found[2], 2.0f, 1e-4f);
    EXPECT_NEAR(found[5], 2.1f, 1e-4f);
    EXPECT_NEAR(found[3], found[6], 1e-6f);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_LINE_SMOOTH));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    ExpectNoClientArrays();
}

TEST_F(Objects, WireframeDrawsEveryOutlineInTheVerticesColours)
{
    Draw(MakeSquare(), cRenderer::RENDERMODE_WIREFRAME);
    EXPECT_GT(CountLit(), 100);
    EXPECT_LT(CountLit(), 2000); // lines, no filled square
    GLfloat color[4] = {};
    glGetFloatv(GL_CURRENT_COLOR, color);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    const test::cPicture picture = ReadPicture();
    for (size_t i = 0; i < picture.mBytes.size(); i += 4)
        EXPECT_EQ(picture.mBytes[i], 0); // green, not white
    ExpectNoClientArrays();
}

TEST_F(Objects, CountsAreThoseOfTheWholeObject)
{
    for (int i = 0; i < 12; i++)
        AddVertex(float(i % 4), float(i / 4));
    for (int i = 0; i < 10; i++)
        AddPolygon({i, i + 1, i + 2});
    glDisable(GL_CULL_FACE);
    GLfloat found[4096] = {};
    glFeedbackBuffer(4096, GL_2D, found);
    glRenderMode(GL_FEEDBACK);
    Draw(Flatten(), cRenderer::RENDERMODE_WIREFRAME);
    EXPECT_EQ(glRenderMode(GL_RENDER), 30 * 5); // 30 lines of a token and two points
}

TEST_F(Objects, UnknownModesDrawNothing)
{
    c3DObject::cRenderObject *object = MakeSquare();
    for (int mode : {4, 5, 1000, -1}) {
        Draw(object, mode);
        EXPECT_EQ(CountLit(), 0);
        ExpectNoClientArrays();
    }
}
} // namespace
