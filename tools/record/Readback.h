#pragma once

#include "tools/record/Picture.h"

#include <array>
#include <cstddef>

namespace record
{
/// Brings drawn frames from the framebuffer bound for reading into memory. Several copies are under
/// way at a time, so that a graphics card goes on drawing while the frames before are fetched. All
/// calls belong to the thread with the OpenGL context.
class cReadback
{
public:
    cReadback(int width, int height); ///< pixels
    ~cReadback();
    cReadback(const cReadback &) = delete;
    cReadback &operator=(const cReadback &) = delete;

    bool IsFull() const { return mCount == mBuffers.size(); }
    bool IsEmpty() const { return mCount == 0; }
    /// Starts to copy the framebuffer; not when full.
    void Begin();
    /// Waits for the copy begun first and gives it, opaque and with the top row first, in `picture`
    /// of the same size; not when empty. False when the driver lost it.
    bool Finish(cPicture &picture);

private:
    static constexpr size_t kDepth = 3; // copies under way; more only adds memory

    int mWidth, mHeight;
    std::array<unsigned int, kDepth> mBuffers{};
    size_t mFirst = 0, mCount = 0;
};
} // namespace record
