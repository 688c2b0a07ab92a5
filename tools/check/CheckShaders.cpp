#include "tools/check/CheckShaders.h"

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
// The engine prints the driver's logs, which are reported here together with their file.
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
bool CheckStages(GLuint program, const std::string &vertexFile, const std::string &fragmentFile,
                 cFindings &findings)
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

void CheckProgram(const std::string &vertexFile, const std::string &file, cFindings &findings)
{
    if (!Exists(file, findings))
        return;
    GLuint program = 0;
    {
        const cSilence silence;
        program = Renderer().CreateShader(vertexFile, file, true);
    }
    if (!CheckStages(program, vertexFile, file, findings))
        return;
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE)
        findings.Fault(file, "", "does not link: " + ProgramLog(program));
}

bool HasExtension(const std::string &file, const char *extension)
{
    return std::filesystem::path(file).extension() == extension;
}

// Empty where the show has none: the fixed pipeline transforms the corners then.
std::string FindVertexShader(const vyr::cShowDescription &show, const std::string &fragmentFile)
{
    const std::string sameName =
        std::filesystem::path(fragmentFile).replace_extension(".vs").string();
    std::string first;
    for (const std::string &file : show.mFiles) {
        if (file == sameName)
            return file;
        if (first.empty() && HasExtension(file, ".vs"))
            first = file;
    }
    return first;
}
} // namespace

void CheckShaders(const vyr::cShowDescription &show, cFindings &findings)
{
    bool hasVertexShaders = true;
    for (const std::string &file : show.mFiles)
        hasVertexShaders &= !HasExtension(file, ".vs") || Exists(file, findings);
    if (!hasVertexShaders)
        return;
    for (const std::string &file : show.mFiles)
        if (HasExtension(file, ".fs"))
            CheckProgram(FindVertexShader(show, file), file, findings);
    glUseProgram(0);
}
} // namespace check
