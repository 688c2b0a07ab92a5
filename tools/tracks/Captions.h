#pragma once

#include "show/Tempo.h"
#include "tools/support/Lyrics.h"

#include <map>
#include <string>
#include <vector>

namespace tracks
{
/// From this opacity on, words count as shown.
inline constexpr float kCaptionOpacity = 0.1f;

/// Adds a fault for every lyric that is shown and has no words.
void CheckWords(const std::string &file, const std::vector<tools::cLyricSpan> &spans,
                const std::map<int, std::string> &words, const vyr::cTempo &tempo,
                tools::tFaults &faults);

/// The words as WebVTT, a cue a span. All spans must have words, and the tempo seconds.
std::string ToWebVtt(const std::vector<tools::cLyricSpan> &spans,
                     const std::map<int, std::string> &words, const vyr::cTempo &tempo);

/// The words as a text to read, a line a span with its minute and second, stanzas apart.
std::string ToTranscript(const std::vector<tools::cLyricSpan> &spans,
                         const std::map<int, std::string> &words, const vyr::cTempo &tempo);
} // namespace tracks
