#include "engine/Renderer.h"
#include "engine/ShaderFiles.h"

#include <epoxy/gl.h>

#include <map>
#include <vector>

namespace vyr
{
namespace
{
std::map<GLuint, cShaderFiles> &Programs()
{
    static std::map<GLuint, cShaderFiles> programs;
    return programs;
}

std::string ShaderLog(GLuint shader)
{
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    std::string log(size_t(length > 0 ? length : 1), '\0');
    glGetShaderInfoLog(shader, GLsizei(log.size()), nullptr, log.data());
    return log.c_str();
}

std::string ProgramLog(GLuint program)
{
    GLint length = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
    std::string log(size_t(length > 0 ? length : 1), '\0');
    glGetProgramInfoLog(program, GLsizei(log.size()), nullptr, log.data());
    return log.c_str();
}

void Compile(GLuint shader, const std::string &path)
{
    const std::string source = ReadShaderSource(path);
    const char *text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
}

bool TryStage(GLuint program, GLenum stage, const std::string &path, std::string &log)
{
    if (path.empty())
        return true;
    const GLuint shader = glCreateShader(stage);
    Compile(shader, path);
    GLint isCompiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &isCompiled);
    if (!isCompiled)
        log = ShaderLog(shader);
    glAttachShader(program, shader);
    glDeleteShader(shader); // goes with the program
    return isCompiled;
}

// Whether these files make a program, tried on one that is thrown away.
bool MakeAProgram(const cShaderFiles &files, std::string &log)
{
    const GLuint program = glCreateProgram();
    bool isGood = TryStage(program, GL_VERTEX_SHADER, files.mVertex, log) &&
                  TryStage(program, GL_FRAGMENT_SHADER, files.mFragment, log);
    if (isGood) {
        GLint isLinked = GL_FALSE;
        glLinkProgram(program);
        glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
        if (!isLinked)
            log = ProgramLog(program);
        isGood = isLinked;
    }
    glDeleteProgram(program);
    return isGood;
}

/// The value of one uniform; linking sets all of them to 0.
struct cUniform
{
    std::string mName;
    GLenum mType = 0;
    GLfloat mFloats[16] = {};
    GLint mIntegers[4] = {};
};

void Read(GLuint program, cUniform &uniform)
{
    const GLint location = glGetUniformLocation(program, uniform.mName.c_str());
    if (location < 0)
        return; // one of OpenGL's own
    switch (uniform.mType) {
    case GL_FLOAT:
    case GL_FLOAT_VEC2:
    case GL_FLOAT_VEC3:
    case GL_FLOAT_VEC4:
    case GL_FLOAT_MAT2:
    case GL_FLOAT_MAT3:
    case GL_FLOAT_MAT4:
        return glGetUniformfv(program, location, uniform.mFloats);
    default: // whole numbers, truth values, samplers
        return glGetUniformiv(program, location, uniform.mIntegers);
    }
}

// Into the current program.
void Write(GLuint program, const cUniform &uniform)
{
    const GLint location = glGetUniformLocation(program, uniform.mName.c_str());
    if (location < 0)
        return; // gone
    const GLfloat *floats = uniform.mFloats;
    switch (uniform.mType) {
    case GL_FLOAT:
        return glUniform1fv(location, 1, floats);
    case GL_FLOAT_VEC2:
        return glUniform2fv(location, 1, floats);
    case GL_FLOAT_VEC3:
        return glUniform3fv(location, 1, floats);
    case GL_FLOAT_VEC4:
        return glUniform4fv(location, 1, floats);
    case GL_FLOAT_MAT2:
        return glUniformMatrix2fv(location, 1, GL_FALSE, floats);
    case GL_FLOAT_MAT3:
        return glUniformMatrix3fv(location, 1, GL_FALSE, floats);
    case GL_FLOAT_MAT4:
        return glUniformMatrix4fv(location, 1, GL_FALSE, floats);
    case GL_INT_VEC2:
    case GL_BOOL_VEC2:
        return glUniform2iv(location, 1, uniform.mIntegers);
    case GL_INT_VEC3:
    case GL_BOOL_VEC3:
        return glUniform3iv(location, 1, uniform.mIntegers);
    case GL_INT_VEC4:
    case GL_BOOL_VEC4:
        return glUniform4iv(location, 1, uniform.mIntegers);
    default:
        return glUniform1iv(location, 1, uniform.mIntegers);
    }
}

// Element `index` of the array that OpenGL calls "name[0]".
std::string ElementName(const std::string &name, GLint index)
{
    return index == 0 ? name : name.substr(0, name.rfind('[')) + '[' + std::to_string(index) + ']';
}

/// Name and type of each uniform, an array's elements one by one, without values.
std::vector<cUniform> ListUniforms(GLuint program)
{
    GLint count = 0;
    glGetProgramiv(program, GL_ACTIVE_UNIFORMS, &count);
    std::vector<cUniform> uniforms;
    for (GLint i = 0; i < count; i++) {
        char name[256];
        GLint size = 0;
        GLenum type = 0;
        glGetActiveUniform(program, GLuint(i), sizeof name, nullptr, &size, &type, name);
        for (GLint element = 0; element < size; element++) {
            uniforms.emplace_back();
            uniforms.back().mName = ElementName(name, element);
            uniforms.back().mType = type;
        }
    }
    return uniforms;
}

// A uniform that has another type now is another uniform.
void WriteKept(GLuint program, const std::vector<cUniform> &kept)
{
    std::map<std::string, GLenum> types;
    for (const cUniform &uniform : ListUniforms(program))
        types[uniform.mName] = uniform.mType;
    GLint current = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    glUseProgram(program);
    for (const cUniform &uniform : kept) {
        const auto found = types.find(uniform.mName);
        if (found != types.end() && found->second == uniform.mType)
            Write(program, uniform);
    }
    glUseProgram(GLuint(current));
}

void Rebuild(GLuint program, const cShaderFiles &files)
{
    std::vector<cUniform> uniforms = ListUniforms(program);
    for (cUniform &uniform : uniforms)
        Read(program, uniform);
    GLuint shaders[2] = {};
    GLsizei count = 0;
    glGetAttachedShaders(program, 2, &count, shaders);
    for (GLsizei i = 0; i < count; i++) {
        GLint type = 0;
        glGetShaderiv(shaders[i], GL_SHADER_TYPE, &type);
        Compile(shaders[i], type == GL_VERTEX_SHADER ? files.mVertex : files.mFragment);
    }
    glLinkProgram(program);
    WriteKept(program, uniforms);
}

bool IsMadeOf(const cShaderFiles &files, const std::string &path)
{
    return files.mVertex == path || files.mFragment == path;
}
} // namespace

void NoteShaderFiles(unsigned int program, const cShaderFiles &files)
{
    Programs()[program] = files;
}

bool cRenderer::RefreshShaders(const std::string &path, std::string &log)
{
    std::vector<GLuint> made;
    for (const auto &[program, files] : Programs())
        if (IsMadeOf(files, path) && glIsProgram(program))
            made.push_back(program);
    for (GLuint program : made)
        if (!MakeAProgram(Programs()[program], log))
            return false;
    for (GLuint program : made)
        Rebuild(program, Programs()[program]);
    return true;
}
} // namespace vyr
