#include "engine/BitmapFont.h"

#include "engine/BitmapFontLimits.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <tinyxml.h>

#include <cstdio>

namespace vyr
{
namespace
{
const int describedCodes = 256; // present from the start, whatever the description lists

void PrintLine(const std::string &line)
{
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

/// An integer of `Record` that an attribute is stored in.
template <typename Record>
struct tField
{
    const char *mName;
    int Record::*mMember;
};

template <typename Record, size_t Count>
void Store(Record &record, const tField<Record> (&fields)[Count], const TiXmlAttribute &attribute)
{
    for (const tField<Record> &field : fields)
        if (attribute.NameTStr() == field.mName)
            record.*field.mMember = attribute.IntValue();
}

const tField<cBitmapFont::CharInfo> glyphFields[] = {
    {"x", &cBitmapFont::CharInfo::x},
    {"y", &cBitmapFont::CharInfo::y},
    {"width", &cBitmapFont::CharInfo::width},
    {"height", &cBitmapFont::CharInfo::height},
    {"xoffset", &cBitmapFont::CharInfo::xoffset},
    {"yoffset", &cBitmapFont::CharInfo::yoffset},
    {"xadvance", &cBitmapFont::CharInfo::xadvance}};

// The id selects the record that the attributes after it go to; generators write it first.
void ReadCharacter(std::map<int, cBitmapFont::CharInfo> &characters, const TiXmlElement &element)
{
    cBitmapFont::CharInfo *selected = nullptr;
    for (auto *attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
        if (attribute->NameTStr() == "id") {
            const int id = attribute->IntValue();
            selected = &characters[id];
            selected->id = id;
        } else if (selected) {
            Store(*selected, glyphFields, *attribute);
        }
    }
}

// Stored when the amount is met, so it has to come after first and second.
void ReadKerning(std::map<int, cBitmapFont::CharInfo> &characters, const TiXmlElement &element)
{
    int first = 0, second = 0;
    for (auto *attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
        if (attribute->NameTStr() == "first")
            first = attribute->IntValue();
        else if (attribute->NameTStr() == "second")
            second = attribute->IntValue();
        else if (attribute->NameTStr() == "amount")
            characters[first].kerning[second] = attribute->IntValue();
    }
}
} // namespace

cBitmapFont::cBitmapFont(const std::string &path) : mFilename(path)
{
    for (int code = 0; code < describedCodes; code++)
        mChars[code] = CharInfo();

    TiXmlDocument document;
    const bool isLoaded =
        IsFontDescriptionWithinLimits(path) && document.LoadFile(path, TIXML_DEFAULT_ENCODING);
    TiXmlElement *root = isLoaded ? document.FirstChildElement() : nullptr;
    if (!root) {
        PrintLine("ERROR: Font not found!");
        return;
    }
    if (!root->FirstChild())
        return;
    ParseNode(root->FirstChild());

    const std::string page = "data/" + mPageFile;
    const int texture = tSingleton<cTextureManager>::GetSingleton().LoadTexture(page, true);
    if (texture == -1) {
        PrintLine("Error: Could not load bitmap font '" + page + "'");
        return;
    }
    TakePage(texture);
    PrintLine("Font loaded successfully!");
}

// Destroying the record frees its pixels: the copy comes first. A page that another font has taken
// before has none left.
void cBitmapFont::TakePage(int texture)
{
    auto &textures = tSingleton<cTextureManager>::GetSingleton();
    const cTextureManager::cTexture &record = textures.GetTexture(texture);
    if (record.mPixels) {
        const size_t pixels = size_t(record.mSize.x) * size_t(record.mSize.y);
        mPagePixels.assign(record.mPixels, record.mPixels + pixels * size_t(record.mComponents));
    }
    textures.DestroyTexture(static_cast<unsigned int>(texture)); // contract: see DestroyTexture
}

// An element before its children, then the next sibling.
void cBitmapFont::ParseNode(TiXmlNode *node)
{
    while (node) {
        if (TiXmlElement *element = node->ToElement()) {
            HandleElement(element);
            if (element->FirstChild())
                ParseNode(element->FirstChild());
        }
        node = node->Parent()->IterateChildren(node);
    }
}

// Elements are known by their names, wherever they stand.
void cBitmapFont::HandleElement(TiXmlElement *element)
{
    static const tField<cBitmapFont> commonFields[] = {{"scaleW", &cBitmapFont::mScaleW},
                                                       {"scaleH", &cBitmapFont::mScaleH},
                                                       {"lineHeight", &cBitmapFont::mLineHeight},
                                                       {"base", &cBitmapFont::mBase}};
    static const tField<cBitmapFont> charsFields[] = {{"count", &cBitmapFont::mCount}};

    const std::string name = element->Value();
    if (name == "char")
        return ReadCharacter(mChars, *element);
    if (name == "kerning")
        return ReadKerning(mChars, *element);
    for (auto *attribute = element->FirstAttribute(); attribute; attribute = attribute->Next()) {
        if (name == "common")
            Store(*this, commonFields, *attribute);
        else if (name == "chars")
            Store(*this, charsFields, *attribute);
        else if (name == "page" && attribute->NameTStr() == "file")
            mPageFile = attribute->Value(); // of several pages, the last
    }
}
} // namespace vyr
