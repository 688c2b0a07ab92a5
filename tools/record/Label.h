#pragma once

#include "tools/record/Picture.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace record
{
/// Writes lines of text into pictures.
class cLabelFont
{
public:
    cLabelFont(); ///< throws cFailure when the font (DejaVu Sans) is not installed
    ~cLabelFont();
    cLabelFont(const cLabelFont &) = delete;
    cLabelFont &operator=(const cLabelFont &) = delete;

    /// Writes `text` (ASCII) with letters for a line of `height` pixels, its baseline starting at
    /// (x, baseline). What lies outside the picture is left out.
    void Write(cPicture &picture, const std::string &text, int x, int baseline, float height,
               const std::array<uint8_t, 3> &color) const;

private:
    struct cFont;
    std::unique_ptr<cFont> mFont;
};
} // namespace record
