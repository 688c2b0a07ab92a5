#pragma once

#include "show/Tempo.h"
#include "studio/TimeView.h"

#include <vector>

namespace studio
{
/// What a time may be drawn to, the strongest first: of two that are equally near the first wins.
enum class eSnap
{
    None, ///< nothing near enough: the nearest row
    Playhead,
    Section, ///< its beginning or end
    Key,
    Bar,
    Beat,
    Row
};

struct cSnapped
{
    int mRow = 0;
    eSnap mTo = eSnap::None;
};

/// Finds the time that a hand means. Times are whole rows in any case.
class cSnapper
{
public:
    /// How near, in pixels, on each side.
    static constexpr double kReach = 8.0;

    explicit cSnapper(const vyr::cTempo &tempo) : mTempo(tempo) {}

    /// What there is to snap to, sorted or not. Keys that are being dragged are left out by whoever
    /// gives them.
    void SetPlayhead(int row) { mPlayhead = {row}; }
    void SetSections(std::vector<int> rows);
    void SetKeys(std::vector<int> rows);
    /// Snapping is on or off as a setting; the key that inverts it is an argument of Snap.
    void SetOn(bool isOn) { mIsOn = isOn; }

    /// The row for `x` on the page. Beats and bars count where they are far enough apart to be told
    /// from each other, which is twice the reach; where they are not, the coarser ones do.
    cSnapped Snap(const cTimeView &view, double x, bool isInverted) const;

private:
    void Consider(const cTimeView &view, double x, const std::vector<int> &rows, eSnap kind,
                  cSnapped &best, double &distance) const;
    void ConsiderGrid(const cTimeView &view, double x, int step, eSnap kind, cSnapped &best,
                      double &distance) const;

    vyr::cTempo mTempo;
    std::vector<int> mPlayhead, mSections, mKeys;
    bool mIsOn = true;
};
} // namespace studio
