// A small show that goes wrong where the environment's VYR_BROKEN says.

#include "show/Show.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

#include <epoxy/gl.h>

namespace
{
bool Is(const char *kind)
{
    const char *asked = std::getenv("VYR_BROKEN");
    return asked && std::string(asked) == kind;
}

void GoWrongIn(const std::string &call)
{
    if (Is(("throw in " + call).c_str()))
        throw std::runtime_error("thrown on purpose");
    if (Is(("throw a number in " + call).c_str()))
        throw 7;
    if (Is(("crash in " + call).c_str()))
        std::abort();
    if (Is(("exit in " + call).c_str()))
        std::exit(3);
    while (Is(("hang in " + call).c_str()))
        std::this_thread::sleep_for(std::chrono::hours(1));
}

class cBroken : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        GoWrongIn("Describe");
        vyr::cShowDescription show;
        show.mTitle = "Broken";
        show.mMusic = Is("no music") ? "" : "data/music.mp3";
        show.mRowsPerSecond = Is("no tempo") ? 0 : 16;
        show.mLastRow = Is("last row beyond the music") ? 3000 : 256;
        if (!Is("no tracks"))
            show.mTracks = {"height", "pick"};
        if (Is("a track twice"))
            show.mTracks.push_back("height");
        show.mFiles = {"data/fog.fs"};
        show.mChoices = {{Is("a choice for no track") ? "pack" : "pick", {"data/moon.png"}}};
        if (Is("a file outside"))
            show.mFiles.push_back("data/../../moon.png");
        return show;
    }

    void Load() override { GoWrongIn("Load"); }

    void Draw(double row, double) override
    {
        if (row >= 100)
            GoWrongIn("Draw");
        if (Is("an OpenGL error"))
            glBegin(GL_POLYGON + 100);
        mHeight = Sample(0, row);
    }

private:
    float mHeight = 0;
};
} // namespace

VYR_SHOW(cBroken);
