#pragma once

#include "studio/TimeView.h"
#include "sync/track.h"

#include <cstddef>
#include <vector>

namespace studio
{
struct cPoint
{
    double x = 0.0, y = 0.0; ///< pixels of the page, y down
};

/// The lowest and the highest value of a curve within a column of pixels.
struct cColumn
{
    float mLow = 0.0f, mHigh = 0.0f;
};

/// The keys of a lane and the curve between them, as the player gives it: ascending by row, one a
/// row. Only what is on the page is looked at.
class cLaneCurve
{
public:
    explicit cLaneCurve(std::vector<sync_key> keys);

    const std::vector<sync_key> &Keys() const { return mKeys; }
    float Value(double row) const; ///< 0 without keys

    /// Indices of the keys on the page, from the first to before the last, and `pixels` beyond each
    /// of its edges.
    struct cRange
    {
        size_t mBegin = 0, mEnd = 0;
    };
    cRange Visible(const cTimeView &view, double pixels = 0.0) const;

    /// Whether more keys are on the page than its pixels can tell apart: then Columns are drawn,
    /// else Line and the keys.
    bool IsDense(const cTimeView &view) const;

    /// One for each pixel from the left edge of the page: no value in it is left out, however many
    /// keys it has. Empty without keys.
    std::vector<cColumn> Columns(const cTimeView &view) const;

    /// The curve across the page, nowhere farther than half a pixel from the player's. Empty
    /// without keys.
    std::vector<cPoint> Line(const cTimeView &view, const cValueView &values) const;

private:
    void AppendSegment(size_t index, const cTimeView &view, const cValueView &values,
                       std::vector<cPoint> &points) const;
    sync_track AsTrack() const;

    std::vector<sync_key> mKeys;
};
} // namespace studio
