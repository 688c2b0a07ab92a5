#pragma once

#include <string>
#include <vector>

namespace record
{
/// The words of a command line, the program's name first.
using tArguments = std::vector<std::string>;

/// The words of `text`, which stand between blanks.
tArguments Words(const std::string &text);
tArguments operator+(tArguments arguments, const tArguments &more);

/// How each call of ffmpeg begins: quiet but for errors, nothing asked, its result replaced.
tArguments Ffmpeg();
/// The same for a call in which any error is the end, as when what it wrote last finds no room:
/// left to itself it says so and ends with status 0. Not for music, whose damaged frames may be
/// left out.
tArguments StrictFfmpeg();
} // namespace record
