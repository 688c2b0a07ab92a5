#pragma once

#include <cstddef>
#include <cstdint>

namespace vyr
{
/// Where a SoundPlayer gets its sound from: stereo frames (two 16-bit samples, left first), one
/// after the other. Read by one thread at a time.
class SoundStream
{
public:
    virtual ~SoundStream() = default;

    virtual int GetRate() const = 0; ///< frames per second

    /// Writes up to `count` frames into `frames` (two values each) and says how many there were.
    /// Fewer than `count`: the end.
    virtual size_t Read(int16_t *frames, size_t count) = 0;
};
} // namespace vyr
