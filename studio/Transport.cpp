#include "studio/Transport.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>

namespace studio
{
cTransport::cTransport(std::unique_ptr<cPlayback> playback, const vyr::cTempo &tempo,
                       double lastRow)
    : mPlayback(std::move(playback)), mTempo(tempo), mLastRow(lastRow)
{}

void cTransport::Update()
{
    mPlayback->Update();
    if (!mIsPlaying)
        return;
    mRow = std::clamp(mTempo.Rows(mPlayback->Seconds()), 0.0, mLastRow);
    if (mRow >= std::min(mLastRow, mMusicEnd))
        Pause();
}

void cTransport::Play()
{
    mIsPlayAsked = !HasMusic(); // it begins when the music has been read
    if (mIsPlaying || mIsScrubbing || !HasMusic())
        return;
    if (mRow >= std::min(mLastRow, mMusicEnd))
        mRow = 0.0;
    mIsPlaying = true;
    mPlayback->Play(mTempo.Seconds(mRow), Loop());
}

void cTransport::Pause()
{
    if (mIsPlaying)
        mPlayback->Stop();
    mIsPlaying = mIsPlayAsked = false;
}

void cTransport::Seek(double row)
{
    mRow = std::clamp(row, 0.0, mLastRow);
    if (mIsPlaying)
        mPlayback->Play(mTempo.Seconds(mRow), Loop());
}

void cTransport::BeginScrub()
{
    if (mIsScrubbing)
        return;
    mWasPlaying = mIsPlaying;
    Pause();
    mIsScrubbing = true;
}

void cTransport::ScrubTo(double row)
{
    const double before = mRow;
    Seek(row);
    if (mAreGrainsOn && mRow != before)
        mPlayback->Grain(mTempo.Seconds(mRow));
}

void cTransport::EndScrub()
{
    if (!mIsScrubbing)
        return;
    mIsScrubbing = false;
    if (mWasPlaying)
        Play();
}

std::optional<cLoop> cTransport::Loop() const
{
    if (!mIsLooping || !mRegion || !HasMusic())
        return std::nullopt;
    const auto frame = [this](int row) { return std::llround(mTempo.Seconds(row) * mRate); };
    return cLoop{frame(mRegion->mFrom), frame(mRegion->mTo)};
}

void cTransport::SetRegion(const cRegion &region)
{
    mRegion = region;
    mPlayback->SetLoop(Loop());
}

void cTransport::SetLooping(bool isLooping)
{
    mIsLooping = isLooping && mRegion;
    mPlayback->SetLoop(Loop());
}

void cTransport::SetMusic(tSamples samples)
{
    mRate = samples ? samples->mRate : 0;
    mMusicEnd = samples ? mTempo.Rows(samples->Seconds()) : 0.0;
    if (!samples)
        Pause();
    mPlayback->SetMusic(std::move(samples));
    if (mIsPlayAsked && HasMusic())
        Play();
}

std::string WindowTitle(const std::string &title, const cTransport &transport)
{
    return title + ' ' + vyr::FormatRow(int(transport.Row()), transport.Tempo()) +
           (transport.IsPlaying() ? "" : " (paused)") + " - vyr-studio";
}
} // namespace studio
