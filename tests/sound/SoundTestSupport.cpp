#include "tests/sound/SoundTestSupport.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace test
{
namespace
{
const std::string folder = VYR_SOURCE_DIR "/tests/sound/";
} // namespace

std::string SweepPath() { return folder + "SoundSweep.mp3"; }

std::string MonoSweepPath() { return folder + "SoundSweepMono.mp3"; }

// The encoder takes a twentieth off the loudness at these bit rates.
double Sweep(int channel, size_t frame, int rate)
{
    const double t = double(frame) / rate;
    const double turns = channel == 0 ? 300 * t + 2000 * t * t : 5000 * t - 1500 * t * t;
    return 0.57 * std::sin(2 * std::numbers::pi * turns);
}

double DifferenceFromSweep(const std::vector<int16_t> &samples, int channel, int rate, int shift)
{
    const size_t margin = 100; // both ends have room for the shift
    const size_t frames = samples.size() / 2;
    double sum = 0;
    for (size_t i = margin; i + margin < frames; i++) {
        const double heard = samples[2 * i + size_t(channel)] / 32768.0;
        sum += std::pow(heard - Sweep(channel, size_t(ptrdiff_t(i) + shift), rate), 2);
    }
    return std::sqrt(sum / double(frames - 2 * margin));
}

std::string LongSweep(int count)
{
    const std::string once = ReadFile(SweepPath());
    std::string bytes;
    for (int i = 0; i < count; i++)
        bytes += once;
    return bytes;
}

void cStraightness::Add(double time, double position)
{
    mTimes.push_back(time);
    mPositions.push_back(position);
}

double cStraightness::GetDrift() const
{
    return (mPositions.back() - mTimes.back()) - (mPositions.front() - mTimes.front());
}

int cStraightness::CountStepsBack() const
{
    int count = 0;
    for (size_t i = 1; i < mPositions.size(); i++)
        count += mPositions[i] < mPositions[i - 1] ? 1 : 0;
    return count;
}

void cStraightness::Fit()
{
    const double count = double(mTimes.size());
    double time = 0, position = 0, timeSquare = 0, product = 0;
    for (size_t i = 0; i < mTimes.size(); i++) {
        time += mTimes[i] / count;
        position += mPositions[i] / count;
    }
    for (size_t i = 0; i < mTimes.size(); i++) {
        timeSquare += std::pow(mTimes[i] - time, 2);
        product += (mTimes[i] - time) * (mPositions[i] - position);
    }
    mSlope = product / timeSquare;
    double squares = 0;
    mWorst = 0;
    for (size_t i = 0; i < mTimes.size(); i++) {
        const double error = mPositions[i] - position - mSlope * (mTimes[i] - time);
        squares += error * error;
        mWorst = std::max(mWorst, std::abs(error));
    }
    mRms = std::sqrt(squares / count);
}

cShow::cShow(const std::string &path)
{
    unsigned int version = 0;
    EXPECT_EQ(FMOD_System_Create(&system), FMOD_OK);
    EXPECT_EQ(system->getVersion(&version), FMOD_OK);
    EXPECT_GE(version, 0x44206u);
    EXPECT_EQ(system->init(1, 0, nullptr), FMOD_OK);
    EXPECT_EQ(system->createStream(path.c_str(), showMode, nullptr, &sound), FMOD_OK);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel), FMOD_OK);
}

void cShow::Stop()
{
    EXPECT_EQ(sound->release(), FMOD_OK);
    EXPECT_EQ(system->close(), FMOD_OK);
    EXPECT_EQ(system->release(), FMOD_OK);
}

unsigned int cShow::GetPosition(FMOD_TIMEUNIT unit)
{
    unsigned int position = 0;
    EXPECT_EQ(system->update(), FMOD_OK);
    EXPECT_EQ(channel->getPosition(&position, unit), FMOD_OK);
    return position;
}
} // namespace test
