#include "tools/record/Picture.h"

#include <stb_image_write.h>
#include <xxhash.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace record
{
namespace
{
/// The pixels that one shrunk pixel covers along one axis, the outer two in part.
struct cSpan
{
    int mFirst, mEnd;
    double mFirstWeight, mLastWeight;

    cSpan(int index, int size, int from)
    {
        const double scale = double(from) / size;
        const double begin = index * scale, end = std::min<double>(from, (index + 1) * scale);
        mFirst = std::min(from - 1, int(begin));
        mEnd = std::max(mFirst + 1, std::min(from, int(std::ceil(end))));
        mFirstWeight = std::min(end, mFirst + 1.0) - begin;
        mLastWeight = end - (mEnd - 1);
    }

    double Weight(int i) const
    {
        return i == mFirst ? mFirstWeight : i == mEnd - 1 ? mLastWeight : 1.0;
    }
};

void AverageArea(const cPicture &picture, const cSpan &across, const cSpan &down, uint8_t *out)
{
    double sums[4] = {}, weights = 0.0;
    for (int y = down.mFirst; y < down.mEnd; y++) {
        const uint8_t *row = picture.Row(y);
        for (int x = across.mFirst; x < across.mEnd; x++) {
            const double weight = across.Weight(x) * down.Weight(y);
            weights += weight;
            for (int i = 0; i < 4; i++)
                sums[i] += weight * row[4 * x + i];
        }
    }
    for (int i = 0; i < 4; i++)
        out[i] = uint8_t(std::lround(sums[i] / weights));
}

struct cPngFile
{
    FILE *mFile;
    bool mIsGood = true;

    static void Write(void *context, void *data, int size)
    {
        auto *self = static_cast<cPngFile *>(context);
        self->mIsGood &= std::fwrite(data, 1, size_t(size), self->mFile) == size_t(size);
    }
};

std::vector<uint8_t> WithoutAlpha(const cPicture &picture)
{
    std::vector<uint8_t> rgb;
    rgb.reserve(picture.mBytes.size() / 4 * 3);
    for (size_t i = 0; i < picture.mBytes.size(); i += 4)
        rgb.insert(rgb.end(), &picture.mBytes[i], &picture.mBytes[i] + 3);
    return rgb;
}
} // namespace

cPicture Shrink(const cPicture &picture, int width, int height)
{
    cPicture small(width, height);
    for (int y = 0; y < height; y++) {
        const cSpan down(y, height, picture.mHeight);
        for (int x = 0; x < width; x++)
            AverageArea(picture, cSpan(x, width, picture.mWidth), down, small.Row(y) + 4 * x);
    }
    return small;
}

bool WritePng(const std::string &path, const cPicture &picture)
{
    cPngFile png{std::fopen(path.c_str(), "wb")};
    if (!png.mFile)
        return false;
    const std::vector<uint8_t> rgb = WithoutAlpha(picture);
    const bool isDrawn = stbi_write_png_to_func(cPngFile::Write, &png, picture.mWidth,
                                                picture.mHeight, 3, rgb.data(), 3 * picture.mWidth);
    const bool isClosed = std::fclose(png.mFile) == 0;
    return isDrawn && isClosed && png.mIsGood;
}

std::string HashPixels(const cPicture &picture)
{
    const XXH128_hash_t hash = XXH3_128bits(picture.mBytes.data(), picture.mBytes.size());
    char text[33];
    std::snprintf(text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>(hash.high64),
                  static_cast<unsigned long long>(hash.low64));
    return text;
}
} // namespace record
