#include "tools/tracks/Commands.h"

#include "show/ShowFolder.h"
#include "show/Time.h"
#include "tools/support/Files.h"
#include "tools/support/Nearest.h"
#include "tools/support/TrackFolder.h"
#include "tools/timeline/Compiler.h"
#include "tools/tracks/Captions.h"
#include "tools/tracks/Dumper.h"
#include "tools/tracks/Plotter.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace fs = std::filesystem;

namespace tracks
{
namespace
{
const double maximumSamples = 10'000'000;

int Fail(const tools::tFaults &faults)
{
    tools::Print(std::cerr, faults);
    return kFaulty;
}

int Fail(const std::string &file, const std::string &what) { return Fail({{file, "", what}}); }

int Misuse(const std::string &what)
{
    std::cerr << tools::OnOneLine(what) << '\n';
    return kMisused;
}

int Write(const std::vector<tools::cOutput> &outputs)
{
    std::string error;
    if (tools::ReplaceFiles(outputs, error))
        return kClean;
    std::cerr << tools::OnOneLine(error) << '\n';
    return kFaulty;
}

// To standard output where there is no file.
int WriteText(const std::string &path, const std::string &text)
{
    if (!path.empty())
        return Write({{path, text}});
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return std::fflush(stdout) == 0 && isWritten ? kClean : Fail("standard output", "can't write");
}

bool ReadTimeline(const std::string &path, timeline::cTimeline &timeline,
                  std::vector<timeline::cTrack> &tracks, tools::tFaults &reports)
{
    std::string text, error;
    if (!tools::ReadWhole(path, timeline::kMaximumTextBytes, text, error)) {
        reports.push_back({path, "", error});
        return false;
    }
    timeline::tTextFaults faults;
    timeline = timeline::ParseTimeline(text, faults);
    tracks = timeline::Compile(timeline, faults);
    for (const tools::cFault &fault : timeline::ToReports(path, faults))
        reports.push_back(fault);
    return faults.empty();
}

/// What is known of the show that the tracks belong to: all that it says of itself, or, of a folder
/// that has tracks alone, nothing.
struct cShowFacts
{
    vyr::cTempo mTempo;
    double mLastRow = 0; ///< 0: not known
    std::string mMusic;  ///< path; empty: not known
};

// Runs the show's code where there is some.
cShowFacts AskShow(const std::string &folder, tools::tFaults &faults)
{
    if (!vyr::IsShowFolder(folder))
        return {};
    try {
        const vyr::cShowDescription show = vyr::cShowFolder(folder).GetDescription();
        return {vyr::TempoOf(show), show.mLastRow, (fs::path(folder) / show.mMusic).string()};
    } catch (const vyr::cShowError &error) {
        faults.push_back(tools::ToFault(error.what()));
        return {};
    }
}

// That of the timeline where it is given and says one, else that of the show.
vyr::cTempo FindTempo(const cOptions &options, const vyr::cTempo &ofShow, tools::tFaults &faults)
{
    if (options.mTimeline.empty())
        return ofShow;
    timeline::cTimeline timeline;
    std::vector<timeline::cTrack> tracks;
    if (!ReadTimeline(options.mTimeline, timeline, tracks, faults))
        return ofShow;
    return timeline.mTempo.HasSeconds() ? timeline.mTempo : ofShow;
}

bool CheckFolder(const std::string &path, tools::tFaults &faults)
{
    std::error_code ignored;
    if (fs::is_directory(path, ignored))
        return true;
    faults.push_back({path, "", "no such folder"});
    return false;
}

// Of the folder's tracks the one called `name`; null, with a fault that names the nearest one.
const sync_track *LoadOne(tools::cTrackFolder &folder, const std::string &name,
                          tools::tFaults &faults)
{
    const std::vector<std::string> names = folder.Names();
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        faults.push_back({folder.FileOf(name).string(), "",
                          "expected a track of this folder, found " + tools::Quote(name) +
                              tools::NearestHint(name, names)});
        return nullptr;
    }
    const tools::cLoadedTrack loaded = folder.Load(name, faults);
    return loaded.mIsLegal ? loaded.mTrack : nullptr;
}

std::vector<const sync_track *> LoadAll(const cOptions &options, tools::cTrackFolder &folder,
                                        tools::tFaults &faults)
{
    std::vector<const sync_track *> tracks;
    if (!CheckFolder(options.mFolder, faults))
        return tracks;
    for (const std::string &name : folder.Names())
        tracks.push_back(folder.Load(name, faults).mTrack);
    if (tracks.empty())
        faults.push_back({options.mFolder, "", "no track files here"});
    return tracks;
}

// Where the show's end is not known, it is one row after the last key.
double EndOf(const sync_track &number, const sync_track &fade)
{
    double end = 1.0;
    for (const sync_track *track : {&number, &fade})
        if (track->num_keys > 0)
            end = std::max(end, track->keys[track->num_keys - 1].row + 1.0);
    return end;
}

std::vector<tools::cLyricSpan> LoadSpans(tools::cTrackFolder &folder, double lastRow,
                                         tools::tFaults &faults)
{
    const tools::cWordTracks names = tools::FindWordTracks(folder.Names());
    const sync_track *number = LoadOne(folder, names.mNumber, faults);
    const sync_track *fade = LoadOne(folder, names.mFade, faults);
    if (!number || !fade)
        return {};
    return tools::FindLyricSpans(*number, *fade, kCaptionOpacity,
                                 lastRow > 0 ? lastRow : EndOf(*number, *fade));
}

// Plot
// ---------------------------------------------------------------------------------------------

std::string TitleOf(const cOptions &options, const std::vector<const sync_track *> &tracks)
{
    long long keys = 0;
    for (const sync_track *track : tracks)
        keys += track->num_keys;
    return fs::path(options.mFolder).lexically_normal().string() + ": " +
           std::to_string(tracks.size()) + " tracks, " + std::to_string(keys) + " keys";
}

// A plot shows more than tracks only where the files for it exist.
void AddTimeline(const cOptions &options, cPlotInput &input, tools::tFaults &faults)
{
    if (options.mTimeline.empty())
        return;
    timeline::cTimeline timeline;
    std::vector<timeline::cTrack> tracks;
    if (!ReadTimeline(options.mTimeline, timeline, tracks, faults))
        return;
    if (timeline.mTempo.HasSeconds())
        input.mTempo = timeline.mTempo;
    input.mSections = SectionsOf(timeline);
    input.mValueNames = timeline.mValueNames;
}

void AddMusic(const cOptions &options, const std::string &usual, cPlotInput &input,
              tools::tFaults &faults)
{
    const fs::path path = options.mMusic.empty() ? usual : options.mMusic;
    std::error_code ignored;
    if (options.mMusic.empty() && !fs::exists(path, ignored))
        return;
    tools::cMusicMeasure measure;
    std::string error;
    if (!input.mTempo.HasSeconds())
        faults.push_back({path.string(), "", "expected a tempo, which places the music"});
    else if (tools::MeasureMusic(path, true, false, measure, error))
        input.mMusic = measure;
    else
        faults.push_back({path.string(), "", error});
}

void AddLyrics(const cOptions &options, tools::cTrackFolder &folder, double lastRow,
               cPlotInput &input, tools::tFaults &faults)
{
    if (options.mLyrics.empty())
        return;
    input.mWords = tools::ReadLyrics(options.mLyrics, faults);
    input.mLyrics = LoadSpans(folder, lastRow, faults);
}
} // namespace

int RunCompile(const cOptions &options)
{
    timeline::cTimeline timeline;
    std::vector<timeline::cTrack> tracks;
    tools::tFaults faults;
    if (!ReadTimeline(options.mTimeline, timeline, tracks, faults))
        return Fail(faults);
    return Write(timeline::TrackFiles(tracks, options.mOutput));
}

int RunDump(const cOptions &options)
{
    tools::cTrackFolder folder(options.mFolder);
    tools::tFaults faults;
    const auto tracks = LoadAll(options, folder, faults);
    const cShowFacts show = AskShow(options.mFolder, faults);
    const vyr::cTempo tempo = FindTempo(options, show.mTempo, faults);
    return faults.empty() ? WriteText(options.mOutput, Dump(tracks, tempo)) : Fail(faults);
}

int RunSample(const cOptions &options)
{
    tools::tFaults faults;
    const cShowFacts show = AskShow(options.mFolder, faults);
    const vyr::cTempo tempo = FindTempo(options, show.mTempo, faults);
    if (!faults.empty())
        return Fail(faults);
    double times[3] = {};
    const std::string *texts[3] = {&options.mFrom, &options.mTo, &options.mStep};
    for (size_t i = 0; i < 3; i++) {
        std::string expected;
        if (!vyr::ParsePosition(*texts[i], tempo, times[i], expected))
            return Misuse("expected " + expected + ", found " + tools::Quote(*texts[i]));
    }
    if (!(times[2] > 0.0) || !((times[1] - times[0]) / times[2] < maximumSamples))
        return Misuse("expected a STEP above 0 that makes fewer than 10 million samples, found " +
                      tools::Quote(options.mStep));
    tools::cTrackFolder folder(options.mFolder);
    if (!CheckFolder(options.mFolder, faults))
        return Fail(faults);
    const sync_track *track = LoadOne(folder, options.mTrack, faults);
    return track ? WriteText(options.mOutput, SampleAsCsv(*track, times[0], times[1], times[2]))
                 : Fail(faults);
}

int RunPlot(const cOptions &options)
{
    tools::cTrackFolder folder(options.mFolder);
    tools::tFaults faults;
    cPlotInput input;
    const cShowFacts show = AskShow(options.mFolder, faults);
    input.mTempo = show.mTempo;
    input.mLastRow = std::max(show.mLastRow, 1.0);
    input.mTracks = LoadAll(options, folder, faults);
    const sync_track *one = nullptr;
    if (faults.empty() && !options.mTrack.empty())
        one = LoadOne(folder, options.mTrack, faults);
    AddTimeline(options, input, faults);
    if (faults.empty())
        AddLyrics(options, folder, show.mLastRow, input, faults);
    if (faults.empty())
        AddMusic(options, show.mMusic, input, faults);
    if (!faults.empty())
        return Fail(faults);
    input.mTitle = one ? options.mTrack : TitleOf(options, input.mTracks);
    return WriteText(options.mOutput, one ? PlotOneTrack(input, *one) : PlotShow(input));
}

int RunCaptions(const cOptions &options)
{
    tools::cTrackFolder folder(options.mFolder);
    tools::tFaults faults;
    if (!CheckFolder(options.mFolder, faults))
        return Fail(faults);
    const cShowFacts show = AskShow(options.mFolder, faults);
    const vyr::cTempo tempo = FindTempo(options, show.mTempo, faults);
    if (faults.empty() && !tempo.HasSeconds())
        return Fail(options.mFolder, "expected a tempo, which captions need for their seconds");
    const auto words = tools::ReadLyrics(options.mLyrics, faults);
    const auto spans = LoadSpans(folder, show.mLastRow, faults);
    if (faults.empty())
        CheckWords(options.mLyrics, spans, words, tempo, faults);
    if (!faults.empty())
        return Fail(faults);
    std::vector<tools::cOutput> outputs = {{options.mOutput, ToWebVtt(spans, words, tempo)}};
    if (!options.mTranscript.empty())
        outputs.push_back({options.mTranscript, ToTranscript(spans, words, tempo)});
    return Write(outputs);
}
} // namespace tracks
