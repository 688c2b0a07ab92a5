#include "engine/Renderer.h"

#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace vyr
{
namespace
{
cTextureManager &Textures() { return tSingleton<cTextureManager>::GetSingleton(); }

void AttachTexture(GLenum attachment, unsigned int texture)
{
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, attachment, GL_TEXTURE_2D,
                              Textures().GetTexture(int(texture)).mHandle, 0);
}

void Corner(float u, float v, float x, float y, float z)
{
    glTexCoord2f(u, v);
    glVertex3f(x, y, z);
}
} // namespace

bool cRenderer::InitPostProcessing()
{
    mZoomBlurTexture1 = static_cast<unsigned int>(
        Textures().CreateTexture("box_fbo_zoomblur1", mWidth, mHeight, true, false));
    mZoomBlurFBO1 = CreateFBO(mZoomBlurTexture1, 0);
    mZoomBlurTexture2 = static_cast<unsigned int>(
        Textures().CreateTexture("box_fbo_zoomblur2", mWidth, mHeight, true, false));
    mZoomBlurFBO2 = CreateFBO(mZoomBlurTexture2, 0);
    return true;
}

unsigned int cRenderer::CreateFBO(unsigned int color, unsigned int depth)
{
    GLuint fbo = 0;
    glGenFramebuffersEXT(1, &fbo);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, fbo);
    AttachTexture(GL_COLOR_ATTACHMENT0_EXT, color);
    if (depth != 0) // contract: 0 means none, so the first texture is no depth buffer
        AttachTexture(GL_DEPTH_ATTACHMENT_EXT, depth);
    if (glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT) != GL_FRAMEBUFFER_COMPLETE_EXT) {
        DestroyFBO(fbo); // which binds the window again
        return kNoFramebuffer;
    }
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    return fbo;
}

void cRenderer::DestroyFBO(unsigned int fbo)
{
    const auto entry = std::find_if(mFBOs.begin(), mFBOs.end(),
                                    [fbo](const cFBOEntry &each) { return each.mFBO == fbo; });
    if (entry != mFBOs.end())
        mFBOs.erase(entry);
    glDeleteFramebuffersEXT(1, &fbo);
}

unsigned int cRenderer::GetFBODepthBuffer(unsigned int fbo)
{
    for (const cFBOEntry &entry : mFBOs)
        if (entry.mFBO == fbo)
            return entry.mDepthBuffer;
    return kNoFramebuffer; // contract: always, since no depth buffer is recorded
}

void cRenderer::BeginUpdateFBO(unsigned int fbo) { glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, fbo); }

void cRenderer::EndUpdateFBO() { glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0); }

void cRenderer::DrawFullscreenQuad(const cVector3 &position, const cVector2 &uv0,
                                   const cVector2 &uv1)
{
    const float left = position.x, right = position.x + float(mWidth);
    const float top = position.y, bottom = position.y + float(mHeight);

    glDepthMask(GL_FALSE);
    SetOrtho(true);
    glBegin(GL_QUADS);
    glNormal3f(0.0f, 0.0f, 1.0f);
    Corner(uv0.x, uv0.y, left, bottom, position.z);
    Corner(uv1.x, uv0.y, right, bottom, position.z);
    Corner(uv1.x, uv1.y, right, top, position.z);
    Corner(uv0.x, uv1.y, left, top, position.z);
    glEnd();
    SetOrtho(false);
    glDepthMask(GL_TRUE);
}

void cRenderer::Post_Draw(int texture)
{
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_TEXTURE_2D);
    Textures().BindTexture(texture);
    DrawFullscreenQuad({0.0f, 0.0f, 0.0f}, {0.0f, 1.0f}, {1.0f, 0.0f});
}

void cRenderer::Post_Draw()
{
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_TEXTURE_2D);
    DrawFullscreenQuad({0.0f, 0.0f, 0.0f}, {0.0f, 1.0f}, {1.0f, 0.0f});
}

void cRenderer::Post_DrawSprite(int texture, cVector2 position, const cVector2 &scale, float angle)
{
    position *= mScaleFactor;
    glEnable(GL_TEXTURE_2D);
    Textures().BindTexture(texture);
    const cVector2 &size = Textures().GetTexture(texture).mSize;
    const float width = size.x * mScaleFactor.x, height = size.y * mScaleFactor.y;
    const float x = 0.5f * width, y = 0.5f * height;

    SetOrtho(true);
    glTranslatef(position.x + x, position.y + y, 0.0f);
    glRotatef(angle, 0.0f, 0.0f, 1.0f);
    glScalef(scale.x, scale.y, 1.0f);
    glDisable(GL_DEPTH_TEST); // contract: stays off
    glBegin(GL_QUADS);
    glNormal3f(0.0f, 0.0f, 1.0f);
    Corner(0.0f, 1.0f, -x, y, 0.0f);
    Corner(1.0f, 1.0f, x, y, 0.0f);
    Corner(1.0f, 0.0f, x, -y, 0.0f);
    Corner(0.0f, 0.0f, -x, -y, 0.0f);
    glEnd();
    SetOrtho(false);
}
} // namespace vyr
