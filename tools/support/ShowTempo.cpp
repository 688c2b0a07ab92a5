#include "tools/support/ShowTempo.h"

#include "demo/Show.h"

namespace tools
{
// All folders are of one show.
cTempo TempoOfShow(const std::filesystem::path &) { return {demo::kRowsPerSecond}; }
} // namespace tools
