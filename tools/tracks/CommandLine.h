#pragma once

namespace tracks
{
/// All of vyr-tracks: runs the command that the arguments name, and answers the exit status. Usage
/// and faults are printed on standard error.
int RunCommandLine(int argc, char **argv);
} // namespace tracks
