#pragma once

namespace record
{
/// From here on Ctrl-C, a closed terminal and a polite kill only leave a note: the recording ends
/// after the frame at hand, in order. A second Ctrl-C ends the program at once.
void WatchForInterrupt();
bool IsInterrupted();
} // namespace record
