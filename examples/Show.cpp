// A show of three layers, in time with music: a place to start your own from.
//
// See: a glowing fog behind, a duck that turns in front of it, words that come and go on top.
// Change: examples/show.txt, which says when a layer is there and how strongly; the layers' order
// in Draw (what is drawn later lies above); add a layer: a track, a line in Load, a function.
//
// Each layer samples its tracks, returns when they say that it is not there, sets the state that it
// needs, and draws.

#include "examples/Example.h"
#include "examples/Music.h"
#include "sync/data.h"

#include <epoxy/gl.h>

#include <cmath>

namespace
{
const double rowsPerSecond = 132.0 / 60.0 * 8.0; // 132 beats a minute, 8 rows a beat

sync_device *device;
unsigned int fog; // a shader program
vyr::c3DObject::cRenderObject *duck;
int words[3];

float Sample(const char *track, double row)
{
    return sync_get_val(sync_get_track(device, track), row);
}

void Load()
{
    device = sync_create_device("sync");
    fog = Renderer().CreateShader("data/shaders/default.vs", "data/shaders/plasma.fs", true);
    glUseProgram(0);
    for (int i = 0; i < 3; i++)
        words[i] = LoadPicture("data/lyrics/lyrics00" + std::to_string(i));
    duck = LoadObject("data/oh1.lwo");
}

void DrawFog(double row, double seconds)
{
    const float alpha = Sample("fog:alpha", row);
    if (alpha <= 0)
        return;
    glUseProgram(fog);
    glUniform1f(glGetUniformLocation(fog, "time"), float(seconds));
    glUniform1f(glGetUniformLocation(fog, "alpha"), alpha);
    glUniform2f(glGetUniformLocation(fog, "resolution"), float(Renderer().GetWidth()),
                float(Renderer().GetHeight()));
    glUniform2f(glGetUniformLocation(fog, "flarepos"), Sample("fog:lamp", row), 0.3f);
    glUniform1f(glGetUniformLocation(fog, "flaresize"), 0.8f);
    Renderer().DrawFullscreenQuad({0, 0, 0}, {0, 1}, {1, 0});
    glUseProgram(0);
}

void DrawDuck(double row, double seconds)
{
    glEnable(GL_DEPTH_TEST);
    glLoadIdentity();
    glTranslatef(0, Sample("duck:y", row), -4);
    glRotatef(float(30 * seconds), 0, 1, 0);
    Renderer().RenderObject(duck, vyr::cRenderer::RENDERMODE_TEXTURED, -1);
}

void DrawWords(double row)
{
    const int number = int(Sample("words:num", row)); // -1: no words
    if (number < 0 || number > 2)
        return;
    const float width = Textures().GetTexture(words[number]).mSize.x;
    glColor4f(1, 1, 1, Sample("words:alpha", row));
    Renderer().Post_DrawSprite(words[number], {(1280 - width) / 2, 500}, {1, 1}, 0);
}

void Draw(double seconds)
{
    const double row = seconds * rowsPerSecond;
    DrawFog(row, seconds);
    DrawDuck(row, seconds);
    DrawWords(row);
}
} // namespace

const cExample kExample = {"A show of three layers", Load, Draw, MusicSeconds};
