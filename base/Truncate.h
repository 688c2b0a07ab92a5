#pragma once

#include <limits>

namespace vyr
{
/// `value` truncated toward zero. A NaN, or a value outside the signed 32-bit range, gives the
/// smallest integer: what the processor's own conversion answers, where C++ leaves it undefined.
inline int TruncateToInt(double value)
{
    if (value > -2147483649.0 && value < 2147483648.0) [[likely]]
        return static_cast<int>(value);
    return std::numeric_limits<int>::min();
}
} // namespace vyr
