#pragma once

#include "tools/record/Picture.h"

#include <cstdint>
#include <vector>

namespace record
{
/// Writes `picture`, of even width and height, as video has it: BT.709 in the range of television
/// (black 16, white 235), the plane of Y and then those of U and V, which have one sample for four
/// pixels, the mean of them. `planes` becomes as large as that takes. The same integer arithmetic
/// everywhere, so that frames made on different machines are equal.
void ConvertToYuv(const cPicture &picture, std::vector<uint8_t> &planes);
} // namespace record
