#pragma once

#include "engine/BitmapFont.h"

#include <string>

namespace test
{
/// Writes the description of a font, its elements in a generator's order.
class cFontBuilder
{
public:
    cFontBuilder &Common(const std::string &attributes);
    /// One character; `rectangle` is x, y, width, height in that order, "" for none.
    cFontBuilder &Char(int id, int advance, const std::string &rectangle = "",
                       const std::string &more = "");
    cFontBuilder &Kerning(int first, int second, int amount);

    /// The file; `page` is the name under data/.
    void Write(const std::string &path, const std::string &page) const;

private:
    std::string mCommon, mChars, mKernings;
};

/// A font whose description can be looked at.
class cOpenFont : public vyr::cBitmapFont
{
public:
    using cBitmapFont::cBitmapFont;

    using cBitmapFont::mBase;
    using cBitmapFont::mChars;
    using cBitmapFont::mCount;
    using cBitmapFont::mFilename;
    using cBitmapFont::mLineHeight;
    using cBitmapFont::mPageFile;
    using cBitmapFont::mPagePixels;
    using cBitmapFont::mScaleH;
    using cBitmapFont::mScaleW;
};
} // namespace test
