#include "engine/Renderer.h"
#include "engine/ShaderFiles.h"
#include "platform/Resources.h"

#include <epoxy/gl.h>

#include <climits>
#include <cstdio>

namespace vyr
{
std::string ReadShaderSource(const std::string &path)
{
    FILE *file = std::fopen(path.c_str(), "rb");
    if (!file)
        return {};
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::fseek(file, 0, SEEK_SET);
    std::string text;
    if (size > 0 && size < INT_MAX) {
        text.resize(size_t(size));
        text.resize(std::fread(text.data(), 1, text.size(), file));
    }
    std::fclose(file);
    return text;
}

namespace
{
const size_t maximumResourcePath = 200; // bytes, with the terminating zero

std::string FindSource(const std::string &path, bool plainPath)
{
    if (plainPath)
        return path;
    char resource[maximumResourcePath];
    platform::ResolveResource(path, resource, sizeof resource);
    return resource;
}

// Whatever the driver has to say is shown, warnings too; whether it compiled is never asked.
void PrintLog(const char *heading, const std::string &log)
{
    std::printf("%s\n", heading);
    std::fflush(stdout);
    std::printf("%s\n", log.c_str());
    std::fflush(stdout);
}

void PrintShaderLog(const char *heading, GLuint shader)
{
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    if (length <= 0)
        return;
    std::string log(size_t(length), '\0');
    glGetShaderInfoLog(shader, length, nullptr, log.data());
    PrintLog(heading, log);
}

void PrintProgramLog(GLuint program)
{
    GLint length = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
    if (length <= 0)
        return;
    std::string log(size_t(length), '\0');
    glGetProgramInfoLog(program, length, nullptr, log.data());
    PrintLog("Prog Info Log: ", log);
}

// contract: the shader object stays attached and is never deleted; it lives as long as its program.
void AttachStage(GLuint program, GLenum stage, const char *heading, const std::string &path)
{
    const GLuint shader = glCreateShader(stage);
    const std::string source = ReadShaderSource(path);
    const char *text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    PrintShaderLog(heading, shader);
    glAttachShader(program, shader);
}
} // namespace

unsigned int cRenderer::CreateShader(const std::string &vertexPath, const std::string &fragmentPath,
                                     bool plainPath)
{
    const GLuint program = glCreateProgram();
    if (!vertexPath.empty())
        AttachStage(program, GL_VERTEX_SHADER,
                    "VertexShader Info Log: ", FindSource(vertexPath, plainPath));
    if (!fragmentPath.empty())
        AttachStage(program, GL_FRAGMENT_SHADER,
                    "FragmentShader Info Log: ", FindSource(fragmentPath, plainPath));
    glLinkProgram(program);
    glValidateProgram(program);
    PrintProgramLog(program);
    glUseProgram(program);
    if (plainPath)
        NoteShaderFiles(program, {vertexPath, fragmentPath});
    return program;
}
} // namespace vyr
