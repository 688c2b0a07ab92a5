#pragma once

#include "engine/Vector2.h"

#include <string>
#include <vector>

namespace vyr
{
/// Owns every OpenGL texture and names each by a small number, its id: 0 for the first one made,
/// then upward, never reused; -1 is no texture.
///
/// One instance, held by tSingleton<cTextureManager>; all calls belong to the thread with the
/// OpenGL context. Making and destroying the manager, and a load that fails, need no context.
/// Nothing deletes the OpenGL textures at the end: the context's end releases them.
class cTextureManager
{
public:
    /// One texture. Copies share `mPixels`; destroying a record frees neither pixels nor texture.
    class cTexture
    {
    public:
        bool mFromFile = false; ///< made by LoadTexture: ReloadTextures loads it again
        std::string mName;      ///< the path or name it was made under
        cVector2 mSize;         ///< width and height in pixels
        unsigned int mHandle = 0;
        unsigned char *mPixels = nullptr; ///< kept copy, rows top first; freed by DestroyTexture
        int mComponents = 0;              ///< bytes a pixel of mPixels; 0 without a copy

        // contract: access to the pixels is not part of this engine: what is here has these effects
        // and no others.
        void LockSurface() const {}
        /// Binds the texture and samples it with the nearest texel when magnified, smoothly when
        /// not.
        void UnlockSurface() const;
        void SetPixel(int, int, unsigned int) {}
        unsigned int GetPixel(int, int) { return 0; }
    };

    /// Loads the image file at `path`, with linear filtering and repeat, and returns its id; -1,
    /// without a message, when it can't be read. A known path (or name) returns its id again and
    /// does nothing else. Paths are compared as they stand, case and "./" included. `keepPixels`
    /// keeps a copy in the record.
    int LoadTexture(std::string path, bool keepPixels);

    /// An empty texture to render into: colour (RGBA8) or, with `depth`, 24 bits of depth,
    /// unfiltered. Without `allocate` it has no storage and the size (0, 0). Names may repeat.
    int CreateTexture(std::string name, int width, int height, bool allocate, bool depth);

    /// A texture from pixels in memory: always four bytes a pixel in the order blue, green, red,
    /// alpha, rows top first, of which OpenGL keeps `components` channels. The caller keeps
    /// `pixels`.
    int CreateTexture(unsigned char *pixels, int width, int height, int components);

    /// Loads every file again, under new ids from 0; textures not made from files are forgotten,
    /// and kept pixels with them.
    void ReloadTextures();

    /// The file at `path` has changed: the texture that was made of it shows the file's pixels from
    /// now on, under the same id and the same OpenGL name; kept pixels are forgotten. False, and
    /// the texture stays, when the file can't be read. True, and nothing happens, when no texture
    /// was made of it. Leaves the bound texture as it was.
    bool RefreshTexture(const std::string &path);
    /// Whether a texture was made under this path or name.
    bool IsKnown(const std::string &path) const { return FindTexture(path) >= 0; }

    /// Frees the kept pixels of `id` and deletes the OpenGL texture whose *name* is the number
    /// `id`: not the record's own, unless the two happen to agree. The record stays: the id can
    /// still be bound and is still found by its path.
    void DestroyTexture(unsigned int id);

    /// Binds the texture, to be multiplied with the current colour; the caller
    /// enables texturing. An id out of range is an assertion.
    void BindTexture(int id) const;
    /// The record of `id`, valid until the next texture is made. An id out of range is an
    /// assertion.
    cTexture &GetTexture(int id);

private:
    int FindTexture(const std::string &name) const;
    int Append(const cTexture &texture);

    std::vector<cTexture> mTextures;
    std::string mText; // part of the manager's layout; no operation uses it
};
} // namespace vyr
