#pragma once

#include <string>

namespace vyr
{
struct cShowDescription;

/// `description` as a page reads it: {"title", "music", "rowsPerSecond", "lastRow", "tracks": [],
/// "files": [], "choices": [{"track": its place in tracks, "files": []}]}.
std::string ToJson(const cShowDescription &description);
} // namespace vyr
