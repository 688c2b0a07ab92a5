#include "sound/SoundPlayer.h"

#include "sound/SoundSilence.h"
#include "sound/SoundTime.h"

#include <algorithm>
#include <chrono>

namespace vyr
{
namespace
{
// Often beside the third of a second that is queued ahead: a pass that comes late does no harm.
const auto fillPause = std::chrono::milliseconds(10);
} // namespace

SoundPlayer::SoundPlayer(SoundOutput &output, SoundStream &stream)
    : mOutput(output), mStream(stream), mRate(stream.GetRate()), mBlock(2 * SoundVoice::blockFrames)
{
    mThread = std::jthread([this](const std::stop_token &stop) { Run(stop); });
}

SoundPlayer::~SoundPlayer() = default; // the thread is stopped and joined

double SoundPlayer::GetFrames()
{
    mReachedFrames = std::max(mReachedFrames, GetHeardFrames());
    return mReachedFrames;
}

double SoundPlayer::GetHeardFrames()
{
    const double heard = mOutput.GetHeardSeconds();
    const std::lock_guard lock(mMutex);
    return std::clamp((heard - mProgress.startSeconds) * mRate, 0.0, mProgress.limitFrames);
}

// The voice lives and dies in its own thread.
void SoundPlayer::Run(const std::stop_token &stop)
{
    mVoice = mOutput.CreateVoice(mRate);
    if (!mVoice)
        mVoice = CreateSilence();
    while (!stop.stop_requested()) {
        Fill(stop);
        Publish();
        mOutput.GetHeardSeconds(); // a silent output wants to be asked, however slow the show is
        PauseUnlessStopped(stop, fillPause);
    }
    mVoice.reset();
}

void SoundPlayer::Fill(const std::stop_token &stop)
{
    while (!mHasEnded && !stop.stop_requested() && mVoice->HasRoom())
        QueueBlock();
}

void SoundPlayer::QueueBlock()
{
    const size_t frames = mStream.Read(mBlock.data(), SoundVoice::blockFrames);
    mQueuedFrames += double(frames);
    mHasEnded = frames < SoundVoice::blockFrames;
    if (frames > 0 && !mVoice->Queue(std::span(mBlock).first(2 * frames)))
        mVoice = CreateSilence();
}

// Takes over from what has been heard by now, with all that was queued already.
std::unique_ptr<SoundVoice> SoundPlayer::CreateSilence()
{
    const double start = mOutput.GetHeardSeconds() - GetHeardFrames() / mRate;
    return std::make_unique<SoundSilence>(mOutput, mRate, SoundProgress{start, mQueuedFrames});
}

void SoundPlayer::Publish()
{
    const SoundProgress progress = mVoice->GetProgress();
    const std::lock_guard lock(mMutex);
    mProgress = progress;
    mIsComplete = mHasEnded && progress.limitFrames >= mQueuedFrames;
}

bool SoundPlayer::HasPlayedOut()
{
    const double frames = GetFrames();
    const std::lock_guard lock(mMutex);
    return mIsComplete && frames >= mProgress.limitFrames;
}
} // namespace vyr
