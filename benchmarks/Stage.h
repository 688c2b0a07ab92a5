#pragma once

#include "demo/Show.h"
#include "platform/Window.h"

#include <deque>

namespace bench
{
/// The show of the working directory in a window of its own, to be drawn frame by frame. One at a
/// time, on the main thread.
class cStage
{
public:
    /// Opens the window and loads the show. Ends the program when there is no window.
    cStage(const vyr::platform::WindowSystem &system, int width, int height);
    ~cStage();
    cStage(const cStage &) = delete;
    cStage &operator=(const cStage &) = delete;

    /// Draws, waits until all is drawn, and presents.
    void ShowFrame(double row);

    /// From now on `track` is `value` everywhere.
    void Fix(demo::eTrack track, float value);
    /// Only what is flat remains: photos, words, logo, vignette and fades.
    void FixToFlatLayers();
    void UseVignette(int texture) { mShow.mAssets.mVignette = texture; }
    /// The show as loaded again.
    void Restore() { mShow = mLoaded; }

    /// Of all textures, at four bytes a pixel.
    long GetTextureBytes() const;

    const demo::cLoadedShow &GetShow() const { return mShow; }

private:
    struct cConstant
    {
        sync_key mKey;
        sync_track mTrack;
    };

    sync_device *mDevice = nullptr;
    demo::cLoadedShow mLoaded, mShow;
    std::deque<cConstant> mConstants; // a deque's elements stay where they are
};

/// Row of the `frame`-th of `count` frames spread evenly over the show.
inline double RowOf(int frame, int count) { return demo::kLastRow * (frame + 0.5) / count; }
} // namespace bench
