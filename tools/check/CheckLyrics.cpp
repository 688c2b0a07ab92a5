#include "tools/check/CheckLyrics.h"

#include "base/Truncate.h"
#include "show/Tempo.h"
#include "tools/check/Contrast.h"
#include "tools/check/Stage.h"
#include "tools/support/Files.h"
#include "tools/support/Lyrics.h"

#include <algorithm>
#include <set>

namespace check
{
namespace
{
const float readable = 0.5f; // opacity

std::string Clock(double exactSeconds)
{
    const int seconds = int(exactSeconds + 0.001);
    const int rest = seconds % 60;
    return std::to_string(seconds / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

// Of a legal track only; its faults have been reported before.
const sync_track *LegalTrack(tools::cTrackFolder &folder, const std::string &track)
{
    tools::tFaults alreadyTold;
    const tools::cLoadedTrack loaded = folder.Load(track, alreadyTold);
    return loaded.mIsLegal ? loaded.mTrack : nullptr;
}

/// A show's words: the files that their track chooses from.
using tFiles = std::vector<std::string>;

const tFiles &FindFiles(const vyr::cShowDescription &show, const std::string &track)
{
    static const tFiles none;
    const auto found =
        std::ranges::find(show.mChoices, track, [](const auto &c) { return c.mTrack; });
    return found == show.mChoices.end() ? none : found->mFiles;
}

void CheckSpan(const tools::cLyricSpan &span, const tFiles &files, const vyr::cTempo &tempo,
               cFindings &findings)
{
    const double seconds = tempo.Seconds(span.mTo - span.mFrom);
    if (seconds < kShortestLyric && size_t(span.mLyric) < files.size())
        findings.Fault(files[size_t(span.mLyric)], "at " + Clock(tempo.Seconds(span.mFrom)),
                       "expected it on the screen for " + Decimal(kShortestLyric, 1) +
                           " s, half opaque or more, found " + Decimal(seconds, 2) + " s");
}

// A word that is never half opaque is never shown, even where it is picked.
void CheckTimes(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                const tools::cWordTracks &names, cFindings &findings)
{
    const tFiles &files = FindFiles(show, names.mNumber);
    if (files.empty())
        return;
    const sync_track *number = LegalTrack(folder, names.mNumber);
    const sync_track *fade = LegalTrack(folder, names.mFade);
    if (!number || !fade)
        return;
    std::set<int> shown;
    for (const tools::cLyricSpan &span :
         tools::FindLyricSpans(*number, *fade, readable, show.mLastRow)) {
        CheckSpan(span, files, vyr::TempoOf(show), findings);
        shown.insert(span.mLyric);
    }
    for (size_t i = 0; i < files.size(); i++)
        if (!shown.count(int(i)))
            findings.Warn(files[i], "", "is never shown");
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

// Files that `track` picks on a row of the show.
void NotePicked(const sync_track &track, double lastRow, const tFiles &files,
                std::set<std::string> &picked)
{
    for (int row = 0; row < lastRow; row++) {
        const int index = vyr::TruncateToInt(double(sync_get_val(&track, double(row))));
        if (index >= 0 && size_t(index) < files.size())
            picked.insert(files[size_t(index)]);
    }
}

// A file that several tracks choose from is picked when one of them does. The words are looked at
// more closely, see CheckTimes.
void CheckFilesPicked(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                      const tools::cWordTracks &names, cFindings &findings)
{
    std::set<std::string> picked;
    for (const auto &choice : show.mChoices) {
        const sync_track *track = LegalTrack(folder, choice.mTrack);
        if (!track)
            return;
        NotePicked(*track, show.mLastRow, choice.mFiles, picked);
    }
    for (const auto &choice : show.mChoices)
        for (size_t i = 0; i < choice.mFiles.size() && choice.mTrack != names.mNumber; i++)
            if (!tools::IsObject(choice.mFiles[i]) && picked.insert(choice.mFiles[i]).second)
                findings.Warn(choice.mFiles[i], choice.mTrack + " " + std::to_string(i),
                              "is never shown");
}
} // namespace

void CheckLyrics(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                 cFindings &findings)
{
    const tools::cWordTracks names = tools::FindWordTracks(show.mTracks);
    CheckTimes(show, folder, names, findings);
    CheckFilesPicked(show, folder, names, findings);
    for (const std::string &file : FindFiles(show, names.mNumber))
        CheckContrast(file, findings);
}
} // namespace check
