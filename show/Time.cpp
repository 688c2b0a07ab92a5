#include "show/Time.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace vyr
{
namespace
{
const char *const expectedPosition =
    "a time as rows (768), bars:beats:rows (24:0:0) or seconds (43.6s)";
const char *const expectedWithoutSeconds =
    "rows (768) or bars:beats:rows (24:0:0), as there are no seconds without a tempo line";

// All of `text` as a decimal number without a sign.
bool ParseUnsigned(std::string_view text, double &value)
{
    const bool isDigit = !text.empty() && text[0] >= '0' && text[0] <= '9';
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    return isDigit && result.ec == std::errc() && result.ptr == end;
}

bool ParseCount(std::string_view text, int limit, int &value)
{
    const bool isDigit = !text.empty() && text[0] >= '0' && text[0] <= '9';
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return isDigit && result.ec == std::errc() && result.ptr == end && value < limit;
}

std::string_view TakeField(std::string_view &text)
{
    const size_t colon = std::min(text.find(':'), text.size());
    const std::string_view field = text.substr(0, colon);
    text.remove_prefix(std::min(colon + 1, text.size()));
    return field;
}

bool ParseBars(std::string_view text, const cTempo &tempo, double &rows, std::string &expected)
{
    int bars = 0, beats = 0, rest = 0;
    const bool hasRows = text.find(':') != text.rfind(':');
    const bool endsInColon = text.back() == ':';
    if (endsInColon || !ParseCount(TakeField(text), std::numeric_limits<int>::max(), bars)) {
        expected = expectedPosition;
        return false;
    }
    if (!ParseCount(TakeField(text), tempo.mBeatsPerBar, beats)) {
        expected = "a beat from 0 to " + std::to_string(tempo.mBeatsPerBar - 1) + " behind the bar";
        return false;
    }
    if (hasRows && !ParseCount(text, tempo.mRowsPerBeat, rest)) {
        expected = "a row from 0 to " + std::to_string(tempo.mRowsPerBeat - 1) + " behind the beat";
        return false;
    }
    rows = double(bars) * tempo.RowsPerBar() + beats * tempo.mRowsPerBeat + rest;
    return true;
}

bool ParsePositive(std::string_view text, const cTempo &tempo, double &rows, std::string &expected)
{
    if (text.find(':') != std::string_view::npos)
        return ParseBars(text, tempo, rows, expected);
    const bool isSeconds = text.size() > 1 && text.back() == 's';
    if (isSeconds)
        text.remove_suffix(1);
    expected = expectedPosition;
    if (!ParseUnsigned(text, rows))
        return false;
    if (!isSeconds)
        return true;
    expected = expectedWithoutSeconds;
    if (!tempo.HasSeconds())
        return false;
    rows = tempo.Rows(rows);
    return true;
}
// Of "43.6s".
int DecimalsOf(std::string_view seconds)
{
    const size_t point = seconds.find('.');
    return point == std::string_view::npos ? 0 : int(seconds.size() - point) - 2;
}

// With `decimals` or more, as many as it takes to read back as the same row.
std::string FormatSeconds(int row, int decimals, const cTempo &tempo)
{
    const int mostDecimals = 9;
    for (int count = decimals; count <= mostDecimals && tempo.HasSeconds(); count++) {
        char text[64];
        std::snprintf(text, sizeof text, "%.*fs", count, tempo.Seconds(row));
        int again = 0;
        std::string ignored;
        if (ParseRow(text, tempo, again, ignored) && again == row)
            return text;
    }
    return FormatRow(row, tempo);
}
} // namespace

bool ParsePosition(std::string_view text, const cTempo &tempo, double &rows, std::string &expected)
{
    const bool isNegative = !text.empty() && text[0] == '-';
    if (!ParsePositive(text.substr(isNegative ? 1 : 0), tempo, rows, expected))
        return false;
    if (isNegative)
        rows = -rows;
    return true;
}

bool ParseRow(std::string_view text, const cTempo &tempo, int &row, std::string &expected)
{
    double rows = 0.0;
    if (!ParsePosition(text, tempo, rows, expected))
        return false;
    const bool isSeconds = text.back() == 's';
    if (!isSeconds && rows != std::floor(rows)) {
        expected = "a whole row";
        return false;
    }
    rows = std::round(rows);
    if (!(std::fabs(rows) <= std::numeric_limits<int>::max()) &&
        rows != std::numeric_limits<int>::min()) {
        expected = "a row that fits into 32 bits";
        return false;
    }
    row = static_cast<int>(rows);
    return true;
}

std::string FormatRow(int row, const cTempo &tempo)
{
    if (row < 0)
        return std::to_string(row);
    return std::to_string(row / tempo.RowsPerBar()) + ":" +
           std::to_string(row / tempo.mRowsPerBeat % tempo.mBeatsPerBar) + ":" +
           std::to_string(row % tempo.mRowsPerBeat);
}

eTimeUnit UnitOf(std::string_view time)
{
    if (!time.empty() && time.back() == 's')
        return eTimeUnit::Seconds;
    const size_t colon = time.find(':');
    if (colon == std::string_view::npos)
        return eTimeUnit::Rows;
    return time.rfind(':') == colon ? eTimeUnit::BarsAndBeats : eTimeUnit::BarsBeatsAndRows;
}

std::string FormatRowLike(int row, std::string_view like, const cTempo &tempo)
{
    const eTimeUnit unit = UnitOf(like);
    const bool isSmallest =
        row == std::numeric_limits<int>::min(); // it has no positive counterpart
    if (unit == eTimeUnit::Rows || isSmallest)
        return std::to_string(row);
    if (unit == eTimeUnit::Seconds)
        return FormatSeconds(row, DecimalsOf(like), tempo);
    std::string bars = FormatRow(std::abs(row), tempo);
    if (unit == eTimeUnit::BarsAndBeats && row % tempo.mRowsPerBeat == 0)
        bars.resize(bars.rfind(':'));
    return (row < 0 ? "-" : "") + bars;
}

bool ParseValue(std::string_view text, float &value, std::string &expected)
{
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    const bool isTooLarge = result.ec == std::errc::result_out_of_range;
    expected = isTooLarge ? "a number in the range of single precision"
                          : "a value: a number or a declared name";
    return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

std::string FormatValue(float value)
{
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}
} // namespace vyr
