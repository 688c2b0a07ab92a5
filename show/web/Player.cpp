// What a page calls to play the show that is linked into this program. The page owns files, sound
// and time; here are the show, its drawing and the clock. Calls that can fail answer 0 and leave
// one line in vyr_error.

#include "engine/Renderer.h"
#include "show/ShowFolder.h"
#include "show/Stage.h"
#include "show/web/Json.h"
#include "sound/SoundClock.h"

#include <emscripten.h>
#include <epoxy/gl.h>

#include <memory>
#include <optional>
#include <string>

namespace vyr
{
namespace
{
// A browser may move its position once in this time; most do it more often.
const double readingSeconds = 0.04;

/// The one show that is played, on its canvas.
struct cPlayed
{
    std::unique_ptr<cShowFolder> mShow;
    std::unique_ptr<cStage> mStage;
    std::optional<SoundClock> mClock;
    std::string mDescription, mError;
};

cPlayed played;

template <typename T>
int Succeeded(T call)
{
    try {
        call();
        return 1;
    } catch (const std::exception &error) {
        played.mError = error.what();
        return 0;
    }
}
} // namespace
} // namespace vyr

using namespace vyr;

extern "C" {
/// Why the last call that answered 0 did so.
EMSCRIPTEN_KEEPALIVE const char *vyr_error() { return played.mError.c_str(); }

/// Makes the show, and answers its description as JSON (see show/web/Json.h); null on failure.
EMSCRIPTEN_KEEPALIVE const char *vyr_describe()
{
    const bool isThere = Succeeded([] {
        played.mShow = std::make_unique<cShowFolder>(".");
        played.mDescription = ToJson(played.mShow->GetDescription());
    });
    return isThere ? played.mDescription.c_str() : nullptr;
}

/// Reads the tracks; from here on they can be sampled. After vyr_describe.
EMSCRIPTEN_KEEPALIVE int vyr_load_tracks()
{
    return Succeeded([] { played.mShow->LoadTracks(); });
}

/// The value at `row` of the track at place `track` of the description.
EMSCRIPTEN_KEEPALIVE double vyr_sample(int track, double row)
{
    return double(sync_get_val(&played.mShow->GetTrack(track), row));
}

/// Opens the stage on the page's canvas, in pixels.
EMSCRIPTEN_KEEPALIVE int vyr_open(int width, int height)
{
    return Succeeded([&] {
        played.mStage = std::make_unique<cStage>(cStage::WINDOW, width, height);
        if (!played.mStage->IsOpen())
            throw cShowError("no WebGL 2");
    });
}

/// The show loads its files. After vyr_open and vyr_load_tracks.
EMSCRIPTEN_KEEPALIVE int vyr_load()
{
    return Succeeded([] { played.mShow->Load(); });
}

EMSCRIPTEN_KEEPALIVE int vyr_draw(double row, double seconds)
{
    return Succeeded([&] { played.mShow->Draw(row, seconds); });
}

/// Whether the frame at `row` leaves something to later ones.
EMSCRIPTEN_KEEPALIVE int vyr_reaches_later(double row) { return played.mShow->ReachesLater(row); }

EMSCRIPTEN_KEEPALIVE int vyr_opengl_error() { return int(glGetError()); }

/// The clock forgets what it knows: the music plays from another place on.
EMSCRIPTEN_KEEPALIVE void vyr_clock_restart() { played.mClock.emplace(readingSeconds); }

/// At `now`, seconds of a steady clock, `heard` seconds of the music have been heard.
EMSCRIPTEN_KEEPALIVE void vyr_clock_observe(double now, double heard)
{
    played.mClock->Observe(now, heard);
}

/// The music's even position in seconds. After vyr_clock_restart.
EMSCRIPTEN_KEEPALIVE double vyr_clock_at(double now) { return played.mClock->At(now); }
}
