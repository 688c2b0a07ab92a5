// vyr-web-pictures DATA CACHE: the pictures of a show as lossless WebP.
//
// Every file under DATA that stb_image reads as a picture is encoded to CACHE/its path.webp, unless
// that is there and newer, and decoded again: its pixels have to be those of the file, bit by bit,
// also where they are transparent. Prints a line a picture: path, width, height, components.

#define STB_IMAGE_IMPLEMENTATION
#define STBI_FAILURE_USERMSG
#include <stb_image.h>
#include <webp/decode.h>
#include <webp/encode.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace
{
struct cPixels
{
    void operator()(unsigned char *pixels) const { std::free(pixels); }
};
using tPixels = std::unique_ptr<unsigned char, cPixels>;

struct cPicture
{
    fs::path mFile, mCached;
    std::string mName; ///< under the data
    int mWidth = 0, mHeight = 0, mComponents = 0;
};

// stb_image takes some files for pictures that are none.
bool IsOther(const fs::path &file)
{
    static const std::set<std::string> others = {".lwo", ".mp3", ".vs", ".fs",
                                                 ".fnt", ".txt", ".md", ".track"};
    return others.contains(file.extension().string());
}

std::vector<cPicture> FindPictures(const fs::path &data, const fs::path &cache)
{
    std::vector<cPicture> pictures;
    for (const auto &entry : fs::recursive_directory_iterator(data)) {
        if (!entry.is_regular_file() || IsOther(entry.path()))
            continue;
        cPicture picture{entry.path(), {}, fs::relative(entry.path(), data).string()};
        picture.mCached = cache / (picture.mName + ".webp");
        if (stbi_info(picture.mFile.c_str(), &picture.mWidth, &picture.mHeight,
                      &picture.mComponents))
            pictures.push_back(picture);
    }
    std::ranges::sort(pictures, {}, &cPicture::mName);
    return pictures;
}

bool IsCached(const cPicture &picture)
{
    std::error_code error;
    const auto cached = fs::last_write_time(picture.mCached, error);
    return !error && cached > fs::last_write_time(picture.mFile);
}

[[noreturn]] void Fail(const cPicture &picture, const std::string &reason)
{
    throw std::runtime_error(picture.mFile.string() + ": " + reason);
}

std::string Encode(const cPicture &picture, const unsigned char *rgba)
{
    WebPConfig config;
    WebPPicture frame;
    WebPMemoryWriter writer;
    WebPMemoryWriterInit(&writer);
    if (!WebPConfigInit(&config) || !WebPConfigLosslessPreset(&config, 7) ||
        !WebPPictureInit(&frame))
        Fail(picture, "another version of the WebP library");
    config.exact = 1; // colours under transparent pixels shine through where a texture is filtered
    frame.use_argb = 1;
    frame.width = picture.mWidth;
    frame.height = picture.mHeight;
    frame.writer = WebPMemoryWrite;
    frame.custom_ptr = &writer;
    const bool isDone =
        WebPPictureImportRGBA(&frame, rgba, 4 * picture.mWidth) && WebPEncode(&config, &frame);
    std::string bytes(reinterpret_cast<const char *>(writer.mem), isDone ? writer.size : 0);
    WebPMemoryWriterClear(&writer);
    WebPPictureFree(&frame);
    if (!isDone)
        Fail(picture, "not to be encoded, WebP's error " + std::to_string(frame.error_code));
    return bytes;
}

void Compare(const cPicture &picture, const unsigned char *rgba, const std::string &bytes)
{
    int width = 0, height = 0;
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.data());
    const tPixels decoded(WebPDecodeRGBA(data, bytes.size(), &width, &height));
    const size_t size = size_t(picture.mWidth) * size_t(picture.mHeight) * 4;
    if (!decoded || width != picture.mWidth || height != picture.mHeight ||
        std::memcmp(decoded.get(), rgba, size) != 0)
        Fail(picture, "its WebP has other pixels");
}

// Under another name first: what is cached is whole.
void Write(const cPicture &picture, const std::string &bytes)
{
    const fs::path unfinished = picture.mCached.string() + ".part";
    fs::create_directories(unfinished.parent_path());
    std::ofstream file(unfinished, std::ios::binary);
    file.write(bytes.data(), std::streamsize(bytes.size()));
    file.close();
    if (!file)
        Fail(picture, "can't write " + unfinished.string());
    fs::rename(unfinished, picture.mCached);
}

void Cache(const cPicture &picture)
{
    int width = 0, height = 0, components = 0;
    const tPixels rgba(stbi_load(picture.mFile.c_str(), &width, &height, &components, 4));
    if (!rgba)
        Fail(picture, stbi_failure_reason());
    const std::string bytes = Encode(picture, rgba.get());
    Compare(picture, rgba.get(), bytes);
    Write(picture, bytes);
}

void CacheAll(const std::vector<cPicture> &pictures)
{
    std::atomic<size_t> next = 0;
    std::atomic<bool> hasFailed = false;
    const auto work = [&] {
        for (size_t i = next++; i < pictures.size() && !hasFailed; i = next++) {
            try {
                if (!IsCached(pictures[i]))
                    Cache(pictures[i]);
            } catch (const std::exception &error) {
                std::fprintf(stderr, "vyr-web-pictures: %s\n", error.what());
                hasFailed = true;
            }
        }
    };
    {
        std::jthread other(work);
        work();
    }
    if (hasFailed)
        std::exit(1);
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: vyr-web-pictures DATA CACHE\n");
        return 2;
    }
    const auto pictures = FindPictures(argv[1], argv[2]);
    CacheAll(pictures);
    for (const cPicture &picture : pictures)
        std::printf("%s\t%d\t%d\t%d\n", picture.mName.c_str(), picture.mWidth, picture.mHeight,
                    picture.mComponents);
    return 0;
}
