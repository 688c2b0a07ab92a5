#include "tools/check/CheckShaders.h"

#include "demo/Show.h"
#include "tools/check/Stage.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace check
{
namespace
{
const char *const vertexFile = demo::kVertexShaderFile;

// The engine prints the driver's logs, which are told here together with their file.
class cSilence
{
public:
    cSilence()
    {
        std::fflush(stdout);
        mOutput = ::dup(STDOUT_FILENO);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    ~cSilence()
    {
        std::fflush(stdout);
        ::dup2(mOutput, STDOUT_FILENO);
        ::close(mOutput);
    }
    cSilence(const cSilence &) = delete;
    cSilence &operator=(const cSilence &) = delete;

private:
    int mOutput;
};

// A log on one line, without its end.
std::string OneLine(std::string log)
{
    while (!log.empty() && (log.back() == '\n' || log.back() == '\0' || log.back() == ' '))
        log.pop_back();
    std::string line;
    for (char c : log)
        line += c == '\n' ? std::string("; ") : std::string(1, c);
    return line;
}

std::string ShaderLog(GLuint shader)
{
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    std::string log(size_t(length), '\0');
    glGetShaderInfoLog(shader, length, nullptr, log.data());
    return OneLine(log);
}

std::string ProgramLog(GLuint program)
{
    GLint length = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
    std::string log(size_t(length), '\0');
    glGetProgramInfoLog(program, length, nullptr, log.data());
    return OneLine(log);
}

bool Exists(const std::string &file, cFindings &findings)
{
    std::error_code ignored;
    const bool exists = std::filesystem::is_regular_file(file, ignored);
    if (!exists)
        findings.Fault(file, "", "missing");
    return exists;
}

// Adds a fault for each stage that does not compile; what the driver says to one that does is a
// warning.
bool CheckStages(GLuint program, const std::string &fragmentFile, cFindings &findings)
{
    GLuint shaders[2] = {};
    GLsizei count = 0;
    bool isCompiled = true;
    glGetAttachedShaders(program, 2, &count, shaders);
    for (GLsizei i = 0; i < count; i++) {
        GLint type = 0, status = GL_FALSE;
        glGetShaderiv(shaders[i], GL_SHADER_TYPE, &type);
        glGetShaderiv(shaders[i], GL_COMPILE_STATUS, &status);
        const std::string file = type == GL_VERTEX_SHADER ? vertexFile : fragmentFile;
        const std::string log = ShaderLog(shaders[i]);
        isCompiled = isCompiled && status == GL_TRUE;
        if (status != GL_TRUE)
            findings.Fault(file, "", "does not compile: " + log);
        else if (!log.empty())
            findings.Warn(file, "", "the driver says: " + log);
    }
    return isCompiled;
}

void CheckUniforms(GLuint program, const std::string &file,
                   const std::vector<std::string> &uniforms, cFindings &findings)
{
    for (const std::string &uniform : uniforms)
        if (glGetUniformLocation(program, uniform.c_str()) < 0)
            findings.Fault(file, "uniform " + uniform,
                           "expected it to be used, found no such active uniform");
}

void CheckProgram(const std::string &file, const std::vector<std::string> &uniforms,
                  cFindings &findings)
{
    if (!Exists(file, findings))
        return;
    GLuint program = 0;
    {
        const cSilence silence;
        program = Renderer().CreateShader(vertexFile, file, true);
    }
    if (!CheckStages(program, file, findings))
        return;
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (isLinked == GL_TRUE)
        CheckUniforms(program, file, uniforms, findings);
    else
        findings.Fault(file, "", "does not link: " + ProgramLog(program));
}
} // namespace

void CheckShaders(cFindings &findings)
{
    if (!Exists(vertexFile, findings))
        return;
    const std::vector<std::string> noise = {"time", "alpha"};
    const std::vector<std::string> plasma = {"time", "alpha", "resolution", "flarepos",
                                             "flaresize"};
    CheckProgram(demo::kNoiseShaderFile, noise, findings);
    CheckProgram(demo::kPlasmaShaderFile, plasma, findings);
    glUseProgram(0);
}
} // namespace check
