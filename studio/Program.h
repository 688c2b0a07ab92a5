#pragma once

namespace studio
{
/// vyr-studio. Returns its exit status: 0, 1 when something can't be opened or a script fails (one
/// line on standard error), 2 when it is misused.
int RunStudio(int argc, char **argv);
} // namespace studio
