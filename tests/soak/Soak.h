#pragma once

#include <chrono>
#include <filesystem>

/// What the soak's parts share. Each part plays the show as a process of its own, on the display
/// that it is started on, and prints a line a rule.
namespace soak
{
using tClock = std::chrono::steady_clock;

void Sleep(double seconds);
double SecondsSince(tClock::time_point start);

/// Prints `what` as kept or broken, and answers `isGood`.
bool Report(bool isGood, const char *what);

/// One whole play of the folder `show`, in a context that reports errors: it ends by itself with
/// status 0, without an OpenGL error, and its open files stay as many as after 20 seconds. With
/// `mayNotGrow` its memory stays within 1 % of what it was then; else its growth is only told,
/// since drivers keep the code that they compile on the way.
bool PlayWhole(const std::filesystem::path &show, bool mayNotGrow);

/// `count` plays, each ended with Escape at a random moment: status 0 within 100 ms.
bool PlayUntilEscape(const std::filesystem::path &show, int count);

/// A small show whose picture and sound both tell their time, played by the program in `show` under
/// a window manager (openbox); it is minimised, sent to another desktop, covered, and stopped, and
/// has to be in step again 0.2 s later.
bool PlayWithInterruptions(const std::filesystem::path &show);
} // namespace soak
