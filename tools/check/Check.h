#pragma once

#include "tools/check/Findings.h"

namespace check
{
/// Everything, in the order of the show's start: music, tracks, shaders, images, objects, and how
/// they go together. The show's folder is the working directory. May be called once a process.
cFindings CheckShow();
} // namespace check
