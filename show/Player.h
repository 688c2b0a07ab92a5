#pragma once

namespace vyr
{
/// The program that plays a show: `main` of the one that stands in a show's folder beside its
/// show.so, and calls this. Plays full-screen until the show's end or Escape; options choose a
/// window, another beginning, silence (--help lists them). The working directory becomes the
/// show's folder. Returns the exit status: 0, 1 when something cannot be opened or drawn (one line
/// on standard error), 2 when it is misused.
int PlayShow(int argc, char **argv);
} // namespace vyr
