#include "tools/check/CheckLyrics.h"

#include "base/Truncate.h"
#include "demo/Show.h"
#include "tools/check/Contrast.h"
#include "tools/check/Stage.h"
#include "tools/support/Lyrics.h"

#include <set>

namespace check
{
namespace
{
const float readable = 0.5f; // opacity

std::string Clock(double row)
{
    const int seconds = int(row / demo::kRowsPerSecond + 0.001);
    const int rest = seconds % 60;
    return std::to_string(seconds / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

// Of a legal track only; its faults have been told before.
const sync_track *LegalTrack(tools::cTrackFolder &folder, demo::eTrack track)
{
    tools::tFaults alreadyTold;
    const tools::cLoadedTrack loaded = folder.Load(demo::TrackName(track), alreadyTold);
    return loaded.mIsLegal ? loaded.mTrack : nullptr;
}

void CheckSpan(const tools::cLyricSpan &span, cFindings &findings)
{
    const double seconds = (span.mTo - span.mFrom) / demo::kRowsPerSecond;
    if (seconds < kShortestLyric && span.mLyric < demo::kLyricCount)
        findings.Fault(demo::LyricName(span.mLyric), "at " + Clock(span.mFrom),
                       "expected it on the screen for " + Decimal(kShortestLyric, 1) +
                           " s, half opaque or more, found " + Decimal(seconds, 2) + " s");
}

void CheckTimes(tools::cTrackFolder &folder, cFindings &findings)
{
    const sync_track *number = LegalTrack(folder, demo::LYRICS_NUM);
    const sync_track *fade = LegalTrack(folder, demo::LYRICS_FADE);
    if (!number || !fade)
        return;
    std::set<int> shown;
    for (const tools::cLyricSpan &span : tools::FindLyricSpans(*number, *fade, readable)) {
        CheckSpan(span, findings);
        shown.insert(span.mLyric);
    }
    for (int i = 0; i < demo::kLyricCount; i++)
        if (!shown.count(i))
            findings.Warn(demo::LyricName(i), "", "is never shown");
}

void CheckContrast(const std::string &path, cFindings &findings)
{
    const int id = LoadImage(path); // loaded before: this finds it
    if (id < 0)
        return;
    const vyr::cTextureManager::cTexture &texture = Textures().GetTexture(id);
    if (texture.mComponents != 4) {
        findings.Fault(path, "",
                       "expected an alpha channel (4 components), found " +
                           std::to_string(texture.mComponents));
        return;
    }
    const double contrast =
        LetterContrast(texture.mPixels, int(texture.mSize.x), int(texture.mSize.y));
    if (contrast < kLowestContrast)
        findings.Fault(path, "",
                       "expected a contrast of at least " + Decimal(kLowestContrast, 1) +
                           " to 1 over black and over white, found " + Decimal(contrast, 1));
}

void NotePhotos(const sync_track &track, std::set<int> &shown)
{
    for (int row = 0; row < int(demo::kLastRow); row++)
        shown.insert(vyr::TruncateToInt(double(sync_get_val(&track, double(row)))));
}

void CheckPhotosShown(tools::cTrackFolder &folder, cFindings &findings)
{
    std::set<int> shown;
    for (demo::eTrack name : {demo::IMAGE_LEFT, demo::IMAGE_RIGHT, demo::IMAGE_CENTER})
        if (const sync_track *track = LegalTrack(folder, name))
            NotePhotos(*track, shown);
        else
            return;
    const auto names = demo::PhotoNames();
    for (size_t i = 0; i < names.size(); i++)
        if (!shown.count(int(i)))
            findings.Warn(names[i], "photo " + std::to_string(i), "is never shown");
}
} // namespace

void CheckLyrics(tools::cTrackFolder &folder, cFindings &findings)
{
    CheckTimes(folder, findings);
    CheckPhotosShown(folder, findings);
    for (int i = 0; i < demo::kLyricCount; i++)
        CheckContrast(demo::LyricName(i), findings);
}
} // namespace check
