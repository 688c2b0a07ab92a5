#pragma once

#include "show/Tempo.h"
#include "studio/Playback.h"

#include <memory>
#include <optional>
#include <string>

namespace studio
{
/// A stretch of the show, in rows.
struct cRegion
{
    int mFrom = 0, mTo = 0; ///< mFrom < mTo
};

/// Where the show is: plays, stands, is dragged along. Rows and seconds are of one tempo.
class cTransport
{
public:
    /// `playback` is the clock while it plays. The show ends at `lastRow`.
    cTransport(std::unique_ptr<cPlayback> playback, const vyr::cTempo &tempo, double lastRow);

    /// Once a frame: takes the playback's time. At the show's end it pauses.
    void Update();

    double Row() const { return mRow; } ///< 0 to the show's last
    double LastRow() const { return mLastRow; }
    const vyr::cTempo &Tempo() const { return mTempo; }
    bool IsPlaying() const { return mIsPlaying; }
    /// From the beginning where it stands at the end. Without music it begins when there is some.
    void Play();
    void Pause();
    void Toggle() { mIsPlaying || mIsPlayAsked ? Pause() : Play(); }
    /// Goes there; what plays, plays on from there.
    void Seek(double row);

    // While a hand drags the playhead the music is silent but for grains.
    void BeginScrub();
    void ScrubTo(double row);
    void EndScrub(); ///< plays on, where it played before
    bool IsScrubbing() const { return mIsScrubbing; }
    void SetGrains(bool areOn) { mAreGrainsOn = areOn; }
    bool AreGrainsOn() const { return mAreGrainsOn; }
    /// Whether sound is still to come though it does not play.
    bool IsGrainHeard() { return mPlayback->IsGrainHeard(); }

    /// The region stays while the loop is off. Changes take effect when the loop turns next.
    void SetRegion(const cRegion &region);
    const std::optional<cRegion> &Region() const { return mRegion; }
    void SetLooping(bool isLooping); ///< needs a region
    bool IsLooping() const { return mIsLooping; }

    /// Other music; null: none, and time stands still.
    void SetMusic(tSamples samples);
    bool HasMusic() const { return mRate > 0; }

private:
    std::optional<cLoop> Loop() const;

    std::unique_ptr<cPlayback> mPlayback;
    vyr::cTempo mTempo;
    double mLastRow, mRow = 0.0;
    bool mIsPlaying = false, mIsPlayAsked = false, mIsScrubbing = false, mWasPlaying = false,
         mAreGrainsOn = true;
    std::optional<cRegion> mRegion;
    bool mIsLooping = false;
    int mRate = 0;          ///< of the music, frames a second; 0: there is none
    double mMusicEnd = 0.0; ///< rows
};

/// "TITLE BAR:BEAT:ROW - vyr-studio", with " (paused)" before the dash.
std::string WindowTitle(const std::string &title, const cTransport &transport);
} // namespace studio
