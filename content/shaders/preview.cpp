// Looks at the shaders of the show without the show: writes pictures and strips of moments, prints
// brightness over time, and measures drawing speed beside a plain textured quad. The README next to
// this file says how to call it.

#include "Stage.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace
{

/// Any picture will do; it is not one colour, lest a driver find a shortcut.
GLuint MakePlainTexture(int side)
{
    std::vector<unsigned char> pixels;
    for (int y = 0; y < side; y++)
        for (int x = 0; x < side; x++)
            for (int value : {x, y, x + y, 255})
                pixels.push_back(static_cast<unsigned char>(value & 255));
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, side, side, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels.data());
    return texture;
}

template <class Draw>
double Milliseconds(Draw draw)
{
    const int repeats = 20;
    glFinish();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < repeats; i++) {
        draw();
        glFinish();
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
               .count() /
           repeats;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Takes turns, so that whatever else the machine does hits all three alike, and compares within
/// each turn.
void PrintSpeed(cSettings settings, const cPrograms &programs)
{
    MakePlainTexture(settings.mTexture);
    std::vector<double> plains, plasmaRatios, noiseRatios;
    for (int round = 0; round < 25; round++) {
        settings.mTime = float(round) * 8.24f; // all over the show
        const double plain = Milliseconds([&] { DrawPlain(settings); });
        plains.push_back(plain);
        plasmaRatios.push_back(Milliseconds([&] { DrawPlasma(programs.mPlasma, settings, 1.0f); }) /
                               plain);
        noiseRatios.push_back(Milliseconds([&] { DrawNoise(programs.mNoise, settings); }) / plain);
    }
    std::printf("%s, %d by %d\n", glGetString(GL_RENDERER), settings.mWidth, settings.mHeight);
    std::printf(
        "plain quad %.2f ms; plasma with flare takes %.2f times as long, noise %.2f times\n",
        Median(plains), Median(plasmaRatios), Median(noiseRatios));
}

/// The settings of moment `index`: time runs on, the lamp moves evenly from its first place and
/// size to its last.
cSettings Moment(cSettings settings, int index)
{
    const float part = settings.mCount > 1 ? float(index) / float(settings.mCount - 1) : 0.0f;
    const auto move = [part](float &value, std::optional<float> last) {
        value += (last.value_or(value) - value) * part;
    };
    move(settings.mLamp.mX, settings.mLastX);
    move(settings.mLamp.mY, settings.mLastY);
    move(settings.mLamp.mSize, settings.mLastSize);
    settings.mTime += settings.mStep * float(index);
    return settings;
}

void PrintLuminance(const cSettings &settings, const cPrograms &programs)
{
    const double weights[3] = {0.2126, 0.7152, 0.0722};
    for (int i = 0; i < settings.mCount; i++) {
        const cSettings moment = Moment(settings, i);
        const std::vector<unsigned char> pixels = Draw(moment, programs);
        double sum = 0;
        for (size_t p = 0; p < pixels.size(); p++)
            sum += weights[p % 3] * pixels[p];
        std::printf("%8.3f s %7.2f\n", double(moment.mTime), sum * 3 / double(pixels.size()));
    }
}

void WritePicture(const cSettings &settings, const cPrograms &programs)
{
    const int columns = std::min(settings.mColumns, settings.mCount),
              rows = (settings.mCount + columns - 1) / columns;
    const size_t line = size_t(settings.mWidth) * 3, sheetLine = line * size_t(columns);
    std::vector<unsigned char> sheet(sheetLine * size_t(rows) * size_t(settings.mHeight));
    for (int i = 0; i < settings.mCount; i++) {
        const std::vector<unsigned char> pixels = Draw(Moment(settings, i), programs);
        auto *corner = sheet.data() + size_t(i / columns * settings.mHeight) * sheetLine +
                       size_t(i % columns) * line;
        for (size_t y = 0; y < size_t(settings.mHeight); y++)
            std::copy_n(pixels.data() + (size_t(settings.mHeight) - 1 - y) * line, line,
                        corner + y * sheetLine);
    }
    if (!stbi_write_png(settings.mOutput.c_str(), settings.mWidth * columns,
                        rows * settings.mHeight, 3, sheet.data(), int(sheetLine)))
        Fail(settings.mOutput + ": cannot be written");
}

void Set(cSettings &settings, const std::string &name, const std::string &value)
{
    const std::map<std::string, std::string *> words = {{"layer", &settings.mLayer},
                                                        {"out", &settings.mOutput}};
    const std::map<std::string, int *> counts = {{"width", &settings.mWidth},
                                                 {"height", &settings.mHeight},
                                                 {"count", &settings.mCount},
                                                 {"columns", &settings.mColumns},
                                                 {"texture", &settings.mTexture}};
    const std::map<std::string, float *> numbers = {
        {"time", &settings.mTime},      {"step", &settings.mStep}, {"alpha", &settings.mAlpha},
        {"grey", &settings.mGrey},      {"x", &settings.mLamp.mX}, {"y", &settings.mLamp.mY},
        {"size", &settings.mLamp.mSize}};
    const std::map<std::string, std::optional<float> *> lasts = {
        {"x2", &settings.mLastX}, {"y2", &settings.mLastY}, {"size2", &settings.mLastSize}};
    if (words.count(name))
        *words.at(name) = value;
    else if (counts.count(name))
        *counts.at(name) = std::max(1, std::atoi(value.c_str()));
    else if (numbers.count(name))
        *numbers.at(name) = std::strtof(value.c_str(), nullptr);
    else if (lasts.count(name))
        *lasts.at(name) = std::strtof(value.c_str(), nullptr);
    else
        Fail("unknown setting " + name);
}

cSettings ReadSettings(int argc, char **argv)
{
    cSettings settings;
    for (int i = 2; i < argc; i++) {
        const std::string argument = argv[i];
        const size_t equals = argument.find('=');
        if (equals == std::string::npos)
            Fail(argument + ": a setting is name=value");
        Set(settings, argument.substr(0, equals), argument.substr(equals + 1));
    }
    if (settings.mLayer != "plasma" && settings.mLayer != "noise" && settings.mLayer != "both")
        Fail("layer is plasma, noise or both");
    return settings;
}

} // namespace

int main(int argc, char **argv)
{
    const std::map<std::string, void (*)(const cSettings &, const cPrograms &)> actions = {
        {"picture", WritePicture},
        {"luminance", PrintLuminance},
        {"speed", [](const cSettings &settings, const cPrograms &programs) {
             PrintSpeed(settings, programs);
         }}};
    if (argc < 2 || !actions.count(argv[1]))
        Fail("call it with picture, luminance or speed, then name=value settings");
    const cSettings settings = ReadSettings(argc, argv);
    OpenStage(settings);
    const cPrograms programs = BuildPrograms();
    actions.at(argv[1])(settings, programs);
    return 0;
}
