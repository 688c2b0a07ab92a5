#include "platform/SoundPlayer.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform
{
namespace
{
// Often beside the third of a second that is queued ahead: a pass that comes late does no harm.
const auto fillPause = std::chrono::milliseconds(10);
} // namespace

SoundPlayer::SoundPlayer(SoundOutput &output, SoundDecoder &decoder)
    : mOutput(output), mDecoder(decoder), mRate(decoder.GetRate()),
      mBlock(2 * SoundVoice::blockFrames)
{
    mThread = std::jthread([this](std::stop_token stop) { Run(std::move(stop)); });
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

void SoundPlayer::Run(std::stop_token stop)
{
    bool isSilent = mOutput.IsSilent();
    auto voice = mOutput.CreateVoice(mRate, GetStart(0));
    while (!stop.stop_requested()) {
        if (!isSilent && mOutput.IsSilent()) {
            isSilent = true;
            voice = mOutput.CreateVoice(mRate, GetStart(mQueuedFrames));
        }
        Fill(*voice, stop);
        Publish(voice->GetProgress());
        std::this_thread::sleep_for(fillPause);
    }
}

// The progress of a stream that has been heard as far as it has now, for a voice that takes over.
SoundProgress SoundPlayer::GetStart(double queuedFrames)
{
    return {mOutput.GetHeardSeconds() - GetHeardFrames() / mRate, queuedFrames};
}

void SoundPlayer::Fill(SoundVoice &voice, const std::stop_token &stop)
{
    while (!mHasEnded && !stop.stop_requested() && voice.HasRoom())
        mHasEnded = !QueueBlock(voice);
}

bool SoundPlayer::QueueBlock(SoundVoice &voice)
{
    const size_t frames = mDecoder.Read(mBlock.data(), SoundVoice::blockFrames);
    if (frames > 0)
        voice.Queue(std::span(mBlock).first(2 * frames));
    mQueuedFrames += double(frames);
    return frames == SoundVoice::blockFrames;
}

void SoundPlayer::Publish(const SoundProgress &progress)
{
    const std::lock_guard lock(mMutex);
    mProgress = progress;
}
} // namespace platform
