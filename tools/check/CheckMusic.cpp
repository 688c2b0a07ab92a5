#include "tools/check/CheckMusic.h"

#include "show/Tempo.h"
#include "tools/support/Music.h"

#include <cmath>
#include <filesystem>

namespace check
{
namespace
{
const long rate = 44100;
const int channels = 2;

double SilenceAtStart(const tools::cMusicMeasure &music)
{
    const float audible = 0.001f; // -60 dBFS
    for (size_t i = 0; i < music.mLow.size(); i++)
        if (-music.mLow[i] > audible || music.mHigh[i] > audible)
            return double(i) * music.mStep;
    return music.mSeconds;
}

// The clock counts bytes: 44100 frames a second of 4 bytes each, whatever the file says.
void CheckFormat(const vyr::cShowDescription &show, const tools::cMusicMeasure &music,
                 cFindings &findings)
{
    const std::string &file = show.mMusic;
    if (music.mFormat.mRate != rate)
        findings.Fault(file, "rate",
                       "expected 44100 frames a second, found " +
                           std::to_string(music.mFormat.mRate));
    if (music.mFormat.mChannels != channels)
        findings.Fault(file, "channels",
                       "expected 2, found " + std::to_string(music.mFormat.mChannels));
    const double wanted = vyr::TempoOf(show).Seconds(show.mLastRow);
    if (music.mSeconds < wanted)
        findings.Fault(file, "length",
                       "expected " + Decimal(wanted, 1) + " s, to the show's last row, found " +
                           Decimal(music.mSeconds, 1) + " s");
}

void CheckLevels(const std::string &file, const tools::cMusicMeasure &music, cFindings &findings)
{
    if (music.mClippedRuns > 0)
        findings.Fault(file, "samples",
                       "expected no clipping, found " + std::to_string(music.mClippedRuns) +
                           " places at full scale");
    if (!(std::fabs(music.mIntegrated - kLoudness) <= kLoudnessTolerance))
        findings.Fault(file, "loudness",
                       "expected " + Decimal(kLoudness, 0) + " LUFS, give or take " +
                           Decimal(kLoudnessTolerance, 0) + ", found " +
                           Decimal(music.mIntegrated, 1));
    if (music.mTruePeak > kHighestTruePeak)
        findings.Fault(file, "true peak",
                       "expected at most " + Decimal(kHighestTruePeak, 1) + " dBTP, found " +
                           Decimal(music.mTruePeak, 2));
    if (SilenceAtStart(music) > kLongestSilence)
        findings.Warn(file, "start", "silent for " + Decimal(SilenceAtStart(music), 1) + " s");
}
} // namespace

void CheckMusic(const vyr::cShowDescription &show, cFindings &findings)
{
    const std::string &file = show.mMusic;
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) {
        findings.Fault(file, "", "missing");
        return;
    }
    tools::cMusicMeasure music;
    std::string error;
    if (!tools::MeasureMusic(file, true, true, music, error)) {
        findings.Fault(file, "", error);
        return;
    }
    CheckFormat(show, music, findings);
    CheckLevels(file, music, findings);
}
} // namespace check
