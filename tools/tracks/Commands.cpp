#include "tools/tracks/Commands.h"

#include "demo/Show.h"
#include "tools/support/Files.h"
#include "tools/support/Nearest.h"
#include "tools/support/ShowTempo.h"
#include "tools/support/TrackFolder.h"
#include "tools/timeline/Compiler.h"
#include "show/Time.h"
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
const char *const numberTrack = "lyrics:num", *const fadeTrack = "lyrics:fade";

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

// That of the timeline where it is given and says one, else that of the show.
vyr::cTempo FindTempo(const cOptions &options, tools::tFaults &faults)
{
    const vyr::cTempo ofShow = tools::TempoOfShow(options.mFolder);
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

// Of the folder's tracks the one called `name`; null with a fault that tells the nearest one.
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

std::vector<tools::cLyricSpan> LoadSpans(tools::cTrackFolder &folder, float opacity,
                                         tools::tFaults &faults)
{
    const sync_track *number = LoadOne(folder, numberTrack, faults);
    const sync_track *fade = LoadOne(folder, fadeTrack, faults);
    if (!number || !fade)
        return {};
    return tools::FindLyricSpans(*number, *fade, opacity);
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

// What a plot shows besides tracks is taken where it can be had.
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

void AddMusic(const cOptions &options, cPlotInput &input, tools::tFaults &faults)
{
    const fs::path usual = fs::path(options.mFolder) / demo::kMusicFile;
    const fs::path path = options.mMusic.empty() ? usual : fs::path(options.mMusic);
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

void AddLyrics(const cOptions &options, tools::cTrackFolder &folder, cPlotInput &input,
               tools::tFaults &faults)
{
    if (options.mLyrics.empty())
        return;
    input.mWords = tools::ReadLyrics(options.mLyrics, faults);
    input.mLyrics = LoadSpans(folder, kCaptionOpacity, faults);
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
    const vyr::cTempo tempo = FindTempo(options, faults);
    return faults.empty() ? WriteText(options.mOutput, Dump(tracks, tempo)) : Fail(faults);
}

int RunSample(const cOptions &options)
{
    tools::tFaults faults;
    const vyr::cTempo tempo = FindTempo(options, faults);
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
    input.mTempo = tools::TempoOfShow(options.mFolder);
    input.mLastRow = demo::kLastRow;
    input.mTracks = LoadAll(options, folder, faults);
    const sync_track *one = nullptr;
    if (faults.empty() && !options.mTrack.empty())
        one = LoadOne(folder, options.mTrack, faults);
    AddTimeline(options, input, faults);
    if (faults.empty())
        AddLyrics(options, folder, input, faults);
    if (faults.empty())
        AddMusic(options, input, faults);
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
    const vyr::cTempo tempo = FindTempo(options, faults);
    if (faults.empty() && !tempo.HasSeconds())
        return Fail(options.mFolder, "expected a tempo, which captions need for their seconds");
    const auto words = tools::ReadLyrics(options.mLyrics, faults);
    const auto spans = LoadSpans(folder, kCaptionOpacity, faults);
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
