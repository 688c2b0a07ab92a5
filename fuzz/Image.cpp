// Image files through the texture manager, with OpenGL replaced by something that reads what OpenGL
// would read.
//
// Promises: the upload stays within the pixels; the record has the image's size and, when asked
// for, a copy of its pixels; a path is loaded once; what fails leaves no record.

#include "engine/TextureManager.h"
#include "fuzz/Fuzz.h"
#include "fuzz/MemoryFile.h"
#include "fuzz/MemoryOpenGL.h"

#include <stb_image.h>

#include <algorithm>
#include <cstring>

namespace
{
const int maximumPixels = 1 << 18; // a larger picture is no fault, it is only slow

// The decoder is not asked again: for a pixel outside its palette it answers what lies on the
// stack.
void ExpectDecoded(const vyr::cTextureManager::cTexture &texture, int width, int height)
{
    FUZZ_EXPECT(texture.mSize.x == float(width) && texture.mSize.y == float(height));
    FUZZ_EXPECT(texture.mComponents >= 1 && texture.mComponents <= 4 && texture.mPixels);
    const size_t bytes = size_t(width) * size_t(height) * size_t(texture.mComponents);
    const size_t compared = std::min(bytes, fuzz::LastUpload().size());
    FUZZ_EXPECT(std::memcmp(texture.mPixels, fuzz::LastUpload().data(), compared) == 0);
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    int width = 0, height = 0, components = 0;
    if (!stbi_info_from_memory(data, int(size), &width, &height, &components) || width <= 0 ||
        height <= 0 || width > maximumPixels / height)
        return 0;
    static fuzz::cMemoryFile file;
    fuzz::UseMemoryOpenGL();
    file.Write(data, size);
    vyr::cTextureManager textures;
    const int id = textures.LoadTexture(file.Path(), true);
    FUZZ_EXPECT(id == 0 || id == -1);
    FUZZ_EXPECT(textures.LoadTexture(file.Path(), true) == id);
    if (id < 0)
        return 0;
    ExpectDecoded(textures.GetTexture(id), width, height);
    textures.DestroyTexture(0);
    FUZZ_EXPECT(!textures.GetTexture(id).mPixels);
    return 0;
}
