#pragma once

#include "studio/Lanes.h"
#include "tools/timeline/Operations.h"

namespace studio
{
/// What a drag of keys makes, as the edits of one step.

/// All keys `rows` later and their values `amount` higher; each may be 0. `lanes` says whose values
/// are counted: those stay whole.
timeline::cEdits MoveEdits(const timeline::cDocument &document, const timeline::tKeyIds &keys,
                           int rows, double amount);

/// The value that a hand means which has moved a key of `lane` from `value` by `pixels` upwards,
/// where one pixel is `perPixel`: whole where the lane counts, else as coarse as a hand can tell
/// pixels apart, and exact with `isFine`.
double DraggedValue(const cLane &lane, double value, double pixels, double perPixel, bool isFine);

/// As many decimals as a hand can place: the power of ten at or below `step`'s size.
double RoundedTo(double value, double step);
} // namespace studio
