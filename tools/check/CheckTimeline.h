#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

namespace check
{
/// The timeline at `path`: that it can be read, counts time as the show does, and declares the
/// tracks that the show has. That its keys are within the show is the tracks' own check.
void CheckTimeline(const vyr::cShowDescription &show, const std::string &path, cFindings &findings);
} // namespace check
