#include "tools/record/Music.h"

#include <algorithm>
#include <cstdio>

namespace record
{
namespace
{
const int64_t samplesPerPacket = 1024;
const double samplesPerSecond = 44100.0;
// What the encoder must see beyond a packet before the packet no longer changes.
const int64_t lookaheadSamples = 16 * samplesPerPacket;
// Seeking finds the packet that contains a time: well inside it, no rounding finds its neighbour.
const int64_t insidePacket = 300; // samples

int64_t PacketStart(int64_t sample) { return sample / samplesPerPacket * samplesPerPacket; }

std::string ToSeconds(int64_t samples)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", double(samples) / samplesPerSecond);
    return text;
}
} // namespace

cMusic::cMusic(const cEncoding &encoding) : mIsLast(encoding.mPiece.mEnd == encoding.mRange.mEnd)
{
    const cFrameRate &rate = encoding.mRate;
    const int64_t first = rate.Sample(encoding.mRange.mFirst);
    const int64_t count = rate.Sample(encoding.mRange.mEnd) - first;
    mBegin = rate.Sample(encoding.mPiece.mFirst) - first;
    mEnd = rate.Sample(encoding.mPiece.mEnd) - first;
    const int64_t needed = mIsLast ? count : std::min(count, mEnd + lookaheadSamples);
    mEncoder.emplace(GetArguments(encoding.mMusic, first, needed), false);
}

// The encoder's fast coder takes 40 % of the usual one's time, and at this bit rate sounds no
// worse.
tArguments cMusic::GetArguments(const std::string &music, int64_t firstSample,
                                int64_t sampleCount) const
{
    const std::string filter =
        "aresample=44100,atrim=start_sample=" + std::to_string(firstSample) +
        ":end_sample=" + std::to_string(firstSample + sampleCount) +
        ",asetpts=PTS-STARTPTS,apad=whole_len=" + std::to_string(sampleCount);
    return Ffmpeg() + tArguments{"-i", music, "-map", "0:a:0", "-af", filter} +
           Words("-ac 2 -c:a aac -aac_coder fast -b:a 192k -movie_timescale 44100 -f mp4") +
           tArguments{mFile.GetPath()};
}

tArguments cMusic::GetInputOptions() const
{
    const bool isFirst = mBegin == 0;
    const int64_t start = PacketStart(mBegin);
    const int64_t seek = isFirst ? 0 : start + insidePacket;
    tArguments options;
    if (!isFirst)
        options = {"-ss", ToSeconds(seek), "-itsoffset", ToSeconds(seek - mBegin)};
    if (!mIsLast) {
        options.push_back("-t");
        // counted from the piece's beginning: packets that start before it are within
        options.push_back(
            ToSeconds(std::max<int64_t>(1, PacketStart(mEnd) - insidePacket - mBegin)));
    }
    options.insert(options.end(), {"-f", "mp4", "-i", mFile.GetPath()});
    return options;
}
} // namespace record
