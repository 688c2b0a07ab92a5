#pragma once

#include <epoxy/gl.h>

#include <optional>
#include <string>
#include <vector>

/// Where the lamp of the plasma stands and how large it is, as the shader takes it.
struct cLamp
{
    float mX = 0.5f, mY = 0.5f, mSize = 1.0f;
};

struct cSettings
{
    std::string mLayer = "plasma"; // or "noise", or "both"
    std::string mOutput = "preview.png";
    int mWidth = 1280, mHeight = 720; // window, pixels
    int mCount = 1, mColumns = 4;     // moments in a strip, and how many of them lie side by side
    int mTexture = 512;               // side of the plain quad's texture, pixels
    float mTime = 0.0f, mStep = 0.0f; // seconds: the first moment, and from one to the next
    float mAlpha = 1.0f;              // of the layer; of the noise alone where both are drawn
    float mGrey = 0.3f;               // brightness 0..1 under the noise
    cLamp mLamp;
    std::optional<float> mLastX, mLastY, mLastSize; // the lamp moves to here by the last moment
};

struct cPrograms
{
    GLuint mPlasma = 0, mNoise = 0;
};

/// Prints `reason` as one line on standard error and ends the program with status 1.
[[noreturn]] void Fail(const std::string &reason);

/// Opens an off-screen OpenGL context of the settings' window size, in the state the show has for
/// full-screen quads: one unit a pixel, a 16:9 viewport over the full width, blending. Ends the
/// program when there is none to be had.
void OpenStage(const cSettings &settings);

/// Both programs, from data/shaders/ under the working directory. Ends the program when a shader
/// gives any log at all (the show would print it) or when a uniform that the show sets has no
/// effect. Needs the open stage.
cPrograms BuildPrograms();

void DrawPlasma(GLuint program, const cSettings &settings, float alpha);
void DrawNoise(GLuint program, const cSettings &settings);

/// Covers the window with the texture that is bound, unmoved by any program. Leaves texturing off,
/// the colour white.
void DrawPlain(const cSettings &settings);

/// Draws the settings' layer over black, or over grey when it is the noise alone. Gives the
/// window's pixels as RGB bytes, rows from the bottom up.
std::vector<unsigned char> Draw(const cSettings &settings, const cPrograms &programs);
