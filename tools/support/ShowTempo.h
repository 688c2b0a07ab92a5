#pragma once

#include "show/Tempo.h"

#include <filesystem>

namespace tools
{
/// The tempo of the show in `folder`. It is the only place that the tools have it from where no
/// timeline says it.
cTempo TempoOfShow(const std::filesystem::path &folder);
} // namespace tools
