#pragma once

namespace record
{
/// From here on SIGINT, SIGHUP and SIGTERM only set a flag: the recording ends in order, after the
/// current frame. A second Ctrl-C ends the program at once.
void WatchForInterrupt();
bool IsInterrupted();
} // namespace record
