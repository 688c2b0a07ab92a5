#include "studio/Gesture.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace studio
{
namespace
{
int Decimals(float value)
{
    const std::string text = vyr::FormatValue(value);
    const size_t point = text.find('.');
    return point == std::string::npos ? 0 : int(text.size() - point - 1);
}

double Rounded(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", std::clamp(decimals, 0, 9), value);
    const double rounded = std::strtod(text, nullptr); // the very number that will be written
    return rounded == 0.0 ? 0.0 : rounded;             // without a sign
}

// As long as the longer of the two is written: 0.3 and 0.1 make 0.4.
float Sum(float value, double amount)
{
    return float(
        Rounded(double(value) + amount, std::max(Decimals(value), Decimals(float(amount)))));
}
} // namespace

double RoundedTo(double value, double step)
{
    return Rounded(value, int(-std::floor(std::log10(std::clamp(step, 1e-6, 1.0)))));
}

double DraggedValue(const cLane &lane, double value, double pixels, double perPixel, bool isFine)
{
    const double dragged = value + pixels * perPixel;
    if (lane.IsCounting())
        return lane.IsPicking()
                   ? std::clamp(std::round(dragged), -1.0, double(lane.mFiles.size()) - 1)
                   : std::round(dragged);
    return RoundedTo(dragged, isFine ? perPixel / 10.0 : perPixel);
}

timeline::cEdits MoveEdits(const timeline::cDocument &document, const timeline::tKeyIds &keys,
                           int rows, double amount)
{
    timeline::cEdits edits = timeline::MoveKeys(document, keys, rows);
    for (timeline::cKeyChange &change : edits.mChanges) {
        if (rows == 0)
            change.mRow.reset();
        if (amount != 0.0)
            change.mValue = Sum(document.FindKey(change.mKey)->mKey.value, amount);
    }
    if (rows == 0 && amount == 0.0)
        edits.mChanges.clear();
    return edits;
}
} // namespace studio
