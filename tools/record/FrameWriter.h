#pragma once

#include "tools/record/Picture.h"

#include <array>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace record
{
struct cDrawnFrame
{
    int64_t mFrame = 0; ///< its number on the grid
    double mRow = 0.0;
    double mSeconds = 0.0;
    cPicture mPicture;
};

/// Receives the frames of a recording, in their order. Called on the writer's thread.
class cFrameSink
{
public:
    virtual ~cFrameSink() = default;
    /// Throws cFailure when it can't go on.
    virtual void Take(const cDrawnFrame &frame) = 0;
};

/// Carries frames from the thread that draws to a thread of its own, which hands each to all sinks:
/// drawing goes on while the frames before are hashed, measured and encoded. A fixed number of
/// pictures goes round, so its memory does not grow, and the drawing waits when the sinks are
/// slower.
class cFrameWriter
{
public:
    /// `sinks` outlive the writer. Pictures are `width` by `height` pixels.
    cFrameWriter(std::vector<cFrameSink *> sinks, int width, int height);
    ~cFrameWriter(); ///< frames still under way are dropped
    cFrameWriter(const cFrameWriter &) = delete;
    cFrameWriter &operator=(const cFrameWriter &) = delete;

    /// Waits for a picture to fill; null when a sink has failed, and always from then on.
    cDrawnFrame *Claim();
    /// Gives the claimed frame to the sinks.
    void Submit();
    /// Waits until the sinks have taken every frame. Throws what a sink threw.
    void Finish();

private:
    static constexpr size_t kSlots = 4;

    void Run();
    bool WaitForFrame();
    void Deliver(const cDrawnFrame &frame);

    std::vector<cFrameSink *> mSinks;
    std::array<cDrawnFrame, kSlots> mSlots;
    std::mutex mMutex;
    std::condition_variable mChanged;
    size_t mSubmitted = 0, mTaken = 0; // frames, since the start
    bool mIsEnding = false;            // no more frames will come
    bool mHasFailed = false;
    std::exception_ptr mFailure;
    std::thread mThread; // last: it uses all of the above
};
} // namespace record
