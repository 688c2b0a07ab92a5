#include "platform/web/State.h"

#include "base/Assert.h"
#include "platform/web/WebGL.h"

namespace vyr::web
{
namespace
{
bool isTextured = false, generatesS = false, generatesT = false;

// The switches that WebGL does not have; null for those that it has.
bool *FindSwitch(GLenum capability)
{
    switch (capability) {
    case GL_TEXTURE_2D:
        return &isTextured;
    case GL_TEXTURE_GEN_S:
        return &generatesS;
    case GL_TEXTURE_GEN_T:
        return &generatesT;
    default:
        return nullptr;
    }
}

// Lines are as they are, and nothing is lit.
bool IsWithoutEffect(GLenum capability) { return capability == GL_LINE_SMOOTH; }
} // namespace

eFixedPipeline GetFixedPipeline()
{
    if (!isTextured)
        return PLAIN;
    return generatesS && generatesT ? SPHERE_MAPPED : TEXTURED;
}
} // namespace vyr::web

using namespace vyr::web;

void vyr_glEnable(GLenum capability)
{
    VYR_ASSERT("OpenGL",
               capability != GL_LIGHTING && "glEnable(): There is no lighting in a browser.");
    if (bool *found = FindSwitch(capability))
        *found = true;
    else if (!IsWithoutEffect(capability))
        glEnable(capability);
}

void vyr_glDisable(GLenum capability)
{
    if (bool *found = FindSwitch(capability))
        *found = false;
    else if (!IsWithoutEffect(capability) && capability != GL_LIGHTING)
        glDisable(capability);
}

GLboolean vyr_glIsEnabled(GLenum capability)
{
    if (const bool *found = FindSwitch(capability))
        return *found;
    return !IsWithoutEffect(capability) && capability != GL_LIGHTING && glIsEnabled(capability);
}

void vyr_glHint(GLenum, GLenum) {}

void vyr_glGetIntegerv(GLenum name, GLint *values)
{
    if (name == GL_CURRENT_PROGRAM)
        *values = GLint(GetUsedProgram());
    else
        glGetIntegerv(name, values);
}

void glTexGeni(GLenum, GLenum name, GLint value)
{
    VYR_ASSERT("OpenGL", name == GL_TEXTURE_GEN_MODE && GLenum(value) == GL_SPHERE_MAP &&
                             "glTexGeni(): A browser has GL_SPHERE_MAP alone.");
}

void glTexEnvf(GLenum, GLenum name, GLfloat value)
{
    VYR_ASSERT("OpenGL", name == GL_TEXTURE_ENV_MODE && value == float(GL_MODULATE) &&
                             "glTexEnvf(): A browser has GL_MODULATE alone.");
}

void glPolygonMode(GLenum, GLenum mode)
{
    VYR_ASSERT("OpenGL", mode == GL_FILL && "glPolygonMode(): A browser has GL_FILL alone.");
}

void glClearDepth(GLdouble depth) { glClearDepthf(float(depth)); }
