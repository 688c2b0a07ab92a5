#pragma once

#include "tools/timeline/Text.h"

#include <string>

namespace timeline
{
/// What is different between two states of one text, as a unified diff of three lines of context
/// ("--- FILE", "+++ FILE", "@@ ..."), as `patch` reads it. Empty where nothing is.
std::string UnifiedDiff(const std::string &file, const cText &before, const cText &after);
} // namespace timeline
