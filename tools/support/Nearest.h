#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools
{
/// The name of `known` that takes the fewest single-character edits to become `name`; empty when
/// every one would have to be rewritten for the most part. The first of several equals wins.
std::string Nearest(std::string_view name, const std::vector<std::string> &known);

/// ", nearest known name 'X'", or nothing, to be put behind a fault.
std::string NearestHint(std::string_view name, const std::vector<std::string> &known);
} // namespace tools
