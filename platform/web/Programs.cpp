#include "platform/web/Programs.h"

#include "platform/web/Matrix.h"
#include "platform/web/ShaderText.h"
#include "platform/web/WebGL.h"

#include <array>
#include <map>
#include <string>

namespace vyr::web
{
namespace
{
/// A linked program and the matrices that it has been given.
struct cProgram
{
    GLuint mName = 0;
    GLint mModelViewProjectionPlace = -1, mModelViewPlace = -1, mProjectionPlace = -1,
          mNormalPlace = -1;
    bool mHasMatrices = false;
    tMatrix mModelView{}, mProjection{};
};

std::map<GLuint, cProgram> programs;
std::array<GLuint, 3> fixedPrograms{};
GLuint used = 0;    // by the show; 0: the fixed pipeline
GLuint current = 0; // WebGL's

void MakeCurrent(GLuint program)
{
    if (program == current)
        return;
    glUseProgram(program);
    current = program;
}

GLuint CompileStage(GLenum stage, const char *text)
{
    const GLuint shader = glCreateShader(stage);
    vyr_glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    return shader;
}

bool HasStage(GLuint program, GLenum stage)
{
    std::array<GLuint, 8> shaders{};
    GLsizei count = 0;
    glGetAttachedShaders(program, GLsizei(shaders.size()), &count, shaders.data());
    for (GLsizei i = 0; i < count; i++) {
        GLint type = 0;
        glGetShaderiv(shaders[size_t(i)], GL_SHADER_TYPE, &type);
        if (GLenum(type) == stage)
            return true;
    }
    return false;
}

void CompleteStage(GLuint program, GLenum stage, const char *text)
{
    if (!HasStage(program, stage))
        glAttachShader(program, CompileStage(stage, text));
}

cProgram Located(GLuint name)
{
    cProgram program;
    program.mName = name;
    program.mModelViewProjectionPlace = glGetUniformLocation(name, "vyr_ModelViewProjectionMatrix");
    program.mModelViewPlace = glGetUniformLocation(name, "vyr_ModelViewMatrix");
    program.mProjectionPlace = glGetUniformLocation(name, "vyr_ProjectionMatrix");
    program.mNormalPlace = glGetUniformLocation(name, "vyr_NormalMatrix");
    return program;
}

GLuint MakeFixedProgram(eFixedPipeline kind)
{
    const GLuint program = glCreateProgram();
    const char *const vertex = kind == SPHERE_MAPPED ? kSphereMapVertexShader : kFixedVertexShader;
    const char *const fragment = kind == PLAIN ? kFixedFragmentShader : kTexturedFragmentShader;
    glAttachShader(program, CompileStage(GL_VERTEX_SHADER, vertex));
    glAttachShader(program, CompileStage(GL_FRAGMENT_SHADER, fragment));
    vyr_glLinkProgram(program);
    return program;
}

GLuint FixedProgram(eFixedPipeline kind)
{
    GLuint &program = fixedPrograms[kind];
    if (program == 0)
        program = MakeFixedProgram(kind);
    return program;
}

void SendMatrices(cProgram &program)
{
    const tMatrix &modelView = ModelView(), &projection = Projection();
    if (program.mHasMatrices && program.mModelView == modelView &&
        program.mProjection == projection)
        return;
    // WebGL ignores what a program has no place for.
    glUniformMatrix4fv(program.mModelViewPlace, 1, GL_FALSE, modelView.data());
    glUniformMatrix4fv(program.mProjectionPlace, 1, GL_FALSE, projection.data());
    glUniformMatrix4fv(program.mModelViewProjectionPlace, 1, GL_FALSE,
                       (projection * modelView).data());
    if (program.mNormalPlace >= 0)
        glUniformMatrix3fv(program.mNormalPlace, 1, GL_FALSE, NormalMatrix(modelView).data());
    program.mModelView = modelView;
    program.mProjection = projection;
    program.mHasMatrices = true;
}
} // namespace

void PrepareProgram(eFixedPipeline fixed)
{
    const GLuint name = used ? used : FixedProgram(fixed);
    MakeCurrent(name);
    SendMatrices(programs[name]);
}

GLuint GetUsedProgram() { return used; }
} // namespace vyr::web

using namespace vyr::web;

void vyr_glShaderSource(GLuint shader, GLsizei count, const GLchar *const *texts,
                        const GLint *lengths)
{
    std::string text;
    for (GLsizei i = 0; i < count; i++)
        text += lengths && lengths[i] >= 0 ? std::string(texts[i], size_t(lengths[i])) : texts[i];
    GLint stage = 0;
    glGetShaderiv(shader, GL_SHADER_TYPE, &stage);
    const std::string translated = GLenum(stage) == GL_VERTEX_SHADER
                                       ? TranslateVertexShader(text)
                                       : TranslateFragmentShader(text);
    const char *const whole = translated.c_str();
    glShaderSource(shader, 1, &whole, nullptr);
}

// An empty log has a length of 1 here, for its end; desktop drivers say 0.
static void DropEmptyLog(GLenum name, GLint *value)
{
    if (name == GL_INFO_LOG_LENGTH && *value == 1)
        *value = 0;
}

void vyr_glGetShaderiv(GLuint shader, GLenum name, GLint *value)
{
    glGetShaderiv(shader, name, value);
    DropEmptyLog(name, value);
}

void vyr_glGetProgramiv(GLuint program, GLenum name, GLint *value)
{
    glGetProgramiv(program, name, value);
    DropEmptyLog(name, value);
}

void vyr_glLinkProgram(GLuint program)
{
    CompleteStage(program, GL_VERTEX_SHADER, kFixedVertexShader);
    CompleteStage(program, GL_FRAGMENT_SHADER, kTexturedFragmentShader);
    glLinkProgram(program);
    programs[program] = Located(program);
}

void vyr_glValidateProgram(GLuint) {}

// WebGL's program changes at once: uniforms that are set next belong to it.
void vyr_glUseProgram(GLuint program)
{
    used = program;
    MakeCurrent(program);
}
