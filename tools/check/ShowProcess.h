#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

#include <optional>

/// A show's code, run in a process of its own: this program again, which opens the show of the
/// working directory and says on a pipe how far it got. A show that crashes, hangs or leaves by
/// exit takes that process along, not the check.
namespace check
{
/// The first word of such a process's command line; RunShowProcess takes it from there.
inline constexpr const char *kShowProcess = "--show-process";

/// Opens the show and asks for its description. Nothing, and a fault, when it has none.
std::optional<vyr::cShowDescription> DescribeShow(cFindings &findings);

/// Loads the show and draws a small frame every beat. Faults are what it throws, where it stops,
/// OpenGL errors, and uniforms that it sets and its shaders do not use.
void CheckDrawing(cFindings &findings);

/// The process itself. `what` is what it has to do, as the two above have written it.
int RunShowProcess(const char *what);
} // namespace check
