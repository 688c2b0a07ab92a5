#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace record
{
/// Frames a second, as a fraction: 30000/1001 is exact where 29.97 is not.
struct cFrameRate
{
    int64_t mNumerator = 60;
    int64_t mDenominator = 1;

    /// "60" or "30000/1001", lowest terms or not, 1 to 1000 frames a second; nothing for any other
    /// text.
    static std::optional<cFrameRate> Parse(const std::string &text);
    std::string ToText() const; ///< as Parse takes it
    double Seconds(int64_t frame) const;
    /// Samples of 44.1 kHz sound before `frame`.
    int64_t Sample(int64_t frame) const;
};

/// The frames `mFirst` to `mEnd` - 1.
struct cFrameRange
{
    int64_t mFirst = 0;
    int64_t mEnd = 0;

    int64_t Count() const { return mEnd - mFirst; }
    /// The `part`-th, from 1, of `parts` pieces that differ by one frame at most.
    cFrameRange Part(int64_t part, int64_t parts) const;
};

/// The one grid on which all frames of a show lie: frame n belongs to the music position n / fps.
///
/// Rows are also counted in whole millionths, the digits in which they are printed: what is read in
/// a manifest and typed again names the same frame.
class cFrameGrid
{
public:
    cFrameGrid(const cFrameRate &rate, double rowsPerSecond)
        : mRate(rate), mRowsPerSecond(rowsPerSecond)
    {}

    const cFrameRate &Rate() const { return mRate; }
    double Seconds(int64_t frame) const { return mRate.Seconds(frame); }
    double Row(int64_t frame) const;
    int64_t MicroRow(int64_t frame) const; ///< rounded to the nearest millionth of a row

    int64_t FirstAtOrAfter(int64_t microRow) const;
    /// The frames at or after row `fromMicroRow` and before `toMicroRow`.
    cFrameRange Between(int64_t fromMicroRow, int64_t toMicroRow) const;

private:
    long double MicroRowsPerSecond() const;

    cFrameRate mRate;
    double mRowsPerSecond;
};

inline constexpr int64_t kMicroRows = 1000000; ///< in a row
int64_t ToMicroRow(double row);                ///< the nearest
} // namespace record
