#pragma once

#include "demo/Show.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/Picture.h"

#include <string>

namespace record
{
struct cSize
{
    int mWidth = 1280, mHeight = 720; // pixels
};

/// Where the show is drawn when there is no window: the engine's renderer over an off-screen
/// context, and a framebuffer of the asked size with a depth buffer. One at a time, on the main
/// thread.
class cStage
{
public:
    /// Opens the context and the framebuffer. Throws cUsageError for a size above what the driver
    /// draws, cFailure when there is no OpenGL.
    explicit cStage(const cSize &size);
    ~cStage();
    cStage(const cStage &) = delete;
    cStage &operator=(const cStage &) = delete;

    /// Loads the show of the working directory. Throws cFailure, naming the file, when something
    /// in it can't be read or used.
    void LoadShow();
    const demo::cShow &GetShow() const { return mShow; }

    /// Draws the frame of music position `row`, `seconds`, and leaves it in the framebuffer bound
    /// now.
    void Draw(double row, double seconds);

    /// Draws the frames that a recording would have drawn before a frame at `microRow` and that
    /// reach into it: the last one with the tunnel, which leaves its depth behind, and the last one
    /// of all, which leaves its OpenGL state. A frame then looks the same wherever a recording
    /// starts.
    void DrawFramesBefore(const cFrameGrid &grid, int64_t microRow);

    /// The frame at `microRow` as a recording on `grid` would show it. A row that is printed for a
    /// frame of the grid stands for that frame.
    cPicture DrawStill(const cFrameGrid &grid, int64_t microRow);

    const cSize &GetSize() const { return mSize; }
    static std::string GetRendererName(); ///< the driver's, with its version

private:
    int64_t FindFrameWithTunnel(const cFrameGrid &grid, int64_t end) const;

    cSize mSize;
    unsigned int mFramebuffer = 0;
    sync_device *mTracks = nullptr;
    demo::cShow mShow;
};
} // namespace record
