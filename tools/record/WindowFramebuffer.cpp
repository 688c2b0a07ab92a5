#include "tools/record/WindowFramebuffer.h"

#include <epoxy/gl.h>

namespace record
{
namespace
{
GLuint instead;
PFNGLBINDFRAMEBUFFERPROC bind;
PFNGLBINDFRAMEBUFFEREXTPROC bindExt;

void Bind(GLenum target, GLuint framebuffer)
{
    bind(target, framebuffer == 0 ? instead : framebuffer);
}

void BindExt(GLenum target, GLuint framebuffer)
{
    bindExt(target, framebuffer == 0 ? instead : framebuffer);
}
} // namespace

// libepoxy calls through one variable a function, for the show and the engine alike. The first call
// puts the driver's own function there.
cWindowFramebuffer::cWindowFramebuffer(unsigned int framebuffer)
{
    instead = framebuffer;
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    bind = epoxy_glBindFramebuffer;
    bindExt = epoxy_glBindFramebufferEXT;
    epoxy_glBindFramebuffer = Bind;
    epoxy_glBindFramebufferEXT = BindExt;
}

cWindowFramebuffer::~cWindowFramebuffer()
{
    epoxy_glBindFramebuffer = bind;
    epoxy_glBindFramebufferEXT = bindExt;
}
} // namespace record
