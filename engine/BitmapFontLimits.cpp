#include "engine/BitmapFontLimits.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vyr
{
namespace
{
const size_t largestFile = size_t(16) << 20; // bytes: ten times what the largest real fonts have
const int deepestLevel = 64;                 // real descriptions have four
const int mostAttributes = 256;              // real elements have thirteen

/// What lies between a < and its >.
struct cTag
{
    size_t mEnd; ///< after the >
    int mAttributes;
    bool mIsClosed; ///< ends with />
};

// A > or a / within quotes is part of a value.
cTag ReadTag(const std::string &xml, size_t start)
{
    cTag tag = {xml.size(), 0, false};
    char quote = 0;
    for (size_t i = start; i < xml.size(); i++) {
        if (quote)
            quote = xml[i] == quote ? 0 : quote;
        else if (xml[i] == '"' || xml[i] == '\'')
            quote = xml[i];
        else if (xml[i] == '=')
            tag.mAttributes++;
        else if (xml[i] == '>')
            return {i + 1, tag.mAttributes, xml[i - 1] == '/'};
    }
    return tag;
}

size_t Behind(const std::string &xml, size_t start, const std::string &end)
{
    const size_t found = xml.find(end, start);
    return found == std::string::npos ? xml.size() : found + end.size();
}

bool IsAt(const std::string &xml, size_t place, const std::string &text)
{
    return xml.compare(place, text.size(), text) == 0;
}

bool IsElement(const std::string &xml, size_t start)
{
    const auto first = start + 1 < xml.size() ? static_cast<unsigned char>(xml[start + 1]) : ' ';
    return std::isalpha(first) || first == '_' || first >= 127;
}

// Of a UTF-8 character, as its first byte announces it.
size_t CharacterLength(unsigned char first)
{
    return first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
}

// Whether the last character is cut short. The reader takes carriage returns out first: they do not
// count.
bool EndsWithinACharacter(const std::string &xml)
{
    size_t behind = 0;
    for (auto byte = xml.rbegin(); byte != xml.rend() && behind < 3; ++byte) {
        if (CharacterLength(static_cast<unsigned char>(*byte)) > behind + 1)
            return true;
        behind += *byte == '\r' ? 0 : 1;
    }
    return false;
}

bool IsShapeWithinLimits(const std::string &xml)
{
    int level = 0;
    size_t i = xml.find('<');
    while (i != std::string::npos) {
        if (IsAt(xml, i, "<!--")) {
            i = Behind(xml, i, "-->");
        } else if (IsAt(xml, i, "<![CDATA[")) {
            i = Behind(xml, i, "]]>");
        } else if (IsElement(xml, i)) {
            const cTag tag = ReadTag(xml, i);
            level += tag.mIsClosed ? 0 : 1;
            if (level > deepestLevel || tag.mAttributes > mostAttributes)
                return false;
            i = tag.mEnd;
        } else {
            if (IsAt(xml, i, "</") && level > 0) // a stray one closes nothing
                level--;
            i = Behind(xml, i, ">");
        }
        i = xml.find('<', i);
    }
    return true;
}
} // namespace

bool IsFontDescriptionWithinLimits(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) ||
        std::filesystem::file_size(path, error) > largestFile)
        return false;
    std::ifstream file(path, std::ios::binary);
    const std::string xml{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return !EndsWithinACharacter(xml) && IsShapeWithinLimits(xml);
}
} // namespace vyr
