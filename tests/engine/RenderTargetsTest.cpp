#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"

#include <epoxy/gl.h>

namespace
{
using test::tPixel;
using vyr::cRenderer;

const tPixel black = {0, 0, 0, 255};
const tPixel green = {0, 255, 0, 255};

class RenderTargets : public test::cOffscreenTest
{
protected:
    int BoundFramebuffer() const
    {
        GLint name = 0;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &name);
        return name;
    }
};

TEST_F(RenderTargets, PostProcessingTakesTheFirstTwoIds)
{
    EXPECT_TRUE(mRenderer.InitPostProcessing());
    for (int id : {0, 1}) {
        EXPECT_EQ(mTextures.GetTexture(id).mName, "box_fbo_zoomblur" + std::to_string(id + 1));
        EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 1280.0f);
        EXPECT_EQ(mTextures.GetTexture(id).mSize.y, 720.0f);
    }
    EXPECT_EQ(mTextures.LoadTexture("box_fbo_zoomblur2", false), 1);
    EXPECT_EQ(BoundFramebuffer(), 0);
}

TEST_F(RenderTargets, DrawIntoTheirTexture)
{
    const int texture = mTextures.CreateTexture("target", 1280, 720, true, false);
    const unsigned int fbo = mRenderer.CreateFBO(unsigned(texture), 0);
    ASSERT_NE(fbo, cRenderer::kNoFramebuffer);
    EXPECT_EQ(BoundFramebuffer(), 0);
    mRenderer.BeginUpdateFBO(fbo);
    EXPECT_EQ(BoundFramebuffer(), int(fbo));
    mRenderer.Clear(vyr::cColor(0, 1, 0, 1));
    EXPECT_EQ(ReadPixel(3, 3), green);
    mRenderer.EndUpdateFBO();
    EXPECT_EQ(BoundFramebuffer(), 0);
    EXPECT_EQ(ReadPixel(3, 3), black);
    mRenderer.DestroyFBO(fbo);
    EXPECT_FALSE(glIsFramebufferEXT(fbo));
    EXPECT_TRUE(glIsTexture(mTextures.GetTexture(texture).mHandle));
}

TEST_F(RenderTargets, AreDestroyedOneByOne)
{
    const int texture = mTextures.CreateTexture("target", 64, 64, true, false);
    const unsigned int first = mRenderer.CreateFBO(unsigned(texture), 0);
    const unsigned int second = mRenderer.CreateFBO(unsigned(texture), 0);
    const test::cOpenGLLog log;
    mRenderer.DestroyFBO(first);
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>{"glDeleteFramebuffersEXT 1 " + std::to_string(first)});
    EXPECT_FALSE(glIsFramebufferEXT(first));
    EXPECT_TRUE(glIsFramebufferEXT(second));
}

TEST_F(RenderTargets, LeaveTheViewportAlone)
{
    const int texture = mTextures.CreateTexture("small", 64, 64, true, false);
    mRenderer.BeginUpdateFBO(mRenderer.CreateFBO(unsigned(texture), 0));
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 1280);
    mRenderer.EndUpdateFBO();
}

TEST_F(RenderTargets, TakeADepthTextureThatIsNotTheFirst)
{
    const int depth0 = mTextures.CreateTexture("depth", 1280, 720, true, true); // id 0 means none
    const int color = mTextures.CreateTexture("color", 1280, 720, true, false);
    const int depth = mTextures.CreateTexture("depth", 1280, 720, true, true);
    ASSERT_EQ(depth0, 0);
    const auto attachmentOf = [&](int id) {
        mRenderer.BeginUpdateFBO(mRenderer.CreateFBO(unsigned(color), unsigned(id)));
        GLint type = 0;
        glGetFramebufferAttachmentParameterivEXT(GL_FRAMEBUFFER_EXT, GL_DEPTH_ATTACHMENT_EXT,
                                                 GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE_EXT, &type);
        mRenderer.EndUpdateFBO();
        return type;
    };
    EXPECT_EQ(attachmentOf(depth0), GL_NONE);
    EXPECT_EQ(attachmentOf(depth), GL_TEXTURE);
}

TEST_F(RenderTargets, RefuseATextureWithoutStorage)
{
    const int texture = mTextures.CreateTexture("empty", 64, 64, false, false);
    EXPECT_EQ(mRenderer.CreateFBO(unsigned(texture), 0), cRenderer::kNoFramebuffer);
    EXPECT_EQ(BoundFramebuffer(), 0); // deleting the bound one gives the window back
}

TEST_F(RenderTargets, NoDepthBufferIsEverRecorded)
{
    const int texture = mTextures.CreateTexture("target", 64, 64, true, false);
    const unsigned int fbo = mRenderer.CreateFBO(unsigned(texture), 0);
    EXPECT_EQ(mRenderer.GetFBODepthBuffer(fbo), cRenderer::kNoFramebuffer);
    EXPECT_EQ(mRenderer.GetFBODepthBuffer(0), cRenderer::kNoFramebuffer);
}

// A quad as large as the window -------------------------------------------------------------------

class FullscreenQuad : public RenderTargets
{
protected:
    FullscreenQuad()
    {
        glDisable(GL_TEXTURE_2D);
        glColor4f(0, 1, 0, 1);
    }
    void Draw(float x, float y) { mRenderer.DrawFullscreenQuad({x, y, 0}, {0, 1}, {1, 0}); }
};

TEST_F(FullscreenQuad, CoversEveryPixel)
{
    Draw(0, 0);
    const test::cPicture picture = ReadPicture();
    for (int x : {0, 640, 1279})
        for (int y : {0, 360, 719})
            EXPECT_EQ(picture.At(x, y), green) << x << ", " << y;
}

TEST_F(FullscreenQuad, MovesByPixels)
{
    Draw(-10, 0);
    EXPECT_EQ(ReadPixel(1269, 300), green);
    EXPECT_EQ(ReadPixel(1270, 300), black);
    mRenderer.Clear(vyr::cColor(0, 0, 0, 1));
    Draw(0, 10); // down
    EXPECT_EQ(ReadPixel(300, 9), black);
    EXPECT_EQ(ReadPixel(300, 10), green);
}

TEST_F(FullscreenQuad, LeavesDepthWritesOnAndThePerspective)
{
    glDepthMask(GL_FALSE);
    Draw(0, 0);
    GLboolean isWritten = GL_FALSE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &isWritten);
    EXPECT_TRUE(isWritten);
    float depth = 0; // while it was drawn, depth was not written
    glReadPixels(5, 5, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_EQ(depth, 1.0f);
    GLfloat projection[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_EQ(projection[11], -1.0f);
}

TEST_F(FullscreenQuad, ShowsATexturesFirstRowAtTheTop)
{
    // red above blue
    const int texture = MakeUprightTexture({255, 0, 0, 255}, {0, 0, 255, 255});
    glColor4f(1, 1, 1, 1);
    mRenderer.Post_Draw(texture);
    EXPECT_EQ(ReadPixel(640, 100), (tPixel{255, 0, 0, 255}));
    EXPECT_EQ(ReadPixel(640, 620), (tPixel{0, 0, 255, 255}));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(FullscreenQuad, PostDrawWithoutATextureTakesTheBoundOne)
{
    const int texture = MakeTexture(1, 1, tPixel{0, 0, 255, 255});
    MakeTexture(1, 1, tPixel{255, 0, 0, 255});
    mTextures.BindTexture(texture);
    glDisable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 1);
    mRenderer.Post_Draw();
    EXPECT_EQ(ReadPixel(640, 360), (tPixel{0, 0, 255, 255}));
}
} // namespace
