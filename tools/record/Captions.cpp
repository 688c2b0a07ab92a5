#include "tools/record/Captions.h"

#include "show/Tempo.h"
#include "tools/record/Failure.h"
#include "tools/support/Files.h"
#include "tools/support/Lyrics.h"
#include "tools/tracks/Captions.h"

#include <algorithm>

namespace record
{
namespace
{
using tSpans = std::vector<tools::cLyricSpan>;

// Those of `piece`, counted from its beginning.
tSpans Cut(const tSpans &spans, const cFrameGrid &grid, const cFrameRange &piece)
{
    const double begin = grid.Row(piece.mFirst), end = grid.Row(piece.mEnd);
    tSpans cut;
    for (const tools::cLyricSpan &span : spans) {
        const double from = std::max(span.mFrom, begin), to = std::min(span.mTo, end);
        if (from < to)
            cut.push_back({span.mLyric, from - begin, to - begin});
    }
    return cut;
}

tSpans FindSpans(const vyr::cShowFolder &show)
{
    const vyr::cShowDescription &description = show.GetDescription();
    const tools::cWordTracks names = tools::FindWordTracks(description.mTracks);
    const sync_track *number = show.FindTrack(names.mNumber);
    const sync_track *fade = show.FindTrack(names.mFade);
    if (!number || !fade)
        throw cFailure(
            "--lyrics: the show has no words: no tracks are called NAME:num and NAME:fade");
    return tools::FindLyricSpans(*number, *fade, tracks::kCaptionOpacity, description.mLastRow);
}

void ThrowFirst(const tools::tFaults &faults)
{
    if (!faults.empty())
        throw cFailure(faults.front().ToLine());
}
} // namespace

cCaptions::cCaptions(const std::string &lyricsPath, const vyr::cShowFolder &show,
                     const cFrameGrid &grid, const cFrameRange &piece)
{
    tools::tFaults faults;
    const auto words = tools::ReadLyrics(lyricsPath, faults);
    ThrowFirst(faults);
    const tSpans spans = Cut(FindSpans(show), grid, piece);
    const vyr::cTempo tempo = vyr::TempoOf(show.GetDescription());
    tracks::CheckWords(lyricsPath, spans, words, tempo, faults);
    ThrowFirst(faults);
    std::string error;
    if (!tools::ReplaceFiles({{mFile.GetPath(), tracks::ToWebVtt(spans, words, tempo)}}, error))
        throw cFailure(error);
}

tArguments cCaptions::GetInputOptions() const { return {"-f", "webvtt", "-i", mFile.GetPath()}; }
} // namespace record
