#pragma once

#include "engine/Color.h"
#include "engine/Vector2.h"

#include <map>
#include <string>
#include <vector>

class TiXmlElement;
class TiXmlNode;

namespace vyr
{
/// A bitmap font: a picture that holds all glyphs (the page) and an XML description of where each
/// one lies; measures text, wraps it and draws it into a texture.
///
/// Text is bytes. Each byte, as a signed number, is the code of a character: bytes 128 to 255 ask
/// for the codes -128 to -1, and a description that wants to be found there lists those. Every code
/// asked for and not described is remembered as a character without size.
///
/// Kerning is looked up under the later character: `first` of a pair in the description is the
/// character being drawn, `second` the one before it. Many generators write it the other way round.
///
/// The texture manager must exist, and all calls belong to the thread of the OpenGL context; the
/// three that measure need neither. docs/formats.md describes the file.
class cBitmapFont
{
public:
    /// How Wrap breaks a line. Any value but 0 breaks at characters.
    enum MODE : int
    {
        WRAP_WORD = 0, ///< at the last space that fits
        WRAP_CHAR = 1  ///< at the first character that does not fit
    };

    /// Where a line of the text image starts. Any other value goes on where the line before ended.
    enum HALIGN : int
    {
        HALIGN_LEFT = 0,
        HALIGN_CENTER = 1,
        HALIGN_RIGHT = 2 ///< ends at the image's *height*: make the image square to align right
    };

    /// Accepted and not used (contract): text starts at the top of its image.
    enum VALIGN : int
    {
        VALIGN_TOP = 0,
        VALIGN_CENTER = 1,
        VALIGN_BOTTOM = 2
    };

    /// One character, as described; lengths in pixels.
    struct CharInfo
    {
        int id = 0;
        int x = 0, y = 0;             ///< top-left corner of its rectangle on the page
        int width = 0, height = 0;    ///< of the rectangle; without width there is no glyph
        int xoffset = 0, yoffset = 0; ///< from the pen and the line's top to the rectangle
        int xadvance = 0;             ///< how far the pen moves
        std::map<int, int> kerning;   ///< extra advance, by the code of the character *before* it
    };

    /// Reads the description at `path`, relative to the working directory, and its page from under
    /// data/, wherever the description lies. One line on standard output reports the result:
    ///
    ///     Font loaded successfully!
    ///     ERROR: Font not found!                               missing or broken description
    ///     Error: Could not load bitmap font 'data/PAGE'        the page can't be read
    ///
    /// (none when the root element is empty). A font that failed can be used: it draws nothing.
    ///
    /// The page passes through the texture manager, and its record is then destroyed: that deletes
    /// the OpenGL texture whose *name* is the page's id, most often that of the picture loaded just
    /// before. So make fonts before all other textures. It also leaves the record without pixels:
    /// a second font on the same page draws nothing. The font keeps a copy of its own.
    explicit cBitmapFont(const std::string &path);

    /// The two steps of reading: `node` with its following siblings and all below them, and one
    /// element. The constructor alone calls them.
    void ParseNode(TiXmlNode *node);
    void HandleElement(TiXmlElement *element);

    const std::string &GetFilename() const { return mFilename; } ///< of the description
    int GetPixelSize() const { return mLineHeight; } ///< from line to line; 0 when not described

    // Measuring ----------------------------------------------------------------------------------

    /// Width of `text` in pixels: advances and kerning; a newline is a character like any other.
    int GetStringWidth(const std::string &text);

    /// Height in pixels of `text` laid out within `maximumWidth` pixels, one line at least. The
    /// character that ends a line, newline or too wide, is not measured again on the next one, so
    /// a text that ends with one has another, empty line.
    int GetStringHeight(const std::string &text, unsigned int maximumWidth);

    /// How many bytes of `text` make its first line: cut there, and call again with the rest.
    /// A newline belongs to the line that it ends; so does "\n" spelled as backslash and n. A
    /// backslash works on: after one, every later n ends a line. In WRAP_WORD mode a line that is
    /// too long ends before its last space (which is then the first byte of the rest), without a
    /// space before the character that does not fit.
    /// 0 when not even the first character fits: the caller must move on by itself then.
    size_t Wrap(const std::string &text, unsigned int maximumWidth, MODE mode);

    // Drawing ------------------------------------------------------------------------------------

    /// Draws `lines`, one below the other, into a new texture of `size` pixels and gives its id,
    /// which is the caller's; -1 without lines. A size that OpenGL can't hold (negative, not a
    /// number, too large) makes an empty texture of 0 by 0.
    ///
    /// The texture holds coverage, 0 to 1, as its alpha, and no colour of its own: drawn, it is the
    /// current colour, and the current alpha times the coverage. With the blend function that
    /// `InitGL` sets (GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA) the letters have the edges that the
    /// font has, and what is around them stays; a blend function that leaves alpha out draws the
    /// whole rectangle. A shader reads the coverage as alpha. `color` is accepted and not used.
    ///
    /// Spaces at the start of a left-aligned line are skipped. A character without a glyph (a space
    /// of width 0 too) prints "BitmapFont: WARNING, unable to draw character from string: LINE" and
    /// moves nothing. Nothing is clipped by row: what leaves the image at one side enters the
    /// next row at the other.
    int RenderTextToCache(const std::vector<std::string> &lines, const cColor &color,
                          const cVector2 &size, HALIGN halign, VALIGN valign);

protected:
    struct cImage;
    class cCharacters;

    void TakePage(int texture);
    static int StartOfLine(int lineWidth, const cVector2 &size, HALIGN halign, int pen);
    static int MeasureLine(const std::string &line, cCharacters &characters);
    int RenderLine(const std::string &line, int pen, int lineTop, cCharacters &characters,
                   cImage &image);
    void RenderGlyph(const CharInfo &character, int pen, int base, int lineTop,
                     cImage &image) const;

    std::string mFilename;
    std::string mPageFile;                  ///< under data/
    std::vector<unsigned char> mPagePixels; ///< as decoded; empty without a page
    int mScaleW = 0, mScaleH = 0;           ///< of the page, as described
    int mLineHeight = 0;
    int mBase = 0;  ///< from a line's top to its base line
    int mCount = 0; ///< characters announced; not used
    std::map<int, CharInfo> mChars;
};
} // namespace vyr
