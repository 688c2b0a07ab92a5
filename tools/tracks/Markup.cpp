#include "tools/tracks/Markup.h"

namespace tracks
{
std::string EscapeMarkup(std::string_view text)
{
    std::string escaped;
    for (char c : text) {
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else
            escaped += c;
    }
    return escaped;
}
} // namespace tracks
