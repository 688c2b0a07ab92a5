#pragma once

#include "sound/SoundStream.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace studio
{
/// A piece of music in memory, so that it can be played from anywhere, in loops and in grains.
struct cSamples
{
    int mRate = 44100;            ///< frames a second
    std::vector<int16_t> mFrames; ///< two values each, left first

    int64_t Count() const { return int64_t(mFrames.size() / 2); }
    double Seconds() const { return double(Count()) / mRate; }
};
using tSamples = std::shared_ptr<const cSamples>;

/// Decodes the MP3 file `path`; null, with a reason in `error`, when it is no music.
tSamples ReadSamples(const std::string &path, std::string &error);

/// A stretch of the music that repeats: frames from `mBegin` to before `mEnd`.
struct cLoop
{
    int64_t mBegin = 0, mEnd = 0;

    bool operator==(const cLoop &) const = default;
};

/// Music from a frame on, with or without a loop. What reaches the loop's end goes on at its
/// beginning, without a gap, frame by frame; what begins behind the loop never enters it. One
/// thread reads; any thread asks for places and changes the loop.
class cMusicStream : public vyr::SoundStream
{
public:
    cMusicStream(tSamples samples, int64_t frame, std::optional<cLoop> loop);

    int GetRate() const override { return mSamples->mRate; }
    size_t Read(int16_t *frames, size_t count) override;

    /// From what has not been read yet on.
    void SetLoop(std::optional<cLoop> loop);

    /// The frame of the music that is heard when `played` frames of the stream have been.
    double FrameAt(double played) const;

private:
    /// From frame `mStream` of the stream on, the music runs from `mMusic` on.
    struct cRun
    {
        int64_t mStream = 0, mMusic = 0;
    };
    size_t Step(size_t count);

    const tSamples mSamples;
    mutable std::mutex mMutex; ///< over what follows
    std::optional<cLoop> mLoop;
    std::vector<cRun> mRuns;
    int64_t mRead = 0, mNext = 0; ///< frames given so far; the music's next one
};

/// A short piece of music around a place, faded in and out: what is heard of it while a hand drags
/// the playhead.
class cGrainStream : public vyr::SoundStream
{
public:
    static constexpr double kSeconds = 0.08;
    /// Grains that begin this far apart overlap by half: their fades add up to a steady level that
    /// is never above the music's own.
    static constexpr double kStepSeconds = kSeconds / 2;

    cGrainStream(tSamples samples, int64_t middle);

    int GetRate() const override { return mSamples->mRate; }
    size_t Read(int16_t *frames, size_t count) override;

private:
    const tSamples mSamples;
    int64_t mBegin, mCount, mNext = 0;
};
} // namespace studio
