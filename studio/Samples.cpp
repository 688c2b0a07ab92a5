#include "studio/Samples.h"

#include "sound/SoundDecoder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace studio
{
tSamples ReadSamples(const std::string &path, std::string &error)
{
    std::unique_ptr<vyr::SoundDecoder> decoder;
    const FMOD_RESULT result = vyr::SoundDecoder::Open(path.c_str(), decoder);
    if (result != FMOD_OK) {
        error = FMOD_ErrorString(result);
        return nullptr;
    }
    auto samples = std::make_shared<cSamples>();
    samples->mRate = decoder->GetRate();
    const size_t block = 65536; // frames
    std::vector<int16_t> &frames = samples->mFrames;
    for (size_t read = block; read == block;) {
        const size_t end = frames.size();
        frames.resize(end + 2 * block);
        read = decoder->Read(frames.data() + end, block);
        frames.resize(end + 2 * read);
    }
    return samples;
}

cMusicStream::cMusicStream(tSamples samples, int64_t frame, std::optional<cLoop> loop)
    : mSamples(std::move(samples)), mLoop(loop), mRuns{{0, frame}}, mNext(frame)
{}

// How many of `count` frames come in one piece, after a jump where the loop asks for one.
size_t cMusicStream::Step(size_t count)
{
    const std::lock_guard lock(mMutex);
    if (mLoop && mNext == mLoop->mEnd && mLoop->mBegin < mLoop->mEnd) {
        mNext = mLoop->mBegin;
        mRuns.push_back({mRead, mNext});
    }
    const bool isBefore = mLoop && mNext < mLoop->mEnd;
    const int64_t end = isBefore ? std::min(mLoop->mEnd, mSamples->Count()) : mSamples->Count();
    const size_t step = size_t(std::clamp<int64_t>(end - mNext, 0, int64_t(count)));
    mRead += int64_t(step);
    mNext += int64_t(step);
    return step;
}

size_t cMusicStream::Read(int16_t *frames, size_t count)
{
    size_t done = 0;
    while (done < count) {
        const size_t step = Step(count - done);
        if (step == 0)
            break;
        const int16_t *from = mSamples->mFrames.data() + 2 * (size_t(mNext) - step);
        std::copy(from, from + 2 * step, frames + 2 * done);
        done += step;
    }
    return done;
}

void cMusicStream::SetLoop(std::optional<cLoop> loop)
{
    const std::lock_guard lock(mMutex);
    mLoop = loop;
}

double cMusicStream::FrameAt(double played) const
{
    const std::lock_guard lock(mMutex);
    const auto after =
        std::upper_bound(mRuns.begin(), mRuns.end(), played,
                         [](double frame, const cRun &run) { return frame < double(run.mStream); });
    const cRun &run = after == mRuns.begin() ? mRuns.front() : *(after - 1);
    return double(run.mMusic) + played - double(run.mStream);
}

cGrainStream::cGrainStream(tSamples samples, int64_t middle)
    : mSamples(std::move(samples)), mCount(int64_t(kSeconds * mSamples->mRate))
{
    mBegin = middle - mCount / 2;
}

size_t cGrainStream::Read(int16_t *frames, size_t count)
{
    const size_t step = size_t(std::min<int64_t>(int64_t(count), mCount - mNext));
    for (size_t i = 0; i < step; i++, mNext++) {
        // Hann's window
        const double turn = 2.0 * std::numbers::pi * double(mNext) / double(mCount);
        const double gain = 0.5 - 0.5 * std::cos(turn);
        const int64_t frame = mBegin + mNext;
        const bool isThere = frame >= 0 && frame < mSamples->Count();
        for (size_t side = 0; side < 2; side++)
            frames[2 * i + side] =
                isThere ? int16_t(std::lround(gain * mSamples->mFrames[2 * size_t(frame) + side]))
                        : int16_t(0);
    }
    return step;
}
} // namespace studio
