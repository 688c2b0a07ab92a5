#pragma once

#include <string>
#include <vector>

namespace tracks
{
/// What a command of vyr-tracks is given; each uses what it needs.
struct cOptions
{
    std::string mTimeline;          ///< text to read
    std::string mFolder;            ///< folder of the track files to read
    std::string mOutput;            ///< folder or file to write; empty for standard output
    std::string mTrack;             ///< name of one track
    std::string mFrom, mTo, mStep;  ///< times, as in a timeline
    std::string mLyrics;            ///< file of the words
    std::string mTranscript;        ///< file to write
    std::string mMusic;             ///< file to measure
    std::vector<std::string> mEdit; ///< words of an edit
    std::string mScript;            ///< file of edits; "-" for standard input
    bool mIsPattern = false;        ///< edits of repeated sections are meant so
    bool mIsDryRun = false;         ///< print what would change, change nothing
};

/// Exit statuses.
inline constexpr int kClean = 0, kFaulty = 1, kMisused = 2;

/// Each does one command, reports faults on standard error and gives the exit status. Nothing is
/// written where there is a fault.
int RunCompile(const cOptions &options);
int RunDump(const cOptions &options);
int RunSample(const cOptions &options);
int RunPlot(const cOptions &options);
int RunCaptions(const cOptions &options);
int RunEdit(const cOptions &options);
} // namespace tracks
