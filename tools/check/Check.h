#pragma once

#include "tools/check/Findings.h"

#include <string>

namespace check
{
/// Everything about the show in the working directory. First what needs none of its code: its
/// library and its tracks' files. Then, by its description: music, timeline, tracks, shaders,
/// images, objects, and how they go together. At last, where all that is in order, whether it loads
/// and draws. Its code runs in processes of its own. `timeline` is the text; empty for the one that
/// the folder's build has noted, where it has. May be called once a process.
cFindings CheckShow(const std::string &timeline);
} // namespace check
