// Night: a moon rises over fog for eight bars, and some words come and go.
//
// What is seen when stands in night.txt. Here stands what it looks like: a function for each layer.

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "show/Show.h"

#include <epoxy/gl.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace
{
const double beatsPerMinute = 120;
const int barCount = 8;

// The tracks, in the order of the description's list.
enum eTrack : int
{
    MOON_X,
    MOON_Y,
    MOON_SIZE,
    MOON_ALPHA,
    FOG_ALPHA,
    WORDS_NUM,
    WORDS_FADE
};

const std::vector<std::string> wordFiles = {"data/words0.png", "data/words1.png"};

vyr::cRenderer &Renderer() { return vyr::tSingleton<vyr::cRenderer>::GetSingleton(); }

vyr::cTextureManager &Textures() { return vyr::tSingleton<vyr::cTextureManager>::GetSingleton(); }

int LoadPicture(const std::string &file)
{
    const int texture = Textures().LoadTexture(file, false);
    if (texture < 0)
        throw std::runtime_error(file + ": no picture that can be read");
    return texture;
}

class cNight : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        vyr::cShowDescription show;
        show.mTitle = "Night";
        show.mMusic = "data/music.mp3";
        show.mRowsPerSecond = beatsPerMinute / 60 * show.mRowsPerBeat;
        show.mLastRow = barCount * show.mBeatsPerBar * show.mRowsPerBeat;
        show.mTracks = {"moon:x",    "moon:y",    "moon:size", "moon:alpha",
                        "fog:alpha", "words:num", "words:fade"};
        show.mFiles = {"data/fog.fs", "data/moon.png"};
        show.mChoices = {{"words:num", wordFiles}};
        return show;
    }

    void Load() override
    {
        mFog = Renderer().CreateShader("", "data/fog.fs", true);
        mMoon = LoadPicture("data/moon.png");
        for (const std::string &file : wordFiles)
            mWords.push_back(LoadPicture(file));
    }

    // The layers, back to front.
    void Draw(double row, double seconds) override
    {
        Renderer().BeginScene();
        Renderer().Clear({0.02f, 0.03f, 0.08f, 1});
        DrawMoon(row);
        DrawFog(row, seconds);
        DrawWords(row);
        Renderer().EndScene();
    }

private:
    void DrawMoon(double row) const
    {
        const float size = Sample(MOON_SIZE, row);
        glUseProgram(0);
        glColor4f(1, 1, 1, Sample(MOON_ALPHA, row));
        Renderer().Post_DrawSprite(mMoon, {Sample(MOON_X, row), Sample(MOON_Y, row)}, {size, size},
                                   0);
    }

    void DrawFog(double row, double seconds) const
    {
        glUseProgram(mFog);
        glUniform1f(glGetUniformLocation(mFog, "seconds"), float(seconds));
        glUniform1f(glGetUniformLocation(mFog, "alpha"), Sample(FOG_ALPHA, row));
        glUniform2f(glGetUniformLocation(mFog, "resolution"), float(Renderer().GetWidth()),
                    float(Renderer().GetHeight()));
        Renderer().DrawFullscreenQuad({0, 0, 0}, {0, 1}, {1, 0});
    }

    // Below 0 there are none.
    void DrawWords(double row) const
    {
        const float number = Sample(WORDS_NUM, row);
        if (number < 0)
            return;
        const int words = mWords.at(size_t(number));
        const float width = Textures().GetTexture(words).mSize.x;
        glUseProgram(0);
        glColor4f(1, 1, 1, Sample(WORDS_FADE, row));
        Renderer().Post_DrawSprite(words, {(1280 - width) / 2, 560}, {1, 1}, 0);
    }

    unsigned int mFog = 0; // a shader program
    int mMoon = -1;        // textures
    std::vector<int> mWords;
};
} // namespace

VYR_SHOW(cNight);
