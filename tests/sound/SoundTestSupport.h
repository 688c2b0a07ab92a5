#pragma once

#include "sound/Sound.h"

#include <cstdint>
#include <string>
#include <vector>

namespace test
{
/// The committed MP3 files (see SoundFixtures.sh): a rising and a falling sweep, 44100 Hz, 50000
/// frames; and the rising one alone, mono, 22050 Hz, 30001 frames.
std::string SweepPath();
std::string MonoSweepPath();
constexpr size_t sweepFrames = 50000, monoSweepFrames = 30001;

/// What was encoded: sample `frame` of the rising (`channel` 0) or falling sweep, -1 to 1.
double Sweep(int channel, size_t frame, int rate);

/// How loud the difference is between `samples` (stereo frames) and the sweep that begins `shift`
/// frames later; 1 is a full square wave.
double DifferenceFromSweep(const std::vector<int16_t> &samples, int channel, int rate, int shift);

/// The sweep's file, `count` times in one: a second and more each.
std::string LongSweep(int count);

/// How far a position has been from a straight line through all of its readings.
class cStraightness
{
public:
    void Add(double time, double position);

    double GetSlope() const { return mSlope; }
    double GetRms() const { return mRms; }
    double GetWorst() const { return mWorst; }
    double GetDrift() const; ///< last less first, of position less time
    int CountStepsBack() const;
    void Fit(); ///< call it before the getters

private:
    std::vector<double> mTimes, mPositions;
    double mSlope = 0, mRms = 0, mWorst = 0;
};

const FMOD_MODE showMode = 0x40C8;

/// The calls of the show, in its order, each expected to succeed.
struct cShow
{
    FMOD::System *system = nullptr;
    FMOD::Sound *sound = nullptr;
    FMOD::Channel *channel = nullptr;

    /// From the start to `playSound`.
    explicit cShow(const std::string &path);

    void Stop();

    /// One pass of the loop.
    unsigned int GetPosition(FMOD_TIMEUNIT unit = FMOD_TIMEUNIT_PCMBYTES);
    double GetSeconds() { return GetPosition() / 176400.0; }
};
} // namespace test
