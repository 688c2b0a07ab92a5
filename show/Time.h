#pragma once

#include "show/Tempo.h"

#include <string>
#include <string_view>

namespace vyr
{

/// Reads a position: rows ("768"), bars:beats or bars:beats:rows ("24:0", "24:2:4"), or seconds
/// ("43.6s") where `tempo` has them; a minus sign before any of them. `rows` may be fractional, by
/// "12.5" or by seconds. False, with what was expected in `expected`, when `text` is none of these.
bool ParsePosition(std::string_view text, const cTempo &tempo, double &rows, std::string &expected);

/// The same for a key, which lies on a whole row: seconds go to the nearest one, a fractional row
/// is refused, and the row must fit into 32 bits.
bool ParseRow(std::string_view text, const cTempo &tempo, int &row, std::string &expected);

/// "24:2:4"; negative rows as a plain number.
std::string FormatRow(int row, const cTempo &tempo);

/// How a time is written.
enum class eTimeUnit
{
    Rows,             ///< 768
    BarsAndBeats,     ///< 24:0
    BarsBeatsAndRows, ///< 24:0:0
    Seconds           ///< 43.6s
};
eTimeUnit UnitOf(std::string_view time);

/// `row` in the unit and the number of decimals of `like`, a time as it is written: in bars and
/// beats with rows where it lies on no beat, in seconds with more decimals where the row needs
/// them. It reads back as `row`.
std::string FormatRowLike(int row, std::string_view like, const cTempo &tempo);

/// Reads a decimal number in the range of single precision. False, with what was expected in
/// `expected`, when `text` is none.
bool ParseValue(std::string_view text, float &value, std::string &expected);

/// The shortest text that reads back as the same value, the sign of zero included.
std::string FormatValue(float value);
} // namespace vyr
