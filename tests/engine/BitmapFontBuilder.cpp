#include "tests/engine/BitmapFontBuilder.h"

#include "tests/support/TestFiles.h"

#include <sstream>

namespace test
{
namespace
{
std::string Attribute(const std::string &name, const std::string &value)
{
    return " " + name + "=\"" + value + "\"";
}

std::string Rectangle(const std::string &numbers)
{
    std::istringstream in(numbers);
    std::string attributes, number;
    for (const char *name : {"x", "y", "width", "height"})
        if (in >> number)
            attributes += Attribute(name, number);
    return attributes;
}
} // namespace

cFontBuilder &cFontBuilder::Common(const std::string &attributes)
{
    mCommon = attributes;
    return *this;
}

cFontBuilder &cFontBuilder::Char(int id, int advance, const std::string &rectangle,
                                 const std::string &more)
{
    mChars += "<char" + Attribute("id", std::to_string(id)) + Rectangle(rectangle) + " " + more +
              Attribute("xadvance", std::to_string(advance)) + "/>\n";
    return *this;
}

cFontBuilder &cFontBuilder::Kerning(int first, int second, int amount)
{
    mKernings += "<kerning" + Attribute("first", std::to_string(first)) +
                 Attribute("second", std::to_string(second)) +
                 Attribute("amount", std::to_string(amount)) + "/>\n";
    return *this;
}

void cFontBuilder::Write(const std::string &path, const std::string &page) const
{
    WriteFile(path, "<?xml version=\"1.0\"?>\n<font>\n<common " + mCommon + "/>\n<pages><page" +
                        Attribute("id", "0") + Attribute("file", page) + "/></pages>\n<chars>\n" +
                        mChars + "</chars>\n<kernings>\n" + mKernings + "</kernings>\n</font>\n");
}
} // namespace test
