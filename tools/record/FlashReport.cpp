#include "tools/record/FlashReport.h"

#include "base/Truncate.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace record
{
namespace
{
bool ChoosesFile(const vyr::cShowDescription &description, const std::string &track)
{
    return std::ranges::any_of(description.mChoices,
                               [&](const auto &choice) { return choice.mTrack == track; });
}

// Every interpolation stays between its keys, so that these are the ends of the whole track.
float GetRange(const sync_track &track)
{
    if (track.num_keys < 1)
        return 0.0f;
    const auto [lowest, highest] =
        std::minmax_element(track.keys, track.keys + track.num_keys,
                            [](const sync_key &a, const sync_key &b) { return a.value < b.value; });
    return highest->value - lowest->value;
}

double GetStep(float before, float after, bool choosesFile)
{
    if (!choosesFile)
        return std::fabs(double(after) - double(before));
    const int first = vyr::TruncateToInt(double(before));
    const int second = vyr::TruncateToInt(double(after));
    return std::max(first, -1) != std::max(second, -1) ? 1.0 : 0.0;
}

double GetMotion(const sync_track &track, bool choosesFile, const cFrameGrid &grid, int64_t frame)
{
    const int64_t second = grid.Rate().mNumerator / grid.Rate().mDenominator;
    double sum = 0.0;
    for (int64_t i = std::max<int64_t>(1, frame - second); i <= frame; i++)
        sum += GetStep(sync_get_val(&track, grid.Row(i - 1)), sync_get_val(&track, grid.Row(i)),
                       choosesFile);
    const double range = choosesFile ? 1.0 : double(GetRange(track));
    return range > 0.0 ? sum / range : 0.0;
}

std::string Describe(const cFlashes &flashes, const cFrameGrid &grid, const std::string &track)
{
    char line[160];
    std::snprintf(line, sizeof line, "%s %.6f %.3f %.6f %.3f %.1f %.0f ",
                  flashes.mIsRed ? "red" : "general", grid.Row(flashes.mFirst),
                  grid.Seconds(flashes.mFirst), grid.Row(flashes.mLast),
                  grid.Seconds(flashes.mLast), 0.5 * flashes.mTransitions, 100.0 * flashes.mField);
    return line + track;
}

std::string DescribeMost(const cFlashMeter &meter)
{
    char line[120];
    std::snprintf(line, sizeof line, "# most flashes in a second: %.1f general, %.1f red",
                  0.5 * meter.GetMost(false), 0.5 * meter.GetMost(true));
    return line;
}
} // namespace

std::string FindBusiestTrack(const vyr::cShowFolder &show, const cFrameGrid &grid, int64_t frame)
{
    std::string busiest = "none";
    double most = 0.0;
    const vyr::cShowDescription &description = show.GetDescription();
    for (const std::string &track : description.mTracks) {
        const double motion =
            GetMotion(*show.FindTrack(track), ChoosesFile(description, track), grid, frame);
        if (motion <= most)
            continue;
        most = motion;
        busiest = track;
    }
    return busiest;
}

void WriteFlashReport(cTextFile &file, const cFlashMeter &meter, const cFrameGrid &grid,
                      const cFrameRange &piece, const vyr::cShowFolder &show)
{
    file.WriteLine("# Flashes by WCAG 2.3.1 in the frames " + std::to_string(piece.mFirst) +
                   " to " + std::to_string(piece.mEnd - 1));
    file.WriteLine("# kind, from row, second, to row, second, most flashes in a second, percent of "
                   "a 10-degree field, track that moved most");
    for (const cFlashes &flashes : meter.GetFlashes())
        file.WriteLine(Describe(flashes, grid, FindBusiestTrack(show, grid, flashes.mFirst)));
    file.WriteLine(DescribeMost(meter));
    file.WriteLine(meter.GetFlashes().empty() ? "# within the limit of three in any second"
                                              : "# beyond the limit of three in any second");
    file.Commit();
}
} // namespace record
