#include "tests/sound/SoundTestDevice.h"

#include "sound/SoundTime.h"

#include <cmath>

using vyr::SoundProgress;
using vyr::SoundVoice;

namespace test
{
namespace
{
cSpeaker *plugged = nullptr;

class cVoice : public SoundVoice
{
public:
    cVoice(cSpeaker &speaker, int rate) : mSpeaker(speaker), mRate(rate) {}

    bool HasRoom() override
    {
        const double ahead = double((blockCount - 1) * blockFrames);
        return !mSpeaker.IsConnected() || mFrames - CountHeardFrames() < ahead;
    }

    bool Queue(std::span<const int16_t> samples) override
    {
        if (mFrames == 0)
            mStartSeconds = mSpeaker.ReadHeardSeconds();
        if (!mSpeaker.IsConnected()) // all of the queue counts as heard
            mStartSeconds = mSpeaker.ReadHeardSeconds() - mFrames / mRate;
        mFrames += double(samples.size() / 2);
        mSpeaker.GetQueued().insert(mSpeaker.GetQueued().end(), samples.begin(), samples.end());
        return mSpeaker.IsConnected();
    }

    SoundProgress GetProgress() override
    {
        return {mStartSeconds + mSpeaker.GetLostSeconds(), mFrames};
    }

private:
    double CountHeardFrames()
    {
        return mFrames == 0 ? 0 : (mSpeaker.ReadHeardSeconds() - mStartSeconds) * mRate;
    }

    cSpeaker &mSpeaker;
    double mRate;
    double mStartSeconds = 0, mFrames = 0;
};

class cDevice : public vyr::SoundDevice
{
public:
    explicit cDevice(cSpeaker &speaker) : mSpeaker(speaker) {}

    double GetBlockSeconds() const override { return mSpeaker.mBlockSeconds; }
    double ReadHeardSeconds() override { return mSpeaker.ReadHeardSeconds(); }
    bool IsConnected() override { return mSpeaker.IsConnected(); }
    std::unique_ptr<SoundVoice> CreateVoice(int rate) override
    {
        return mSpeaker.mHasVoice ? std::make_unique<cVoice>(mSpeaker, rate) : nullptr;
    }

private:
    cSpeaker &mSpeaker;
};
} // namespace

// With the lock held, before anything changes.
void cSpeaker::Run()
{
    const double now = vyr::SteadySeconds();
    if (mLast >= 0 && !mIsStalled && mIsConnected)
        mPlayed += (now - mLast) * mRate;
    mLast = now;
}

void cSpeaker::SetStalled(bool isStalled)
{
    const std::lock_guard lock(mMutex);
    Run();
    mIsStalled = isStalled;
}

void cSpeaker::Unplug()
{
    const std::lock_guard lock(mMutex);
    Run();
    mIsConnected = false;
}

void cSpeaker::LoseTime(double seconds)
{
    const std::lock_guard lock(mMutex);
    mLostSeconds += seconds;
}

bool cSpeaker::IsConnected()
{
    const std::lock_guard lock(mMutex);
    return mIsConnected;
}

double cSpeaker::GetLostSeconds()
{
    const std::lock_guard lock(mMutex);
    return mLostSeconds;
}

// A billionth for the rounding of sums: a block is over when it is.
double cSpeaker::ReadHeardSeconds()
{
    const std::lock_guard lock(mMutex);
    Run();
    return std::floor(mPlayed / mBlockSeconds + 1e-9) * mBlockSeconds - mLatencySeconds;
}

std::unique_ptr<vyr::SoundDevice> MakeDevice(cSpeaker &speaker)
{
    return std::make_unique<cDevice>(speaker);
}

void PlugIn(cSpeaker *speaker) { plugged = speaker; }
} // namespace test

std::unique_ptr<vyr::SoundDevice> vyr::OpenSoundDevice()
{
    return test::plugged ? test::MakeDevice(*test::plugged) : nullptr;
}
