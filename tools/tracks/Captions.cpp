#include "tools/tracks/Captions.h"

#include "tools/tracks/Markup.h"

#include <cmath>
#include <cstdio>
#include <set>

namespace tracks
{
namespace
{
const double stanzaGapSeconds = 2.0; // of silence between two lines: a new stanza

// "00:01:02.345"
std::string TimeStamp(double seconds)
{
    const long milliseconds = std::lround(seconds * 1000.0);
    char text[48];
    std::snprintf(text, sizeof text, "%02ld:%02ld:%02ld.%03ld", milliseconds / 3'600'000,
                  milliseconds / 60'000 % 60, milliseconds / 1000 % 60, milliseconds % 1000);
    return text;
}
} // namespace

void CheckWords(const std::string &file, const std::vector<tools::cLyricSpan> &spans,
                const std::map<int, std::string> &words, const vyr::cTempo &tempo,
                tools::tFaults &faults)
{
    std::set<int> missing;
    for (const tools::cLyricSpan &span : spans)
        if (!words.count(span.mLyric) && missing.insert(span.mLyric).second)
            faults.push_back({file, "lyric " + std::to_string(span.mLyric),
                              "expected its words, which the show has on the screen at " +
                                  TimeStamp(tempo.Seconds(span.mFrom))});
}

std::string ToWebVtt(const std::vector<tools::cLyricSpan> &spans,
                     const std::map<int, std::string> &words, const vyr::cTempo &tempo)
{
    std::string text = "WEBVTT\n";
    int number = 1;
    for (const tools::cLyricSpan &span : spans) {
        text.append("\n").append(std::to_string(number++)).append("\n");
        text += TimeStamp(tempo.Seconds(span.mFrom)) + " --> " +
                TimeStamp(tempo.Seconds(span.mTo)) + "\n";
        text += EscapeMarkup(words.at(span.mLyric)) + "\n";
    }
    return text;
}

std::string ToTranscript(const std::vector<tools::cLyricSpan> &spans,
                         const std::map<int, std::string> &words, const vyr::cTempo &tempo)
{
    std::string text;
    double last = spans.empty() ? 0.0 : spans[0].mFrom;
    for (const tools::cLyricSpan &span : spans) {
        const long seconds = std::lround(tempo.Seconds(span.mFrom) * 1000.0) / 1000;
        char time[32];
        std::snprintf(time, sizeof time, "%ld:%02ld  ", seconds / 60, seconds % 60);
        if (tempo.Seconds(span.mFrom - last) > stanzaGapSeconds)
            text += "\n";
        text += time + words.at(span.mLyric) + "\n";
        last = span.mTo;
    }
    return text;
}
} // namespace tracks
