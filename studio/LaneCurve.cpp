#include "studio/LaneCurve.h"

#include <algorithm>
#include <cmath>

namespace studio
{
namespace
{
const double denseKeysPerPixel = 0.5;
const double allowedError = 0.4; // pixels, below the half that is promised: floats round, too

bool IsBefore(const sync_key &key, double row) { return key.row < row; }

// Into so many straight pieces that none is farther from its arc than allowed: an arc whose second
// derivative is at most `bend` is h * h * bend / 8 away from a chord of length h.
int CountPieces(int type, double heightPixels)
{
    const double bend = type == SYNC_KEY_SMOOTHSTEP ? 6.0 : type == SYNC_KEY_QUADRATIC ? 2.0 : 0.0;
    return std::max(1, int(std::ceil(std::sqrt(bend * heightPixels / 8.0 / allowedError))));
}
} // namespace

cLaneCurve::cLaneCurve(std::vector<sync_key> keys) : mKeys(std::move(keys)) {}

// The player reads keys and changes none.
sync_track cLaneCurve::AsTrack() const
{
    static char name[] = "";
    return {name, const_cast<sync_key *>(mKeys.data()), int(mKeys.size())};
}

float cLaneCurve::Value(double row) const
{
    const sync_track track = AsTrack();
    return sync_get_val(&track, row);
}

cLaneCurve::cRange cLaneCurve::Visible(const cTimeView &view, double pixels) const
{
    const auto begin =
        std::lower_bound(mKeys.begin(), mKeys.end(), view.Row(view.Left() - pixels), IsBefore);
    const auto end = std::lower_bound(
        begin, mKeys.end(), std::nextafter(view.Row(view.Right() + pixels), 1e300), IsBefore);
    return {size_t(begin - mKeys.begin()), size_t(end - mKeys.begin())};
}

bool cLaneCurve::IsDense(const cTimeView &view) const
{
    const cRange visible = Visible(view);
    return double(visible.mEnd - visible.mBegin) > (view.Right() - view.Left()) * denseKeysPerPixel;
}

// Between two keys a curve only rises or only falls, so that its extremes within a column are at
// the column's edges and at its keys.
std::vector<cColumn> cLaneCurve::Columns(const cTimeView &view) const
{
    std::vector<cColumn> columns;
    if (mKeys.empty())
        return columns;
    size_t key = Visible(view).mBegin;
    float edge = Value(view.Row(view.Left()));
    for (double x = view.Left(); x < view.Right(); x += 1.0) {
        const double endRow = view.Row(x + 1.0);
        cColumn column{edge, edge};
        for (; key < mKeys.size() && mKeys[key].row < endRow; key++) {
            column.mLow = std::min(column.mLow, mKeys[key].value);
            column.mHigh = std::max(column.mHigh, mKeys[key].value);
        }
        edge = Value(endRow);
        // A value that holds is left only at the next key, which is another column's.
        column.mLow = std::min(column.mLow, edge);
        column.mHigh = std::max(column.mHigh, edge);
        columns.push_back(column);
    }
    return columns;
}

std::vector<cPoint> cLaneCurve::Line(const cTimeView &view, const cValueView &values) const
{
    std::vector<cPoint> points;
    if (mKeys.empty())
        return points;
    const cRange visible = Visible(view);
    const size_t first = visible.mBegin > 0 ? visible.mBegin - 1 : 0;
    if (visible.mBegin == 0)
        points.push_back({std::min(view.Left(), view.X(mKeys[0].row)), values.Y(mKeys[0].value)});
    for (size_t i = first; i < visible.mEnd && i + 1 < mKeys.size(); i++)
        AppendSegment(i, view, values, points);
    const sync_key &last = mKeys.back();
    if (visible.mEnd == mKeys.size()) {
        points.push_back({view.X(last.row), values.Y(last.value)});
        points.push_back({std::max(view.Right(), view.X(last.row)), values.Y(last.value)});
    }
    return points;
}

// From the key up to, not including, the next one.
void cLaneCurve::AppendSegment(size_t index, const cTimeView &view, const cValueView &values,
                               std::vector<cPoint> &points) const
{
    const sync_key &key = mKeys[index], &next = mKeys[index + 1];
    const double from = view.X(key.row), to = view.X(next.row);
    const double height = std::fabs(values.Y(key.value) - values.Y(next.value));
    const int pieces = CountPieces(key.type, height);
    points.push_back({from, values.Y(key.value)});
    for (int i = 1; i < pieces; i++) {
        const double row = key.row + (double(next.row) - key.row) * i / pieces;
        points.push_back({view.X(row), values.Y(Value(row))});
    }
    if (key.type == SYNC_KEY_HOLD)
        points.push_back({to, values.Y(key.value)});
    if (index + 2 < mKeys.size() && to > view.Right())
        points.push_back({to, values.Y(next.value)}); // where the line leaves the page
}
} // namespace studio
