#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

#include <string>

namespace check
{
/// Images are at most this wide and high: what the graphics of OpenGL 2.1's time all take, though
/// the standard itself promises 64 only.
inline constexpr int kMaximumImageSize = 2048;

/// All images that the show chooses from or has in its list of files. Their pixels are kept in the
/// texture manager.
void CheckImages(const vyr::cShowDescription &show, cFindings &findings);

/// One image file that the show loads as a texture; `place` is who asks for it.
void CheckImage(const std::string &path, const std::string &place, cFindings &findings);
} // namespace check
