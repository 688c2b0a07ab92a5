// Draws the pictures of docs/examples: one of each example, at a moment that shows its idea.
//
//     cd build/examples && ../tests/examples/examples-pictures ../../docs/examples

#include "tests/examples/Examples.h"

#include "platform/Window.h"

#include <epoxy/gl.h>
#include <stb_image_write.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{
const int width = 480, height = 270;

const struct
{
    const char *name;
    const cExample &example;
    double seconds;
} pictures[] = {
    {"sprite", kSprite, 0.9},
    {"movement", kMovement, 1.5},
    {"object", kObject, 0.9},
    {"rgb-split", kRgbSplit, 2.04},
    {"feedback-blur", kFeedbackBlur, 1.0},
    {"signal-distort", kSignalDistort, 1.7},
    {"text", kText, 2.2},
    {"show", kShow, 7.0},
};

void Open()
{
    vyr::tSingleton<vyr::cRenderer>::CreateSingleton();
    Renderer().SetScaleFactor({width / 1280.0f, height / 720.0f});
    Renderer().Init(width, height, false);
    vyr::tSingleton<vyr::cTextureManager>::CreateSingleton();
}

void Close()
{
    vyr::tSingleton<vyr::cTextureManager>::DestroySingleton();
    Renderer().Shutdown();
    vyr::tSingleton<vyr::cRenderer>::DestroySingleton();
}

void Draw(const cExample &example, double seconds)
{
    Renderer().Clear(vyr::cColor(0, 0, 0, 1));
    glEnable(GL_BLEND);
    example.mLoad();
    example.mDraw(seconds);
}

void Write(const std::string &path)
{
    std::vector<unsigned char> pixels(3 * width * height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    stbi_flip_vertically_on_write(1);
    stbi_write_png(path.c_str(), width, height, 3, pixels.data(), 3 * width);
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: examples-pictures FOLDER\n");
        return 2;
    }
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    for (const auto &[name, example, seconds] : pictures) {
        Open();
        Draw(example, seconds);
        Write(std::string(argv[1]) + "/" + name + ".png");
        Close();
    }
    return 0;
}
