#pragma once

#include "sound/SoundOutput.h"
#include "sound/SoundPlayer.h"
#include "studio/Samples.h"

#include <deque>
#include <memory>
#include <optional>

namespace studio
{
/// The music as it is heard, and the clock that it is. By one thread.
class cPlayback
{
public:
    virtual ~cPlayback() = default;

    /// The music to play from now on; what plays goes on at the same place of it.
    virtual void SetMusic(tSamples samples) = 0;
    /// Plays from `seconds` on, 0 or more. The music's end is silence, and the time stands still.
    virtual void Play(double seconds, std::optional<cLoop> loop) = 0;
    virtual void SetLoop(std::optional<cLoop> loop) = 0; ///< of what plays
    virtual void Stop() = 0;                             ///< silent at once
    /// The position that is heard now; where nothing plays, 0.
    virtual double Seconds() = 0;
    /// Lets the music around `seconds` be heard for a moment. Asked for more often than grains may
    /// begin, only the newest is heard.
    virtual void Grain(double seconds) = 0;
    /// To be called once a frame: begins a grain that waits, ends those that have been heard.
    virtual void Update() = 0;
    /// Whether a grain is heard, or waits.
    virtual bool IsGrainHeard() = 0;
};

/// On a sound device, or on silence.
class cSoundPlayback : public cPlayback
{
public:
    explicit cSoundPlayback(std::unique_ptr<vyr::SoundOutput> output);

    void SetMusic(tSamples samples) override;
    void Play(double seconds, std::optional<cLoop> loop) override;
    void SetLoop(std::optional<cLoop> loop) override;
    void Stop() override;
    double Seconds() override;
    void Grain(double seconds) override;
    void Update() override;
    bool IsGrainHeard() override { return mWaiting || !mGrains.empty(); }

private:
    /// A stream that plays. The player goes before what it reads.
    template <typename T>
    struct cPlaying
    {
        std::unique_ptr<T> mStream;
        std::unique_ptr<vyr::SoundPlayer> mPlayer;
    };

    void DropHeardGrains();

    std::unique_ptr<vyr::SoundOutput> mOutput;
    tSamples mSamples;
    std::optional<cLoop> mLoop;
    std::optional<cPlaying<cMusicStream>> mMusic;
    std::deque<cPlaying<cGrainStream>> mGrains;
    std::optional<double> mWaiting; ///< seconds of the music
    double mLastGrain = -1.0;       ///< when it began, in the output's time
};

/// Without sound, on a clock that only Step moves: for scripts, which have to give the
/// same pictures in every run.
class cSteppedPlayback : public cPlayback
{
public:
    /// The time goes on by `seconds`.
    void Step(double seconds);

    void SetMusic(tSamples samples) override { mSamples = std::move(samples); }
    void Play(double seconds, std::optional<cLoop> loop) override;
    void SetLoop(std::optional<cLoop> loop) override { mLoop = loop; }
    void Stop() override { mIsPlaying = false; }
    double Seconds() override { return mSeconds; }
    void Grain(double) override {}
    void Update() override {}
    bool IsGrainHeard() override { return false; }

private:
    tSamples mSamples;
    std::optional<cLoop> mLoop;
    bool mIsPlaying = false;
    double mSeconds = 0.0;
};
} // namespace studio
