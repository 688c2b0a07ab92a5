#include "Stage.h"

#include <epoxy/egl.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

void Fail(const std::string &reason)
{
    std::fprintf(stderr, "preview: %s\n", reason.c_str());
    std::exit(1);
}

namespace
{

std::string ReadText(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        Fail(path + ": cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

EGLConfig ChooseConfig(EGLDisplay display)
{
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_ALPHA_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             16,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &count) || count < 1)
        Fail("EGL offers no pbuffer for OpenGL");
    return config;
}

/// A pbuffer and not a texture: drivers lay out a window's pixels otherwise, and the show draws
/// into a window.
void OpenContext(int width, int height)
{
    EGLDisplay display = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    if (!eglInitialize(display, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_API))
        Fail("no EGL display for OpenGL");
    EGLConfig config = ChooseConfig(display);
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (!eglMakeCurrent(display, surface, surface, context))
        Fail("no OpenGL context");
}

/// The show's state for a full-screen quad: one unit a pixel, a 16:9 viewport over the full width,
/// blending.
void SetState(const cSettings &settings)
{
    const float viewHeight = float(settings.mWidth) / (16.0f / 9.0f);
    glViewport(0, int((float(settings.mHeight) - viewHeight) * 0.5f), settings.mWidth,
               int(viewHeight));
    glMatrixMode(GL_PROJECTION);
    glOrtho(0, settings.mWidth, settings.mHeight, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void DrawQuad(const cSettings &settings)
{
    const auto width = float(settings.mWidth), height = float(settings.mHeight);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 1), glVertex3f(0, height, 0);
    glTexCoord2f(1, 1), glVertex3f(width, height, 0);
    glTexCoord2f(1, 0), glVertex3f(width, 0, 0);
    glTexCoord2f(0, 0), glVertex3f(0, 0, 0);
    glEnd();
}

GLuint Compile(GLenum stage, const std::string &path)
{
    const std::string text = ReadText(path);
    const char *source = text.c_str();
    GLuint shader = glCreateShader(stage);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    char log[2000] = "";
    glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    if (log[0])
        Fail(path + ": " + log); // the show prints any log, so even a warning is a fault
    return shader;
}

/// The show sets a uniform that the compiler has removed without noticing, so each name must be
/// found here.
void CheckUniforms(GLuint program, const std::vector<const char *> &names)
{
    for (const char *name : names)
        if (glGetUniformLocation(program, name) < 0)
            Fail(std::string("uniform ") + name + " has no effect");
}

GLuint BuildProgram(const std::string &fragmentPath, const std::vector<const char *> &uniforms)
{
    GLuint program = glCreateProgram();
    glAttachShader(program, Compile(GL_VERTEX_SHADER, "data/shaders/default.vs"));
    glAttachShader(program, Compile(GL_FRAGMENT_SHADER, fragmentPath));
    glLinkProgram(program);
    glValidateProgram(program);
    char log[2000] = "";
    glGetProgramInfoLog(program, sizeof log, nullptr, log);
    if (log[0])
        Fail(fragmentPath + ": " + log);
    CheckUniforms(program, uniforms);
    return program;
}

} // namespace

void DrawPlasma(GLuint program, const cSettings &settings, float alpha)
{
    glUseProgram(program);
    glUniform1f(glGetUniformLocation(program, "time"), settings.mTime);
    glUniform1f(glGetUniformLocation(program, "alpha"), alpha);
    glUniform2f(glGetUniformLocation(program, "resolution"), float(settings.mWidth),
                float(settings.mHeight));
    glUniform2f(glGetUniformLocation(program, "flarepos"), settings.mLamp.mX, settings.mLamp.mY);
    glUniform1f(glGetUniformLocation(program, "flaresize"), settings.mLamp.mSize);
    DrawQuad(settings);
    glUseProgram(0);
}

void DrawNoise(GLuint program, const cSettings &settings)
{
    glUseProgram(program);
    glUniform1f(glGetUniformLocation(program, "time"), settings.mTime);
    glUniform1f(glGetUniformLocation(program, "alpha"), settings.mAlpha);
    DrawQuad(settings);
    glUseProgram(0);
}

void DrawPlain(const cSettings &settings)
{
    glEnable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 1);
    DrawQuad(settings);
    glDisable(GL_TEXTURE_2D);
}

void OpenStage(const cSettings &settings)
{
    OpenContext(settings.mWidth, settings.mHeight);
    SetState(settings);
}

cPrograms BuildPrograms()
{
    return {BuildProgram("data/shaders/plasma.fs",
                         {"time", "alpha", "resolution", "flarepos", "flaresize"}),
            BuildProgram("data/shaders/noise.fs", {"time", "alpha"})};
}

std::vector<unsigned char> Draw(const cSettings &settings, const cPrograms &programs)
{
    const float grey = settings.mLayer == "noise" ? settings.mGrey : 0.0f;
    glClearColor(grey, grey, grey, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    if (settings.mLayer != "noise")
        DrawPlasma(programs.mPlasma, settings, settings.mLayer == "both" ? 1.0f : settings.mAlpha);
    if (settings.mLayer != "plasma")
        DrawNoise(programs.mNoise, settings);
    std::vector<unsigned char> pixels(size_t(settings.mWidth) * size_t(settings.mHeight) * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, settings.mWidth, settings.mHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}
