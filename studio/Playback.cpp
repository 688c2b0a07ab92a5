#include "studio/Playback.h"

#include <algorithm>
#include <cmath>

namespace studio
{
cSoundPlayback::cSoundPlayback(std::unique_ptr<vyr::SoundOutput> output)
    : mOutput(std::move(output))
{}

void cSoundPlayback::SetMusic(tSamples samples)
{
    const bool isPlaying = mMusic.has_value();
    const double seconds = Seconds();
    Stop();
    mGrains.clear();
    mSamples = std::move(samples);
    if (isPlaying)
        Play(seconds, mLoop);
}

void cSoundPlayback::Play(double seconds, std::optional<cLoop> loop)
{
    Stop();
    mLoop = loop;
    if (!mSamples)
        return;
    const int64_t frame = std::llround(std::max(seconds, 0.0) * mSamples->mRate);
    mMusic.emplace();
    mMusic->mStream = std::make_unique<cMusicStream>(mSamples, frame, loop);
    mMusic->mPlayer = std::make_unique<vyr::SoundPlayer>(*mOutput, *mMusic->mStream);
}

void cSoundPlayback::SetLoop(std::optional<cLoop> loop)
{
    mLoop = loop;
    if (mMusic)
        mMusic->mStream->SetLoop(loop);
}

void cSoundPlayback::Stop()
{
    mMusic.reset();
    mWaiting.reset();
}

double cSoundPlayback::Seconds()
{
    if (!mMusic)
        return 0.0;
    return mMusic->mStream->FrameAt(mMusic->mPlayer->GetFrames()) / mSamples->mRate;
}

void cSoundPlayback::Grain(double seconds)
{
    mWaiting = seconds;
    Update();
}

void cSoundPlayback::DropHeardGrains()
{
    while (!mGrains.empty() && mGrains.front().mPlayer->HasPlayedOut())
        mGrains.pop_front();
}

void cSoundPlayback::Update()
{
    DropHeardGrains();
    if (!mWaiting || !mSamples)
        return;
    const double now = mOutput->GetHeardSeconds();
    if (!mGrains.empty() && now < mLastGrain + cGrainStream::kStepSeconds)
        return;
    cPlaying<cGrainStream> grain;
    const int64_t middle = std::llround(*mWaiting * mSamples->mRate);
    grain.mStream = std::make_unique<cGrainStream>(mSamples, middle);
    grain.mPlayer = std::make_unique<vyr::SoundPlayer>(*mOutput, *grain.mStream);
    mGrains.push_back(std::move(grain));
    mLastGrain = now;
    mWaiting.reset();
}

void cSteppedPlayback::Play(double seconds, std::optional<cLoop> loop)
{
    mSeconds = seconds;
    mLoop = loop;
    mIsPlaying = true;
}

void cSteppedPlayback::Step(double seconds)
{
    if (!mIsPlaying)
        return;
    const double before = mSeconds;
    mSeconds += seconds;
    if (mLoop && mSamples) {
        const double begin = double(mLoop->mBegin) / mSamples->mRate,
                     end = double(mLoop->mEnd) / mSamples->mRate;
        if (before < end && mSeconds >= end && begin < end)
            mSeconds = begin + std::fmod(mSeconds - end, end - begin);
    }
    if (mSamples)
        mSeconds = std::min(mSeconds, mSamples->Seconds());
}
} // namespace studio
