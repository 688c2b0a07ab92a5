// What was made of a file follows it, under the same name and address.

#include "tests/support/LWO2Builder.h"
#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include "engine/3DObject.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>

namespace
{
using testing::HasSubstr;
using vyr::c3DObject;

class Refresh : public test::cOffscreenTest
{
protected:
    Refresh() : cOffscreenTest(32, 18) {}

    static std::string Fragment(const std::string &color)
    {
        return "uniform float level;\nuniform vec2 pair[2];\nuniform int whole;\nvoid main() "
               "{ gl_FragColor = vec4(" +
               color + ", level * pair[1].y * float(whole), 1.0); }\n";
    }

    unsigned int MakeProgram()
    {
        test::WriteFile("a.fs", Fragment("1.0, 0.0"));
        testing::internal::CaptureStdout();
        const unsigned int program = mRenderer.CreateShader("", "a.fs", true);
        testing::internal::GetCapturedStdout();
        return program;
    }

    test::tPixel Draw(unsigned int program)
    {
        for (GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
            glMatrixMode(matrix);
            glLoadIdentity();
        }
        glDisable(GL_DEPTH_TEST);
        glUseProgram(program);
        glRectf(-1.0f, -1.0f, 1.0f, 1.0f);
        glUseProgram(0);
        return ReadPixel(16, 9);
    }

    test::cTemporaryFolder mFolder;
};

TEST_F(Refresh, TextureShowsTheFilesPixelsUnderTheSameName)
{
    test::WritePng("a.png", 1, 1, 4, {255, 0, 0, 255});
    const int id = mTextures.LoadTexture("a.png", true);
    const unsigned int handle = mTextures.GetTexture(id).mHandle;
    const int bound = MakeTexture(1, 1, test::tPixel{1, 2, 3, 4});
    glBindTexture(GL_TEXTURE_2D, mTextures.GetTexture(bound).mHandle);
    test::WritePng("a.png", 2, 1, 4, {0, 255, 0, 255, 0, 0, 255, 128});

    EXPECT_TRUE(mTextures.RefreshTexture("a.png"));
    GLint current = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &current);
    EXPECT_EQ(unsigned(current), mTextures.GetTexture(bound).mHandle);
    EXPECT_EQ(mTextures.GetTexture(id).mHandle, handle);
    EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 2.0f);
    EXPECT_EQ(mTextures.GetTexture(id).mPixels, nullptr); // a copy of what was
    glBindTexture(GL_TEXTURE_2D, handle);
    uint8_t pixels[8] = {};
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    EXPECT_EQ(pixels[1], 255);
    EXPECT_EQ(pixels[7], 128);
}

TEST_F(Refresh, TextureStaysWhenItsFileCanNotBeRead)
{
    test::WritePng("a.png", 1, 1, 4, {255, 0, 0, 255});
    const int id = mTextures.LoadTexture("a.png", false);
    test::WriteFile("a.png", "no picture");
    EXPECT_FALSE(mTextures.RefreshTexture("a.png"));
    EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 1.0f);
    EXPECT_TRUE(mTextures.RefreshTexture("never.png")); // nothing was made of it
    EXPECT_TRUE(mTextures.IsKnown("a.png"));
    EXPECT_FALSE(mTextures.IsKnown("never.png"));
}

TEST_F(Refresh, ProgramIsLinkedAnewAndKeepsItsUniforms)
{
    const unsigned int program = MakeProgram();
    glUseProgram(program);
    glUniform1f(glGetUniformLocation(program, "level"), 0.5f);
    glUniform2f(glGetUniformLocation(program, "pair[1]"), 7.0f, 0.2f);
    glUniform1i(glGetUniformLocation(program, "whole"), 2);
    EXPECT_EQ(Draw(program), (test::tPixel{255, 0, 51, 255}));
    test::WriteFile("a.fs", Fragment("0.0, 1.0"));
    glUseProgram(0);
    std::string log;
    EXPECT_TRUE(vyr::cRenderer::RefreshShaders("a.fs", log));
    GLint current = 1;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(current, 0);
    EXPECT_EQ(Draw(program), (test::tPixel{0, 255, 51, 255}));
}

TEST_F(Refresh, ProgramStaysWhenItsShaderDoesNotCompileOrLink)
{
    const unsigned int program = MakeProgram();
    for (const char *broken :
         {"void main() { nonsense; }\n", "void later();\nvoid main() { later(); }\n", ""}) {
        test::WriteFile("a.fs", broken);
        std::string log;
        EXPECT_FALSE(vyr::cRenderer::RefreshShaders("a.fs", log));
        EXPECT_NE(log, "");
        EXPECT_EQ(Draw(program)[0], 255);
    }
    std::string log;
    EXPECT_TRUE(vyr::cRenderer::RefreshShaders("never.fs", log));
}

TEST_F(Refresh, ThousandRefreshesMakeNoObjectOfOpenGL)
{
    MakeProgram();
    std::string log;
    vyr::cRenderer::RefreshShaders("a.fs", log);
    const auto count = [] {
        int objects = 0;
        for (GLuint name = 1; name < 10'000; name++)
            objects += glIsProgram(name) + glIsShader(name);
        return objects;
    };
    const int before = count();
    EXPECT_EQ(before, 2);
    for (int i = 0; i < 1000; i++)
        ASSERT_TRUE(vyr::cRenderer::RefreshShaders("a.fs", log));
    EXPECT_EQ(count(), before);
}

TEST_F(Refresh, ObjectIsDrawnFromTheFileAtTheSameAddress)
{
    test::WriteFile("a.lwo", lwo2::Form(lwo2::TriangleChunks()));
    c3DObject *mesh = c3DObject::CreateFromLWO2("a.lwo");
    c3DObject::cRenderObject *drawn = mesh->CreateRenderObject();
    c3DObject::cRenderObject *gone = mesh->CreateRenderObject();
    delete gone; // is not written to
    const int before = drawn->mVertexCount;
    test::WriteFile("a.lwo", lwo2::Form(lwo2::Points({{0, 0}, {1, 0}, {0, 1}, {1, 1}}) +
                                        lwo2::Faces({{0, 1, 2}, {1, 3, 2}})));
    const int open = test::CountOpenFiles();
    for (int i = 0; i < 100; i++)
        ASSERT_TRUE(c3DObject::Refresh("a.lwo"));
    EXPECT_EQ(test::CountOpenFiles(), open);
    EXPECT_EQ(before, 3);
    EXPECT_EQ(drawn->mVertexCount, 4);
    EXPECT_EQ(drawn->mPolygonCount, 2);
    EXPECT_EQ(drawn->mPositions[9], 1.0f);
    EXPECT_EQ(mesh->mVertices.size(), 3u); // what was read stays
    for (const char *broken : {"no object", ""}) {
        test::WriteFile("a.lwo", broken);
        EXPECT_FALSE(c3DObject::Refresh("a.lwo"));
        EXPECT_EQ(drawn->mVertexCount, 4);
    }
    EXPECT_FALSE(c3DObject::Refresh("never.lwo"));
    delete drawn;
    delete mesh;
}
} // namespace
