// Movement by tracks, in time with music.
//
// See: a clock hops from beat to beat across the window, turns, and lands with the bar.
// Change: the keys in examples/movement.txt (times are bar:beat:row), then build again; or give the
// tracks to other numbers below: an alpha, a colour, a second sprite.
//
// A track is a named curve over rows, 8 of them a beat. The build makes a file of each track of
// movement.txt: "clock:x" becomes sync_clock:x.track, which sync_get_track finds by prefix and
// name.

#include "examples/Example.h"
#include "examples/Music.h"
#include "sync/data.h"

namespace
{
const double rowsPerSecond = 132.0 / 60.0 * 8.0; // 132 beats a minute

int picture;
const sync_track *x, *y, *angle, *size;

void Load()
{
    picture = LoadPicture("data/tex9.png");
    sync_device *device = sync_create_device("sync"); // keeps the tracks until the program's end
    x = sync_get_track(device, "clock:x");
    y = sync_get_track(device, "clock:y");
    angle = sync_get_track(device, "clock:angle");
    size = sync_get_track(device, "clock:size");
}

void Draw(double seconds)
{
    const double row = seconds * rowsPerSecond;
    const float zoom = sync_get_val(size, row);
    Renderer().Post_DrawSprite(picture, {sync_get_val(x, row), sync_get_val(y, row)}, {zoom, zoom},
                               sync_get_val(angle, row));
}
} // namespace

const cExample kExample = {"Movement by tracks", Load, Draw, MusicSeconds};
