#include "benchmarks/StartupBare.h"

#include "demo/Show.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>
#include <stb_image.h>

#include <cstdio>
#include <string>
#include <vector>

namespace bench
{
namespace
{
const float width = 1280.0f, height = 720.0f;

std::string ReadFile(const std::string &path)
{
    std::string bytes;
    if (FILE *file = std::fopen(path.c_str(), "rb")) {
        std::fseek(file, 0, SEEK_END);
        bytes.resize(size_t(std::ftell(file)));
        std::rewind(file);
        bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
        std::fclose(file);
    }
    return bytes;
}

void ReadTracks()
{
    for (int i = 0; i < demo::TRACK_COUNT; i++)
        ReadFile(std::string("sync_") + demo::TrackName(demo::eTrack(i)) + ".track");
}

void Compile(GLuint program, GLenum stage, const char *path)
{
    const std::string source = ReadFile(path);
    const char *text = source.c_str();
    const GLuint shader = glCreateShader(stage);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
}

GLuint LoadProgram(const char *fragmentPath)
{
    const GLuint program = glCreateProgram();
    Compile(program, GL_VERTEX_SHADER, "data/shaders/default.vs");
    Compile(program, GL_FRAGMENT_SHADER, fragmentPath);
    glLinkProgram(program);
    return program;
}

GLuint LoadImage(const std::string &path)
{
    int columns = 0, rows = 0, components = 0;
    unsigned char *pixels = stbi_load(path.c_str(), &columns, &rows, &components, 0);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, components, columns, rows, 0, components == 4 ? GL_RGBA : GL_RGB,
                 GL_UNSIGNED_BYTE, pixels);
    stbi_image_free(pixels);
    return texture;
}

GLuint LoadImagesAndObjects()
{
    for (const std::string &photo : demo::PhotoNames())
        LoadImage(photo);
    for (int i = 0; i < demo::kLyricCount; i++)
        LoadImage(demo::LyricName(i));
    LoadImage("data/zemlogo.png");
    const GLuint vignette = LoadImage("data/vignette1.png");
    LoadImage("data/tex9.png");
    ReadFile("data/oh1.lwo");
    LoadImage("data/textures/oh1.png"); // which the first object names
    ReadFile("data/oh2.lwo");
    return vignette;
}

void DrawObject(const cBareGift &gift)
{
    glLoadIdentity();
    glTranslatef(gift.mObjectX, gift.mObjectY, gift.mObjectZ);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, gift.mObject->mPositions);
    glColorPointer(4, GL_FLOAT, 0, gift.mObject->mColors);
    glNormalPointer(GL_FLOAT, 0, gift.mObject->mNormals);
    glDisable(GL_TEXTURE_2D);
    glDrawElements(GL_TRIANGLES, 3 * gift.mObject->mPolygonCount, GL_UNSIGNED_INT,
                   gift.mObject->mIndices);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

void DrawQuad(float left, float right)
{
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 1.0f), glVertex2f(left, height);
    glTexCoord2f(1.0f, 1.0f), glVertex2f(right, height);
    glTexCoord2f(1.0f, 0.0f), glVertex2f(right, 0.0f);
    glTexCoord2f(0.0f, 0.0f), glVertex2f(left, 0.0f);
    glEnd();
}

void DrawFill(float brightness, float alpha)
{
    glDisable(GL_TEXTURE_2D);
    glColor4f(brightness, brightness, brightness, alpha);
    DrawQuad(0.0f, width);
}

void DrawNoise(GLuint program, float alpha)
{
    glUseProgram(program);
    glUniform1f(glGetUniformLocation(program, "time"), float(kFirstSeconds));
    glUniform1f(glGetUniformLocation(program, "alpha"), alpha);
    DrawQuad(0.0f, width);
    glUseProgram(0);
}

// The object under the film's grain, the white fade, the vignette and the black fade.
void DrawPicture(const cBareGift &gift, GLuint noise, GLuint vignette)
{
    glEnable(GL_BLEND);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawObject(gift);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, double(width), double(height), 0.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDepthMask(GL_FALSE);
    DrawNoise(noise, gift.mNoise);
    DrawFill(1.0f, gift.mWhite);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glBindTexture(GL_TEXTURE_2D, vignette);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    const float margin = 0.5f * (width - float(gift.mVignetteWidth));
    DrawQuad(margin, width - margin);
    DrawFill(0.0f, gift.mBlack);
}
} // namespace

cBareGift MakeBareGift()
{
    sync_device *device = sync_create_device(demo::kTrackPrefix);
    const demo::tTracks tracks = demo::LoadTracks(device);
    const auto sample = [&](demo::eTrack track) {
        return sync_get_val(tracks[size_t(track)], kFirstRow);
    };
    vyr::tSingleton<vyr::cTextureManager>::CreateSingleton();
    cBareGift gift;
    gift.mObject = vyr::c3DObject::CreateFromLWO2("data/oh2.lwo")->CreateRenderObject();
    gift.mObjectX = sample(demo::OBJECT_X);
    gift.mObjectY = sample(demo::OBJECT_Y);
    gift.mObjectZ = sample(demo::OBJECT_Z);
    gift.mNoise = sample(demo::FADE_FG_NOISE);
    gift.mWhite = sample(demo::FADE_BG_WHITE);
    gift.mBlack = sample(demo::FADE_FG_BLACK);
    int rows = 0, components = 0;
    stbi_info("data/vignette1.png", &gift.mVignetteWidth, &rows, &components);
    return gift;
}

void StartBare(const cBareGift &gift)
{
    ReadTracks();
    const GLuint noise = LoadProgram("data/shaders/noise.fs");
    LoadProgram("data/shaders/plasma.fs");
    const GLuint vignette = LoadImagesAndObjects();
    DrawPicture(gift, noise, vignette);
    glFinish();
}
} // namespace bench
