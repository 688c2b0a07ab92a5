#pragma once

#include <cstdint>

namespace check
{
/// How well the letters of a lyric image stand out, whatever lies under it: the ratio of WCAG 2, 1
/// to 21.
///
/// The image (RGBA, rows top first) is laid over black and over white, as the show blends it. Over
/// one of them its pixels fall into a bright and a dark class (Otsu's threshold on relative
/// luminance, over the pixels near something opaque). The letters are one class; the ring is every
/// other pixel within `kRingPixels` of them. The ratio is (brighter + 0.05) / (darker + 0.05) of
/// the medians of letters and ring, and of its values over black and white the lower one counts.
/// Bright letters are found over black, dark ones over white; the reading that does better is the
/// image's.
double LetterContrast(const uint8_t *rgba, int width, int height);

inline constexpr int kRingPixels = 6;
} // namespace check
