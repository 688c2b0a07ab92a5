#include "show/web/Json.h"

#include "show/Show.h"

#include <algorithm>
#include <cstdio>

namespace vyr
{
namespace
{
// Bytes that JSON can't hold as they are; all others are UTF-8 and stay.
std::string Escaped(char c)
{
    if (c == '"' || c == '\\')
        return {'\\', c};
    if (static_cast<unsigned char>(c) >= 0x20)
        return {c};
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", unsigned(c));
    return text;
}

std::string ToJson(const std::string &text)
{
    std::string json = "\"";
    for (char c : text)
        json += Escaped(c);
    return json + '"';
}

std::string ToJson(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

std::string ToJson(const std::vector<std::string> &texts)
{
    std::string json;
    for (const std::string &text : texts)
        json += (json.empty() ? "" : ",") + ToJson(text);
    return "[" + json + "]";
}

std::string ChoicesToJson(const cShowDescription &description)
{
    std::string json;
    for (const auto &choice : description.mChoices) {
        const auto &tracks = description.mTracks;
        const auto track = std::find(tracks.begin(), tracks.end(), choice.mTrack) - tracks.begin();
        json += (json.empty() ? "" : ",") + std::string("{\"track\":") + std::to_string(track) +
                ",\"files\":" + ToJson(choice.mFiles) + "}";
    }
    return "[" + json + "]";
}
} // namespace

std::string ToJson(const cShowDescription &description)
{
    return "{\"title\":" + ToJson(description.mTitle) + ",\"music\":" + ToJson(description.mMusic) +
           ",\"rowsPerSecond\":" + ToJson(description.mRowsPerSecond) +
           ",\"lastRow\":" + ToJson(description.mLastRow) +
           ",\"tracks\":" + ToJson(description.mTracks) +
           ",\"files\":" + ToJson(description.mFiles) +
           ",\"choices\":" + ChoicesToJson(description) + "}";
}
} // namespace vyr
