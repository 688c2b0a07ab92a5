#include "tools/support/ShaderSource.h"

#include "tools/support/Files.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace tools
{
namespace
{
const size_t maximumShaderBytes = 1 << 20;

std::string GetSource(unsigned int shader)
{
    GLint length = 0;
    glGetShaderiv(shader, GL_SHADER_SOURCE_LENGTH, &length);
    std::string source(size_t(std::max(length, 1)), '\0');
    glGetShaderSource(shader, GLsizei(source.size()), nullptr, source.data());
    return source.c_str(); // without the zero at its end
}

std::string FindFile(unsigned int shader, const vyr::cShowDescription &show)
{
    const std::string source = GetSource(shader);
    for (const std::string &file : show.mFiles) {
        std::string bytes, ignored;
        if (IsShader(file) && ReadWhole(file, maximumShaderBytes, bytes, ignored) &&
            source == bytes.c_str())
            return file;
    }
    return "a shader";
}
} // namespace

cShaderFiles FindShaderFiles(unsigned int program, const vyr::cShowDescription &show)
{
    cShaderFiles files{"a shader", "a shader"};
    GLuint shaders[2] = {};
    GLsizei count = 0;
    glGetAttachedShaders(program, 2, &count, shaders);
    for (GLsizei i = 0; i < count; i++) {
        GLint type = 0;
        glGetShaderiv(shaders[i], GL_SHADER_TYPE, &type);
        (type == GL_VERTEX_SHADER ? files.mVertex : files.mFragment) = FindFile(shaders[i], show);
    }
    return files;
}
} // namespace tools
