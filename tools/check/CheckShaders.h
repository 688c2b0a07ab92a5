#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

namespace check
{
/// The show's shaders, built by the engine: each fragment shader with the vertex shader of the same
/// name, or else the first one that the show has. Both stages compile and link. Faults carry the
/// driver's own log.
void CheckShaders(const vyr::cShowDescription &show, cFindings &findings);
} // namespace check
