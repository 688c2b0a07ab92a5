#include "tools/record/Arguments.h"

#include <iterator>
#include <sstream>

namespace record
{
tArguments Words(const std::string &text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

tArguments operator+(tArguments arguments, const tArguments &more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

tArguments Ffmpeg() { return Words("ffmpeg -hide_banner -nostdin -loglevel error -y"); }

tArguments StrictFfmpeg() { return Ffmpeg() + tArguments{"-xerror"}; }
} // namespace record
