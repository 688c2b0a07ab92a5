#pragma once

#include "tools/check/Findings.h"

namespace check
{
/// The show's two shader programs, built by the engine: both stages compile, link, and use every
/// uniform that the show sets. Faults carry the driver's own log.
void CheckShaders(cFindings &findings);
} // namespace check
