#include "tools/check/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace check
{
namespace
{
const int binCount = 256;
using tMask = std::vector<uint8_t>;
using tLuminance = std::vector<float>; // 0 to 1

/// An image that is being measured.
struct cPicture
{
    const uint8_t *mPixels;
    int mWidth, mHeight;

    size_t Size() const { return size_t(mWidth) * size_t(mHeight); }
};

// Light that a display gives for each of the 256 levels.
std::array<float, 256> MakeLinear()
{
    std::array<float, 256> table{};
    for (size_t i = 0; i < table.size(); i++) {
        const double level = double(i) / 255.0;
        table[i] = float(level <= 0.04045 ? level / 12.92 : std::pow((level + 0.055) / 1.055, 2.4));
    }
    return table;
}

// Blended as the show's framebuffer does: on levels, not on light.
tLuminance LayOver(const cPicture &picture, int background)
{
    static const std::array<float, 256> linear = MakeLinear();
    const float weights[] = {0.2126f, 0.7152f, 0.0722f};
    tLuminance luminance(picture.Size());
    for (size_t i = 0; i < luminance.size(); i++) {
        const uint8_t *p = picture.mPixels + 4 * i;
        for (size_t channel = 0; channel < 3; channel++) {
            const int level = (p[channel] * p[3] + background * (255 - p[3]) + 127) / 255;
            luminance[i] += weights[channel] * linear[size_t(level)];
        }
    }
    return luminance;
}

// Grows a mask along one axis: `count` lines of `length` pixels, `step` apart.
void GrowLine(const uint8_t *from, uint8_t *to, int length, size_t step)
{
    int last = -kRingPixels - 1;
    for (int i = 0; i < length; i++) {
        last = from[size_t(i) * step] ? i : last;
        to[size_t(i) * step] = uint8_t(i - last <= kRingPixels);
    }
    last = length + kRingPixels;
    for (int i = length - 1; i >= 0; i--) {
        last = from[size_t(i) * step] ? i : last;
        to[size_t(i) * step] |= uint8_t(last - i <= kRingPixels);
    }
}

// Everything within kRingPixels of the mask, across and down.
tMask Grow(const tMask &mask, const cPicture &picture)
{
    const auto width = size_t(picture.mWidth);
    tMask across(mask.size()), grown(mask.size());
    for (size_t y = 0; y < size_t(picture.mHeight); y++)
        GrowLine(mask.data() + y * width, across.data() + y * width, picture.mWidth, 1);
    for (size_t x = 0; x < width; x++)
        GrowLine(across.data() + x, grown.data() + x, picture.mHeight, width);
    return grown;
}

// What is drawn at all, and a little around it.
tMask InkArea(const cPicture &picture)
{
    tMask ink(picture.Size());
    for (size_t i = 0; i < ink.size(); i++)
        ink[i] = picture.mPixels[4 * i + 3] >= 128;
    return Grow(ink, picture);
}

// The eye distinguishes dark tones better than linear light does: bins on its cube root.
size_t Bin(float luminance)
{
    return std::min(size_t(std::cbrt(luminance) * float(binCount)), size_t(binCount - 1));
}

// The bin above which the bright class begins (Otsu): where the classes lie farthest apart.
size_t Threshold(const tLuminance &luminance, const tMask &area)
{
    std::array<double, binCount> counts{};
    for (size_t i = 0; i < area.size(); i++)
        counts[Bin(luminance[i])] += area[i];
    double total = 0.0, sum = 0.0;
    for (size_t i = 0; i < counts.size(); i++) {
        total += counts[i];
        sum += counts[i] * double(i);
    }
    double below = 0.0, sumBelow = 0.0, best = -1.0;
    size_t threshold = 0;
    for (size_t i = 0; i + 1 < counts.size(); i++) {
        below += counts[i];
        sumBelow += counts[i] * double(i);
        const double above = total - below;
        if (below == 0.0 || above == 0.0)
            continue;
        const double distance = sumBelow / below - (sum - sumBelow) / above;
        const double spread = below * above * distance * distance;
        if (spread > best) {
            best = spread;
            threshold = i;
        }
    }
    return threshold;
}

float Median(const tLuminance &luminance, const tMask &mask)
{
    std::vector<float> values;
    for (size_t i = 0; i < mask.size(); i++)
        if (mask[i])
            values.push_back(luminance[i]);
    if (values.empty())
        return 0.0f;
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double Ratio(float a, float b)
{
    return (double(std::max(a, b)) + 0.05) / (double(std::min(a, b)) + 0.05);
}

// The letters: the bright class of `luminance`, or the dark one.
tMask Letters(const tLuminance &luminance, const tMask &area, bool isBright)
{
    const size_t threshold = Threshold(luminance, area);
    tMask letters(area.size());
    for (size_t i = 0; i < area.size(); i++)
        letters[i] = area[i] && (Bin(luminance[i]) > threshold) == isBright;
    return letters;
}

tMask Ring(const tMask &letters, const cPicture &picture)
{
    tMask ring = Grow(letters, picture);
    for (size_t i = 0; i < ring.size(); i++)
        ring[i] = ring[i] && !letters[i];
    return ring;
}
} // namespace

double LetterContrast(const uint8_t *rgba, int width, int height)
{
    const cPicture picture{rgba, width, height};
    const tLuminance overBlack = LayOver(picture, 0), overWhite = LayOver(picture, 255);
    const tMask area = InkArea(picture);
    double best = 1.0;
    for (bool isBright : {true, false}) {
        const tMask letters = Letters(isBright ? overBlack : overWhite, area, isBright);
        const tMask ring = Ring(letters, picture);
        const bool isThere = std::count(letters.begin(), letters.end(), 1) > 0 &&
                             std::count(ring.begin(), ring.end(), 1) > 0;
        const double black = Ratio(Median(overBlack, letters), Median(overBlack, ring));
        const double white = Ratio(Median(overWhite, letters), Median(overWhite, ring));
        if (isThere)
            best = std::max(best, std::min(black, white));
    }
    return best;
}
} // namespace check
