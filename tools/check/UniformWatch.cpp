#include "tools/check/UniformWatch.h"

#include "tools/support/ShaderSource.h"

#include <epoxy/gl.h>

namespace check
{
namespace
{
PFNGLGETUNIFORMLOCATIONPROC ask;
cUniformWatch *watch;
} // namespace

// libepoxy calls through one variable, for the show and for everybody else.
cUniformWatch::cUniformWatch(const vyr::cShowDescription &show) : mShow(show)
{
    glGetUniformLocation(0, ""); // the first call puts the driver's own function there
    glGetError();
    watch = this;
    ask = epoxy_glGetUniformLocation;
    epoxy_glGetUniformLocation = Ask;
}

cUniformWatch::~cUniformWatch() { epoxy_glGetUniformLocation = ask; }

int cUniformWatch::Ask(unsigned int program, const char *name)
{
    const int location = ask(program, name);
    GLint isLinked = GL_FALSE; // one that is not has a fault of its own
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (location < 0 && isLinked)
        watch->mMisses.insert({tools::FindShaderFiles(program, watch->mShow).mFragment, name});
    return location;
}
} // namespace check
