#include "studio/Snap.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace studio
{
namespace
{
int ToRow(double row)
{
    return int(std::clamp(std::round(row), double(std::numeric_limits<int>::min()),
                          double(std::numeric_limits<int>::max())));
}
} // namespace

void cSnapper::SetSections(std::vector<int> rows)
{
    mSections = std::move(rows);
    std::sort(mSections.begin(), mSections.end());
}

void cSnapper::SetKeys(std::vector<int> rows)
{
    mKeys = std::move(rows);
    std::sort(mKeys.begin(), mKeys.end());
}

cSnapped cSnapper::Snap(const cTimeView &view, double x, bool isInverted) const
{
    cSnapped best{ToRow(view.Row(x)), eSnap::None};
    if (mIsOn == isInverted)
        return best;
    double distance = kReach;
    Consider(view, x, mPlayhead, eSnap::Playhead, best, distance);
    Consider(view, x, mSections, eSnap::Section, best, distance);
    Consider(view, x, mKeys, eSnap::Key, best, distance);
    ConsiderGrid(view, x, mTempo.RowsPerBar(), eSnap::Bar, best, distance);
    ConsiderGrid(view, x, mTempo.mRowsPerBeat, eSnap::Beat, best, distance);
    ConsiderGrid(view, x, 1, eSnap::Row, best, distance);
    return best;
}

// The nearest of `rows`, where it is nearer than what has been found.
void cSnapper::Consider(const cTimeView &view, double x, const std::vector<int> &rows, eSnap kind,
                        cSnapped &best, double &distance) const
{
    const auto after = std::lower_bound(rows.begin(), rows.end(), view.Row(x),
                                        [](int row, double wanted) { return row < wanted; });
    const auto consider = [&](int row) {
        const double away = std::fabs(view.X(row) - x);
        if (away > kReach || (best.mTo != eSnap::None && away >= distance))
            return;
        best = {row, kind};
        distance = away;
    };
    if (after != rows.begin())
        consider(*(after - 1));
    if (after != rows.end())
        consider(*after);
}

void cSnapper::ConsiderGrid(const cTimeView &view, double x, int step, eSnap kind, cSnapped &best,
                            double &distance) const
{
    if (step * view.PixelsPerRow() >= 2.0 * kReach)
        Consider(view, x, {ToRow(std::round(view.Row(x) / step) * step)}, kind, best, distance);
}
} // namespace studio
