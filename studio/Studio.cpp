#include "studio/Studio.h"

#include "show/Time.h"
#include "tools/support/Files.h"
#include "tools/support/TrackFolder.h"
#include "tools/timeline/Compiler.h"
#include "tools/timeline/KeyLine.h"
#include "tools/tracks/Captions.h"
#include "tools/tracks/Dumper.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace fs = std::filesystem;

namespace studio
{
namespace
{
// The show's tracks as they are in its folder, as a timeline: for a show whose text is not at hand,
// or cannot be read.
std::string DumpTracks(const fs::path &folder, const vyr::cShowDescription &show)
{
    tools::cTrackFolder tracks(folder);
    tools::tFaults ignored;
    std::vector<const sync_track *> legal;
    for (const std::string &name : tracks.Names()) {
        const tools::cLoadedTrack track = tracks.Load(name, ignored);
        if (track.mTrack && track.mIsLegal)
            legal.push_back(track.mTrack);
    }
    return tracks::Dump(legal, vyr::TempoOf(show));
}

template <typename T>
bool IsReady(const std::future<T> &future)
{
    return future.valid() && future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

// The words lie beside the timeline, under one of the usual names.
fs::path FindWords(const fs::path &timeline)
{
    for (const char *name : {"words.txt", "lyrics.txt", "lyrics/lyrics.txt"}) {
        const fs::path path = timeline.parent_path() / name;
        std::error_code ignored;
        if (fs::is_regular_file(path, ignored))
            return path;
    }
    return {};
}

std::string BytesOf(const fs::path &path)
{
    std::string bytes, ignored;
    tools::ReadWhole(path, size_t(1) << 30, bytes, ignored);
    return bytes;
}

std::string BesideThisProgram(const char *program)
{
    std::error_code ignored;
    const fs::path own = fs::read_symlink("/proc/self/exe", ignored).parent_path() / program;
    return fs::exists(own, ignored) ? own.string() : program;
}

std::string ToText(double row)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.6f", row);
    return text;
}
} // namespace

cStudio::cStudio(cWindow &window, const cOpen &open, const tOpenPlayback &openPlayback)
    : mOpen(open), mSources(tools::ReadSources(open.mShow)),
      mPreview(window, open.mShow, open.mSize),
      mFile(open.mTimeline.empty() ? mSources.mTimeline : open.mTimeline,
            DumpTracks(open.mShow, mPreview.Description())),
      mTransport(openPlayback(), vyr::TempoOf(mPreview.Description()),
                 mPreview.Description().mLastRow)
{
    for (const std::string &track : Show().mTracks)
        mTrackBytes[track] = BytesOf(mOpen.mShow / vyr::GetTrackFile(track));
    WriteTracks();
    std::string error;
    if (!mPreview.Load(error))
        SetProblems("show", {{"", 0, 0, error, ""}});
    ReadMusic();
    TakeTimeline();
    WatchFiles();
}

cStudio::~cStudio()
{
    if (mUpdatesToWrite > 0)
        WriteTracks();
}

// Files ------------------------------------------------------------------------------------------

// Where the author's own `file` is: what stands in the show's folder may be a copy of it.
fs::path cStudio::SourceOf(const std::string &file) const
{
    const fs::path name(file);
    const bool isCopied =
        !mSources.mData.empty() && name.begin() != name.end() && *name.begin() == "data";
    return isCopied ? mSources.mData / name.lexically_relative("data") : mOpen.mShow / name;
}

std::vector<std::string> cStudio::ShowFiles() const
{
    std::vector<std::string> files = Show().mFiles;
    for (const auto &choice : Show().mChoices)
        files.insert(files.end(), choice.mFiles.begin(), choice.mFiles.end());
    files.push_back(Show().mMusic);
    std::ranges::sort(files);
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
}

void cStudio::WatchFiles()
{
    std::vector<fs::path> files = mSources.mCode;
    for (const std::string &file : ShowFiles())
        files.push_back(SourceOf(file));
    files.push_back(mOpen.mShow / vyr::kShowLibrary);
    if (!mFile.Path().empty())
        files.push_back(mFile.Path());
    mWatcher.Watch(files);
}

bool cStudio::TakeChanges(double now)
{
    const std::vector<fs::path> changes = mWatcher.TakeChanges(now);
    for (const fs::path &file : changes)
        TakeChange(file);
    return !changes.empty();
}

void cStudio::TakeChange(const fs::path &file)
{
    const auto same = [&file](const fs::path &other) {
        return !other.empty() && fs::absolute(other).lexically_normal() == file;
    };
    if (same(mFile.Path()))
        return TakeTimeline();
    if (same(mOpen.mShow / vyr::kShowLibrary))
        return TakeShow();
    if (std::ranges::any_of(mSources.mCode, same)) {
        mIsBuildAsked = true;
        return;
    }
    for (const std::string &name : ShowFiles())
        if (same(SourceOf(name)))
            return TakeFile(name);
}

// Brings the author's file into the show's folder, as the build would, and then into the show.
void cStudio::TakeFile(const std::string &name)
{
    const fs::path source = SourceOf(name), place = mOpen.mShow / name;
    std::string bytes, error;
    bool isGood = tools::ReadWhole(source, size_t(1) << 30, bytes, error);
    if (isGood && source != place && BytesOf(place) != bytes)
        isGood = tools::ReplaceFiles({{place, bytes}}, error);
    const bool isMusic = name == Show().mMusic;
    if (isGood && isMusic)
        ReadMusic();
    if (isGood && !isMusic)
        isGood = mPreview.Refresh(name, error);
    const bool isShader = !isGood && tools::IsShader(name);
    if (isGood && mPreview.IsLoaded())
        SetProblems(name, {});
    else if (isGood) // it may have been what was missing
        TakeShow();
    else
        SetProblems(name, isShader
                              ? FromShaderLog(source.string(), error)
                              : tProblems{{source.string(), 0, 0, error, TrackThatPicks(name)}});
}

std::string cStudio::TrackThatPicks(const std::string &file) const
{
    for (const auto &choice : Show().mChoices)
        if (std::ranges::find(choice.mFiles, file) != choice.mFiles.end())
            return choice.mTrack;
    return "";
}

void cStudio::TakeShow()
{
    std::string error;
    if (!mPreview.Exchange(error)) {
        SetProblems("show", {{"", 0, 0, error, ""}});
        return;
    }
    SetProblems("show", {});
    mLanes.Take(Show(), Document());
    mPreview.SetTracks(Document().Tracks());
    WatchFiles();
    Say("the show has been exchanged");
}

// The track in whose lines line `line` of the timeline's file stands; empty: in none.
std::string cStudio::TrackAbove(int line) const
{
    std::istringstream lines(BytesOf(mFile.Path()));
    std::string track;
    int number = 0;
    for (std::string text; number < line && std::getline(lines, text); number++) {
        const std::string_view word = timeline::WordOf(text, 0);
        if (word == "track")
            track = timeline::WordOf(text, 1);
        else if (word == "section" || word == "repeat")
            track.clear();
    }
    return track;
}

void cStudio::TakeTimeline()
{
    if (!mFile.Path().empty())
        mFile.ReadAgain();
    tProblems problems;
    for (const timeline::cTextFault &fault : mFile.Faults())
        problems.push_back({mFile.Path().string(), fault.mPlace.mLine, fault.mPlace.mColumn,
                            fault.mWhat, TrackAbove(fault.mPlace.mLine)});
    SetProblems("timeline", problems);
    ShowDocument();
}

// What the document says now goes to the page, to the show, and into the show's folder.
void cStudio::ShowDocument()
{
    std::erase_if(mSelection, [this](const timeline::cKeyId &key) {
        return Document().FindKey(key) == nullptr;
    });
    mLanes.Take(Show(), Document());
    mPreview.SetTracks(Document().Tracks());
    mUpdatesToWrite = 2; // first it is seen
    ReadWords();
}

void cStudio::WriteTracks()
{
    if (mFile.Path().empty())
        return;
    std::vector<tools::cOutput> outputs;
    for (const timeline::cShowTrack &track : Document().Tracks()) {
        const auto known = mTrackBytes.find(track.mName);
        if (known == mTrackBytes.end())
            continue; // the show does not have it
        timeline::cTrack keys{track.mName, {}};
        for (const timeline::cShowKey &key : track.mKeys)
            keys.mKeys.push_back(key.mKey);
        std::string bytes = timeline::TrackFileBytes(keys);
        if (known->second == bytes)
            continue;
        known->second = bytes;
        outputs.push_back({mOpen.mShow / vyr::GetTrackFile(track.mName), std::move(bytes)});
    }
    std::string error;
    const bool isWritten = outputs.empty() || tools::ReplaceFiles(outputs, error);
    SetProblems("tracks", isWritten ? tProblems{} : tProblems{{"", 0, 0, error, ""}});
}

void cStudio::ReadWords()
{
    const tools::cWordTracks names = tools::FindWordTracks(Show().mTracks);
    const auto keysOf = [this](const std::string &name) {
        const cLane *lane = mLanes.Find(name);
        return lane ? lane->mCurve.Keys() : std::vector<sync_key>{};
    };
    std::vector<sync_key> numbers = keysOf(names.mNumber), fades = keysOf(names.mFade);
    char none[] = "";
    const sync_track number{none, numbers.data(), int(numbers.size())},
        fade{none, fades.data(), int(fades.size())};
    mWordSpans.clear();
    if (!numbers.empty())
        mWordSpans =
            tools::FindLyricSpans(number, fade, tracks::kCaptionOpacity, mTransport.LastRow());
    tools::tFaults ignored;
    const fs::path file = FindWords(mFile.Path());
    if (mWords.empty() && !file.empty())
        mWords = tools::ReadLyrics(file, ignored);
}

std::string cStudio::WordsOf(int lyric) const
{
    const auto found = mWords.find(lyric);
    return found == mWords.end() ? std::to_string(lyric) : found->second;
}

// Music ------------------------------------------------------------------------------------------

void cStudio::ReadMusic()
{
    const std::string path = (mOpen.mShow / Show().mMusic).string();
    mMusicUnderWay = std::async(std::launch::async, [path] {
        cMusicResult result;
        result.mSamples = ReadSamples(path, result.mError);
        if (result.mSamples)
            tools::MeasureMusic(path, true, false, result.mMeasure, result.mError);
        return result;
    });
}

bool cStudio::TakeMusic()
{
    if (!IsReady(mMusicUnderWay))
        return false;
    cMusicResult result = mMusicUnderWay.get();
    if (result.mSamples) {
        mSamples = result.mSamples;
        mTransport.SetMusic(mSamples);
        mMusic = std::move(result.mMeasure);
    }
    const std::string file = SourceOf(Show().mMusic).string();
    SetProblems("music",
                result.mSamples ? tProblems{} : tProblems{{file, 0, 0, result.mError, ""}});
    return true;
}

void cStudio::FinishReading()
{
    if (mMusicUnderWay.valid())
        mMusicUnderWay.wait();
    TakeMusic();
}

// Each frame -------------------------------------------------------------------------------------

bool cStudio::Update(double now)
{
    bool isNew = TakeMusic();
    isNew = TakeChanges(now) || isNew;
    isNew = UpdateBuild() || isNew;
    isNew = UpdateRecorder() || isNew;
    mTransport.Update();
    if (mUpdatesToWrite > 0 && --mUpdatesToWrite == 0)
        WriteTracks();
    return UpdatePicture() || isNew || mTransport.IsPlaying();
}

bool cStudio::UpdatePicture()
{
    std::string error;
    const double row = mTransport.Row(), seconds = mPreview.FrameSeconds();
    const bool isDrawn = mPreview.Draw(row, error);
    SetProblems("frame", isDrawn ? tProblems{} : tProblems{{"", 0, 0, error, ""}});
    const bool isNew = row != mDrawnRow || seconds != mPreview.FrameSeconds();
    if (isNew && isDrawn)
        MeasureFlashes();
    mDrawnRow = row;
    return isNew;
}

// Frames that were dropped count as the one before.
void cStudio::MeasureFlashes()
{
    if (!mTransport.IsPlaying()) {
        mMeasuredFrame = -1;
        return;
    }
    const record::cFrameRate rate{30, 1};
    const record::cFrameGrid grid(rate, Show().mRowsPerSecond);
    const int64_t frame = grid.FirstAtOrAfter(record::ToMicroRow(mTransport.Row()));
    const bool isNext =
        mMeasuredFrame >= 0 && frame > mMeasuredFrame && frame < mMeasuredFrame + 30;
    if (frame == mMeasuredFrame)
        return;
    const record::cPicture whole = mPreview.Read();
    record::cDrawnFrame drawn;
    drawn.mPicture =
        record::Shrink(whole, std::min(256, whole.mWidth), std::min(144, whole.mHeight));
    if (!isNext)
        mFlashMeter.emplace(drawn.mPicture.mWidth, drawn.mPicture.mHeight, rate);
    drawn.mFrame = frame;
    drawn.mRow = mTransport.Row();
    mFlashMeter->Take(drawn);
    mMeasuredFrame = frame;
}

double cStudio::Flashes() const
{
    return mFlashMeter ? std::max(mFlashMeter->GetMost(false), mFlashMeter->GetMost(true)) / 2.0
                       : -1.0;
}

bool cStudio::UpdateBuild()
{
    if (mIsBuildAsked && !mBuild && !mSources.mBuild.empty()) {
        mIsBuildAsked = false;
        mBuild = std::make_unique<cCommand>(std::vector<std::string>{
            "cmake", "--build", mSources.mBuild.string(), "--target", mSources.mTarget});
        return true;
    }
    if (!mBuild)
        return false;
    mBuild->Update();
    if (!mBuild->HasEnded())
        return false;
    SetProblems("build", mBuild->Status() == 0 ? tProblems{} : FromBuildLog(mBuild->Output()));
    Say(mBuild->Status() == 0 ? "built" : "the build has failed");
    mBuild.reset(); // what it has made is seen as any change is
    return true;
}

bool cStudio::UpdateRecorder()
{
    if (!mRecorder)
        return false;
    mRecorder->Update();
    if (!mRecorder->HasEnded())
        return false;
    const bool isDone = mRecorder->Status() == 0;
    Say(isDone ? "recorded: " + mRecorded.string() : "not recorded: " + mRecorder->LastLine());
    mRecorder.reset();
    return true;
}

std::string cStudio::Activity() const
{
    if (mRecorder)
        return "recording " + mRecorded.filename().string() + "  " + mRecorder->LastLine();
    if (mBuild)
        return "building " + mSources.mTarget;
    return "";
}

void cStudio::SetProblems(const std::string &origin, tProblems problems)
{
    if (problems.empty())
        mProblems.erase(origin);
    else
        mProblems[origin] = std::move(problems);
}

tProblems cStudio::Problems() const
{
    tProblems all;
    const auto append = [&all](const tProblems &problems) {
        all.insert(all.end(), problems.begin(), problems.end());
    };
    const auto first = mProblems.find("timeline");
    if (first != mProblems.end())
        append(first->second);
    for (const auto &[origin, problems] : mProblems)
        if (origin != "timeline")
            append(problems);
    for (const cLane &lane : const_cast<cLanes &>(mLanes).All())
        if (!lane.mProblem.empty())
            all.push_back({"", 0, 0, lane.mTrack + ": " + lane.mProblem, lane.mTrack});
    return all;
}

// Editing ----------------------------------------------------------------------------------------

bool cStudio::SelectedRows(int &first, int &last) const
{
    bool isAny = false;
    for (const timeline::cKeyId &id : mSelection) {
        const timeline::cShowKey *key = Document().FindKey(id);
        if (!key)
            continue;
        first = isAny ? std::min(first, key->mKey.row) : key->mKey.row;
        last = isAny ? std::max(last, key->mKey.row) : key->mKey.row;
        isAny = true;
    }
    return isAny;
}

// A hand sees all copies of a pattern light up before it lets go, so all of them are meant. A key
// that is put on another one's row takes its place.
timeline::cEdits cStudio::WithPatterns(timeline::cEdits edits) const
{
    edits.mPattern = true;
    edits.mReplace = true;
    return edits;
}

bool cStudio::Change(const cTimelineFile::tChange &change)
{
    std::string refusal;
    const bool isDone = mFile.Change(change, refusal);
    mWatcher.Note(mFile.Path());
    if (!isDone)
        Say(refusal);
    ShowDocument();
    return isDone;
}

bool cStudio::Apply(const timeline::cEdits &edits)
{
    if (edits.IsEmpty())
        return false;
    const timeline::cEdits all = WithPatterns(edits);
    return Change([&all](timeline::cDocument &document, timeline::cTextFault &fault) {
        return document.Apply(all, fault);
    });
}

void cStudio::Undo()
{
    std::string refusal;
    if (!mFile.Undo(refusal))
        Say(refusal);
    mWatcher.Note(mFile.Path());
    ShowDocument();
}

void cStudio::Redo()
{
    std::string refusal;
    if (!mFile.Redo(refusal))
        Say(refusal);
    mWatcher.Note(mFile.Path());
    ShowDocument();
}

void cStudio::SelectAt(const std::vector<std::pair<std::string, int>> &places)
{
    tSelection selection;
    for (const auto &[track, row] : places)
        if (const timeline::cShowKey *key = Document().FindKey(track, row))
            selection.insert(key->mId);
    mSelection = std::move(selection);
}

void cStudio::AddKey(const std::string &track, int row, float value)
{
    timeline::cEdits edits;
    edits.mNew.push_back({track, row, value, {}, ""});
    if (Apply(edits))
        SelectAt({{track, row}});
}

void cStudio::DeleteSelected() { Apply(timeline::DeleteKeys(SelectedIds())); }

void cStudio::Copy()
{
    if (mSelection.empty())
        return;
    mClip = timeline::CopyKeys(Document(), SelectedIds());
    Say(std::to_string(mClip.mEntries.size()) + " keys copied");
}

void cStudio::Cut()
{
    Copy();
    DeleteSelected();
}

void cStudio::Paste(bool atOriginalTime)
{
    if (mClip.mEntries.empty())
        return;
    const int row = atOriginalTime ? mClip.mRow : int(std::lround(mTransport.Row()));
    std::vector<std::string> missing;
    if (!Apply(timeline::PasteKeys(Document(), mClip, row, missing)))
        return;
    std::vector<std::pair<std::string, int>> places;
    for (const timeline::cClip::cEntry &entry : mClip.mEntries)
        places.emplace_back(entry.mTrack, int(row + entry.mOffset));
    SelectAt(places);
    if (!missing.empty())
        Say("left out, as this timeline has no track " + missing.front());
}

void cStudio::Duplicate()
{
    int first = 0, last = 0;
    if (!SelectedRows(first, last))
        return;
    // Whole bars later, so that what follows the music goes on doing so.
    const int bar = mTransport.Tempo().RowsPerBar();
    const int rows = ((last - first) / bar + 1) * bar;
    std::vector<std::pair<std::string, int>> places;
    for (const timeline::cShowTrack &track : Document().Tracks())
        for (const timeline::cShowKey &key : track.mKeys)
            if (IsSelected(key.mId))
                places.emplace_back(track.mName, key.mKey.row + rows);
    if (Apply(timeline::DuplicateKeys(Document(), SelectedIds(), rows)))
        SelectAt(places);
}

void cStudio::Quantise(int grid)
{
    EndDrag(timeline::QuantiseKeys(Document(), SelectedIds(), grid));
}

void cStudio::Nudge(int rows) { EndDrag(timeline::MoveKeys(Document(), SelectedIds(), rows)); }

void cStudio::SetInterpolation(signed char type)
{
    Apply(timeline::SetInterpolation(SelectedIds(), type));
}

void cStudio::Detach()
{
    if (mSelection.empty())
        return;
    const timeline::cKeyId key = *mSelection.begin();
    timeline::cKeyId detached;
    const bool isDone = Change([&](timeline::cDocument &document, timeline::cTextFault &fault) {
        return document.Detach(key, detached, fault);
    });
    if (isDone)
        Select({detached});
}

void cStudio::InsertTime(int rows)
{
    const int at = int(std::lround(mTransport.Row()));
    Change([at, rows](timeline::cDocument &document, timeline::cTextFault &fault) {
        return document.InsertTime(at, rows, fault);
    });
}

void cStudio::DeleteTime(int rows)
{
    const int at = int(std::lround(mTransport.Row()));
    Change([at, rows](timeline::cDocument &document, timeline::cTextFault &fault) {
        return document.DeleteTime(at, rows, fault);
    });
}

bool cStudio::Retype(const timeline::cKeyId &id, const std::string &time, const std::string &value,
                     const std::string &interpolation)
{
    timeline::cKeyChange change;
    change.mKey = id;
    std::string expected;
    int row = 0;
    if (!time.empty() && !vyr::ParseRow(time, Document().Tempo(), row, expected)) {
        Say("time \"" + time + "\": expected " + expected);
        return false;
    }
    if (!time.empty())
        change.mRow = row;
    float number = 0.0f;
    const auto name = Document().Timeline().mNames.find(value);
    const bool isName = name != Document().Timeline().mNames.end();
    if (!value.empty() && !isName && !vyr::ParseValue(value, number, expected)) {
        Say("value \"" + value + "\": expected " + expected + " or a name of the timeline");
        return false;
    }
    if (!value.empty()) {
        change.mValue = isName ? name->second : number;
        change.mWord = value;
    }
    const auto *kind = std::ranges::find(timeline::kInterpolations, interpolation);
    if (!interpolation.empty() && kind == std::end(timeline::kInterpolations)) {
        Say("interpolation \"" + interpolation +
            "\": expected hold, linear, smoothstep or quadratic");
        return false;
    }
    if (!interpolation.empty())
        change.mType = static_cast<signed char>(kind - std::begin(timeline::kInterpolations));
    timeline::cEdits edits;
    edits.mChanges.push_back(change);
    return Apply(edits);
}

// Dragging ---------------------------------------------------------------------------------------

void cStudio::BeginDrag() { mIsDragging = true; }

bool cStudio::Drag(const timeline::cEdits &edits)
{
    std::vector<timeline::cTrack> changed;
    timeline::cTextFault fault;
    if (!Document().Preview(WithPatterns(edits), changed, fault)) {
        Say(fault.mWhat);
        return false;
    }
    // A track that the drag has left again is as it was.
    std::vector<timeline::cTrack> shown = changed;
    for (const std::string &name : mDragged) {
        const timeline::cShowTrack *track = Document().FindTrack(name);
        if (!track || std::ranges::find(changed, name, &timeline::cTrack::mName) != changed.end())
            continue;
        shown.push_back({name, {}});
        for (const timeline::cShowKey &key : track->mKeys)
            shown.back().mKeys.push_back(key.mKey);
    }
    mDragged.clear();
    for (const timeline::cTrack &track : changed)
        mDragged.push_back(track.mName);
    mLanes.TakePreview(shown);
    mPreview.SetTracks(shown);
    return true;
}

// A key that comes to another section is another line then: it is found by its place.
std::vector<std::pair<std::string, int>> cStudio::PlacesAfter(const timeline::cEdits &edits) const
{
    std::map<timeline::tLineId, int> rows; // that the keys of a line move by
    for (const timeline::cKeyChange &change : edits.mChanges)
        if (change.mRow)
            rows[change.mKey.mLine] = *change.mRow - Document().FindKey(change.mKey)->mKey.row;
    std::vector<std::pair<std::string, int>> places;
    for (const timeline::cShowTrack &track : Document().Tracks())
        for (const timeline::cShowKey &key : track.mKeys)
            if (IsSelected(key.mId)) {
                const auto moved = rows.find(key.mId.mLine);
                const int by = moved == rows.end() ? 0 : moved->second;
                places.emplace_back(track.mName, key.mKey.row + by);
            }
    return places;
}

// Somebody may have changed the text while the hand dragged. Lines that they have left are still
// there, under their own identity.
bool cStudio::AreKeysThere(const timeline::cEdits &edits) const
{
    return std::ranges::all_of(edits.mChanges, [this](const timeline::cKeyChange &change) {
        return Document().FindKey(change.mKey) != nullptr;
    });
}

bool cStudio::EndDrag(const timeline::cEdits &edits)
{
    mIsDragging = false;
    mDragged.clear();
    if (!AreKeysThere(edits)) {
        Say("not done: the line has been changed in the file meanwhile");
        ShowDocument();
        return false;
    }
    const auto places = PlacesAfter(edits);
    if (!Apply(edits)) {
        ShowDocument();
        return false;
    }
    SelectAt(places);
    return true;
}

void cStudio::CancelDrag()
{
    mIsDragging = false;
    mDragged.clear();
    ShowDocument();
}

// Recorder and editor ----------------------------------------------------------------------------

void cStudio::SaveStill(const fs::path &file)
{
    Say(record::WritePng(file.string(), mPreview.Read()) ? "saved: " + file.string()
                                                         : file.string() + ": can't be written");
}

void cStudio::Record(const fs::path &file, double fromRow, double toRow)
{
    mRecorded = file;
    WriteTracks(); // what the recorder reads
    const record::cSize size = mPreview.Size();
    std::vector<std::string> words = {BesideThisProgram("vyr-record"),
                                      "--show",
                                      mOpen.mShow.string(),
                                      "--size",
                                      std::to_string(size.mWidth) + "x" +
                                          std::to_string(size.mHeight),
                                      "--from",
                                      ToText(fromRow),
                                      "--to",
                                      ToText(toRow),
                                      "-o",
                                      file.string()};
    if (const fs::path lyrics = FindWords(mFile.Path()); !lyrics.empty())
        words.insert(words.end(), {"--lyrics", lyrics.string()});
    mRecorder = std::make_unique<cCommand>(words);
    Say("recording " + file.string());
}

void cStudio::OpenEditor(const cProblem &place)
{
    const auto command = EditorCommand(place.mFile, place.mLine, place.mColumn);
    if (!StartAlone(command))
        Say(command[0] + " can't be started; " + place.ToLine());
}
} // namespace studio
