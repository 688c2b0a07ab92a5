#include "tools/check/Findings.h"

#include <cstdio>

namespace check
{
std::string Decimal(double value, int digits)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}
} // namespace check
