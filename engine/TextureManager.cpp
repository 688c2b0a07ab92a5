#include "engine/TextureManager.h"

#include "base/Assert.h"
#include "base/Truncate.h"

#include <epoxy/gl.h>
#include <stb_image.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace vyr
{
namespace
{
struct cImage
{
    unsigned char *mPixels;
    int mWidth, mHeight, mComponents;

    size_t ByteCount() const { return size_t(mWidth) * size_t(mHeight) * size_t(mComponents); }
};

GLuint GenerateTexture()
{
    GLuint handle = 0;
    glGenTextures(1, &handle);
    glBindTexture(GL_TEXTURE_2D, handle);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    return handle;
}

// Bytes that OpenGL reads for an image of `channels` bytes a pixel, rows at its own alignment.
size_t UploadByteCount(const cImage &image, int channels)
{
    if (image.mWidth == 0 || image.mHeight == 0)
        return 0; // some formats hold pictures of no rows
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    const size_t row = size_t(image.mWidth) * size_t(channels);
    const size_t step = (row + size_t(alignment) - 1) / size_t(alignment) * size_t(alignment);
    return step * size_t(image.mHeight - 1) + row;
}

void Upload(const cImage &image, GLenum format, const unsigned char *pixels)
{
    glTexImage2D(GL_TEXTURE_2D, 0, image.mComponents, image.mWidth, image.mHeight, 0, format,
                 GL_UNSIGNED_BYTE, pixels);
}

// contract: images of one and two components go to OpenGL as if they had three, and rows are packed
// closely whatever the alignment: such pictures come out skewed; their author should save them
// with four. OpenGL then reads more than the decoder wrote, so it gets a copy padded with zeros.
void UploadImage(const cImage &image)
{
    const GLenum format = image.mComponents == 4 ? GL_RGBA : GL_RGB;
    const size_t needed = UploadByteCount(image, format == GL_RGBA ? 4 : 3);
    if (needed <= image.ByteCount()) {
        Upload(image, format, image.mPixels);
        return;
    }
    std::vector<unsigned char> padded(needed);
    std::memcpy(padded.data(), image.mPixels, image.ByteCount());
    Upload(image, format, padded.data());
}

unsigned char *CopyPixels(const cImage &image)
{
    auto *copy = static_cast<unsigned char *>(std::malloc(image.ByteCount()));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, image.mPixels, image.ByteCount());
    return copy;
}

void AllocateDepth(int width, int height)
{
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, width, height, 0, GL_DEPTH_COMPONENT,
                 GL_UNSIGNED_BYTE, nullptr);
}

void AllocateColor(int width, int height)
{
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
}
} // namespace

void cTextureManager::cTexture::UnlockSurface() const
{
    glBindTexture(GL_TEXTURE_2D, mHandle);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
}

int cTextureManager::FindTexture(const std::string &name) const
{
    for (size_t i = 0; i < mTextures.size(); i++)
        if (mTextures[i].mName == name)
            return int(i);
    return -1;
}

int cTextureManager::Append(const cTexture &texture)
{
    mTextures.push_back(texture);
    return int(mTextures.size()) - 1;
}

int cTextureManager::LoadTexture(std::string path, bool keepPixels)
{
    const int known = FindTexture(path);
    if (known >= 0)
        return known;

    cImage image = {};
    image.mPixels = stbi_load(path.c_str(), &image.mWidth, &image.mHeight, &image.mComponents, 0);
    if (!image.mPixels)
        return -1;

    cTexture texture;
    texture.mHandle = GenerateTexture();
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, float(GL_REPEAT));
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, float(GL_REPEAT));
    UploadImage(image);

    texture.mFromFile = true;
    texture.mName = std::move(path);
    texture.mSize = {float(image.mWidth), float(image.mHeight)};
    if (keepPixels) {
        texture.mPixels = CopyPixels(image);
        texture.mComponents = image.mComponents;
    }
    const int id = Append(texture);
    std::free(image.mPixels);
    return id;
}

int cTextureManager::CreateTexture(std::string name, int width, int height, bool allocate,
                                   bool depth)
{
    cTexture texture;
    texture.mName = std::move(name);
    texture.mHandle = GenerateTexture();
    if (allocate) {
        texture.mSize = {float(width), float(height)};
        const int storedWidth = TruncateToInt(double(texture.mSize.x));
        const int storedHeight = TruncateToInt(double(texture.mSize.y));
        depth ? AllocateDepth(storedWidth, storedHeight) : AllocateColor(storedWidth, storedHeight);
    }
    return Append(texture);
}

int cTextureManager::CreateTexture(unsigned char *pixels, int width, int height, int components)
{
    cTexture texture;
    texture.mHandle = GenerateTexture();
    texture.mSize = {float(width), float(height)};
    glTexImage2D(GL_TEXTURE_2D, 0, components, width, height, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels);
    return Append(texture);
}

void cTextureManager::ReloadTextures()
{
    const std::vector<cTexture> before = mTextures;
    mTextures.clear();
    for (const cTexture &texture : before)
        if (texture.mFromFile)
            LoadTexture(texture.mName, false);
}

bool cTextureManager::RefreshTexture(const std::string &path)
{
    const int id = FindTexture(path);
    if (id < 0)
        return true;
    cImage image = {};
    image.mPixels = stbi_load(path.c_str(), &image.mWidth, &image.mHeight, &image.mComponents, 0);
    if (!image.mPixels)
        return false;

    cTexture &texture = mTextures[size_t(id)];
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glBindTexture(GL_TEXTURE_2D, texture.mHandle);
    UploadImage(image);
    glBindTexture(GL_TEXTURE_2D, GLuint(bound));
    texture.mSize = {float(image.mWidth), float(image.mHeight)};
    std::free(texture.mPixels);
    texture.mPixels = nullptr;
    texture.mComponents = 0;
    std::free(image.mPixels);
    return true;
}

void cTextureManager::DestroyTexture(unsigned int id)
{
    glDeleteTextures(1, &id); // contract: the id is OpenGL's name here, not the record's handle
    if (id >= mTextures.size())
        return;
    cTexture &texture = mTextures[id];
    std::free(texture.mPixels);
    texture.mPixels = nullptr;
    texture.mComponents = 0;
}

void cTextureManager::BindTexture(int id) const
{
    VYR_ASSERT_AT("TextureManager", 175,
                  id >= 0 && id < int(mTextures.size()) &&
                      "cTextureManager::BindTexture(): ID is out of range: ");
    glBindTexture(GL_TEXTURE_2D, mTextures[size_t(id)].mHandle);
    glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, float(GL_MODULATE));
}

cTextureManager::cTexture &cTextureManager::GetTexture(int id)
{
    VYR_ASSERT_AT("TextureManager", 183,
                  id >= 0 && id < int(mTextures.size()) &&
                      "cTextureManager::GetTexture(): ID is out of range: ");
    return mTextures[size_t(id)];
}
} // namespace vyr
