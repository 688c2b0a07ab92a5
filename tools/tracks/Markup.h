#pragma once

#include <string>
#include <string_view>

namespace tracks
{
/// `text` with `&`, `<` and `>` as SVG and WebVTT want them where they are no markup.
std::string EscapeMarkup(std::string_view text);
} // namespace tracks
