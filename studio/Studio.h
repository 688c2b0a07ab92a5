#pragma once

#include "studio/Command.h"
#include "studio/Lanes.h"
#include "studio/Preview.h"
#include "studio/Problem.h"
#include "studio/TimelineFile.h"
#include "studio/Transport.h"
#include "studio/Watcher.h"
#include "tools/record/FlashMeter.h"
#include "tools/support/Lyrics.h"
#include "tools/support/Music.h"
#include "tools/support/Sources.h"
#include "tools/timeline/Operations.h"

#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace studio
{
/// What is to be opened. Paths are absolute.
struct cOpen
{
    std::filesystem::path mShow;     ///< the show's folder
    std::filesystem::path mTimeline; ///< empty: the one that the folder's build has noted
    record::cSize mSize;             ///< of the preview
};

/// Everything about an open show but its page: its picture and its sound, its text and who has
/// changed it, what is selected, what is wrong. What a hand asks for is a call here; what is
/// refused is said in one line, by Message.
class cStudio
{
public:
    /// Opens the show, and then its sound. Throws std::runtime_error with one line where there is
    /// no show.
    using tOpenPlayback = std::function<std::unique_ptr<cPlayback>()>;
    cStudio(cWindow &window, const cOpen &open, const tOpenPlayback &openPlayback);
    ~cStudio();
    cStudio(const cStudio &) = delete;
    cStudio &operator=(const cStudio &) = delete;

    /// Once a frame: takes what has changed on disk, in the background and in the music, and draws
    /// the show's picture. `now` is a steady clock in seconds. Whether there is something new to be
    /// seen.
    bool Update(double now);
    /// Waits for what is done in the background: for scripts and tests.
    void FinishReading();
    /// Whether something goes on in the background, or has changed on disk and is not taken yet.
    bool IsBusy() const
    {
        return mUpdatesToWrite > 0 || mWatcher.IsBusy() || mBuild || mRecorder || mIsBuildAsked ||
               mMusicUnderWay.valid();
    }

    cTransport &Transport() { return mTransport; }
    cPreview &Preview() { return mPreview; }
    cLanes &Lanes() { return mLanes; }
    const timeline::cDocument &Document() const { return mFile.Document(); }
    /// Counts the changes of the document, by whomever.
    int Generation() const { return mFile.Generation(); }
    const std::filesystem::path &TimelinePath() const { return mFile.Path(); }
    const vyr::cShowDescription &Show() const { return mPreview.Description(); }
    const tools::cMusicMeasure *Music() const { return mMusic ? &*mMusic : nullptr; }
    const tSamples &Samples() const { return mSamples; } ///< null until it has been decoded
    /// The words on the screen, with their text where the show has one.
    const std::vector<tools::cLyricSpan> &WordSpans() const { return mWordSpans; }
    std::string WordsOf(int lyric) const;

    /// What is wrong, the timeline's first.
    tProblems Problems() const;
    const std::string &Message() const { return mMessage; }
    void Say(const std::string &message) { mMessage = message; }
    /// What goes on in the background, for the page to show; empty: nothing.
    std::string Activity() const;
    /// Flashes in the worst second of what has been played since the last jump; below 0: nothing.
    double Flashes() const;

    // Selection ----------------------------------------------------------------------------------

    using tSelection = std::set<timeline::cKeyId>;
    const tSelection &Selection() const { return mSelection; }
    void Select(tSelection keys) { mSelection = std::move(keys); }
    bool IsSelected(const timeline::cKeyId &key) const { return mSelection.count(key) != 0; }
    timeline::tKeyIds SelectedIds() const { return {mSelection.begin(), mSelection.end()}; }
    /// Rows from the first selected key to the last; false where nothing is selected.
    bool SelectedRows(int &first, int &last) const;

    // Editing: each call is one step of undo and one write of the file. --------------------------

    bool Apply(const timeline::cEdits &edits);
    bool Change(const cTimelineFile::tChange &change);
    void Undo();
    void Redo();
    void AddKey(const std::string &track, int row, float value);
    void DeleteSelected();
    void Copy();
    void Cut();
    void Paste(bool atOriginalTime);
    void Duplicate();
    void Quantise(int grid); ///< rows
    void Nudge(int rows);
    void SetInterpolation(signed char type);
    /// The only selected key, or the one with the first line of several, gets a line of its own.
    void Detach();
    void InsertTime(int rows); ///< at the playhead
    void DeleteTime(int rows);
    /// Time, value and interpolation of a key as words, as they stand in a timeline; an empty one
    /// stays as it is.
    bool Retype(const timeline::cKeyId &key, const std::string &time, const std::string &value,
                const std::string &interpolation);

    // While a hand drags, nothing is written. ----------------------------------------------------

    void BeginDrag();
    /// Shows what `edits` would make. False, and the picture before stays, where it can't be.
    bool Drag(const timeline::cEdits &edits);
    bool EndDrag(const timeline::cEdits &edits); ///< does them
    void CancelDrag();
    bool IsDragging() const { return mIsDragging; }

    // The recorder -------------------------------------------------------------------------------

    void SaveStill(const std::filesystem::path &file);
    void Record(const std::filesystem::path &file, double fromRow, double toRow);
    bool IsRecording() const { return mRecorder != nullptr; }
    void StopRecording() { mRecorder.reset(); }

    void OpenEditor(const cProblem &place);

private:
    struct cMusicResult
    {
        tSamples mSamples;
        tools::cMusicMeasure mMeasure;
        std::string mError;
    };

    std::filesystem::path SourceOf(const std::string &file) const;
    std::vector<std::string> ShowFiles() const;
    void WatchFiles();
    void ReadMusic();
    bool TakeMusic();
    void ReadWords();
    bool TakeChanges(double now);
    void TakeChange(const std::filesystem::path &file);
    void TakeFile(const std::string &name);
    void TakeShow();
    std::string TrackThatPicks(const std::string &file) const;
    std::string TrackAbove(int line) const;
    void TakeTimeline();
    void ShowDocument();
    void WriteTracks();
    bool UpdateBuild();
    bool UpdateRecorder();
    bool UpdatePicture();
    void MeasureFlashes();
    void SetProblems(const std::string &origin, tProblems problems);
    bool AreKeysThere(const timeline::cEdits &edits) const;
    std::vector<std::pair<std::string, int>> PlacesAfter(const timeline::cEdits &edits) const;
    void SelectAt(const std::vector<std::pair<std::string, int>> &places);
    timeline::cEdits WithPatterns(timeline::cEdits edits) const;

    const cOpen mOpen;
    tools::cSources mSources;
    cPreview mPreview;
    cTimelineFile mFile;
    cTransport mTransport;
    cWatcher mWatcher;
    cLanes mLanes;
    tSelection mSelection;
    timeline::cClip mClip;
    std::string mMessage;
    std::map<std::string, tProblems> mProblems;     ///< by what they come from
    std::map<std::string, std::string> mTrackBytes; ///< as they stand in the folder

    std::future<cMusicResult> mMusicUnderWay;
    tSamples mSamples;
    std::optional<tools::cMusicMeasure> mMusic;
    std::vector<tools::cLyricSpan> mWordSpans;
    std::map<int, std::string> mWords;
    std::unique_ptr<cCommand> mBuild, mRecorder;
    std::filesystem::path mRecorded;
    bool mIsBuildAsked = false;
    bool mIsDragging = false;
    int mUpdatesToWrite = 0;           ///< until the tracks are written; 0: they are
    std::vector<std::string> mDragged; ///< tracks that are shown otherwise than they are
    std::optional<record::cFlashMeter> mFlashMeter;
    int64_t mMeasuredFrame = -1;
    double mDrawnRow = -1.0;
};
} // namespace studio
