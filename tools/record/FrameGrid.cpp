#include "tools/record/FrameGrid.h"

#include <charconv>
#include <cmath>

namespace record
{
namespace
{
const int64_t samplesPerSecond = 44100;
// Beyond these, products with a show's length in millionths of a row would leave 64 bits.
const int64_t maximumNumerator = 1000000;
const int64_t maximumRate = 1000;

std::optional<int64_t> ParseInteger(std::string_view text)
{
    int64_t value = 0;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

int64_t DivideRounded(int64_t dividend, int64_t divisor) // neither is negative
{
    return (dividend + divisor / 2) / divisor;
}
} // namespace

int64_t ToMicroRow(double row) { return std::llround(row * double(kMicroRows)); }

std::optional<cFrameRate> cFrameRate::Parse(const std::string &text)
{
    const size_t slash = text.find('/');
    const auto numerator = ParseInteger(std::string_view(text).substr(0, slash));
    const auto denominator = slash == std::string::npos
                                 ? std::optional<int64_t>(1)
                                 : ParseInteger(std::string_view(text).substr(slash + 1));
    if (!numerator || !denominator)
        return std::nullopt;
    const cFrameRate rate{*numerator, *denominator};
    if (rate.mNumerator < 1 || rate.mNumerator > maximumNumerator || rate.mDenominator < 1)
        return std::nullopt;
    if (rate.mNumerator < rate.mDenominator ||
        rate.mNumerator / rate.mDenominator >
            maximumRate - 1 + (rate.mNumerator % rate.mDenominator == 0))
        return std::nullopt;
    return rate;
}

std::string cFrameRate::ToText() const
{
    const std::string numerator = std::to_string(mNumerator);
    return mDenominator == 1 ? numerator : numerator + "/" + std::to_string(mDenominator);
}

cFrameRange cFrameRange::Part(int64_t part, int64_t parts) const
{
    return {mFirst + Count() * (part - 1) / parts, mFirst + Count() * part / parts};
}

double cFrameRate::Seconds(int64_t frame) const
{
    return double(frame * mDenominator) / double(mNumerator);
}

int64_t cFrameRate::Sample(int64_t frame) const
{
    return DivideRounded(samplesPerSecond * frame * mDenominator, mNumerator);
}

double cFrameGrid::Row(int64_t frame) const
{
    return mRowsPerSecond * double(frame * mRate.mDenominator) / double(mRate.mNumerator);
}

// The wide type holds the product of a tempo in whole millionths exactly, so that such a grid is
// rounded as integers would be.
int64_t cFrameGrid::MicroRow(int64_t frame) const
{
    const long double product =
        MicroRowsPerSecond() * (long double)(frame) * (long double)(mRate.mDenominator);
    return std::llround(product / (long double)(mRate.mNumerator));
}

long double cFrameGrid::MicroRowsPerSecond() const
{
    return mRowsPerSecond * double(kMicroRows); // as a double: 17.6 gives 17600000
}

int64_t cFrameGrid::FirstAtOrAfter(int64_t microRow) const
{
    // not behind the frame looked for, whichever way rows were rounded
    const long double seconds = (long double)(microRow) / MicroRowsPerSecond();
    const int64_t before =
        int64_t(seconds * (long double)(mRate.mNumerator) / (long double)(mRate.mDenominator)) - 1;
    int64_t frame = before > 0 ? before : 0;
    while (MicroRow(frame) < microRow)
        frame++;
    return frame;
}

cFrameRange cFrameGrid::Between(int64_t fromMicroRow, int64_t toMicroRow) const
{
    return {FirstAtOrAfter(fromMicroRow), FirstAtOrAfter(toMicroRow)};
}
} // namespace record
