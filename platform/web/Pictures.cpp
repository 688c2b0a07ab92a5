#include "platform/web/Pictures.h"

#include "platform/web/WebGL.h"

#include <emscripten.h>
#include <stb_image.h>

#include <cstdlib>

// clang-format off: the bodies are JavaScript
// Looks `path` up and writes its size and components; 0 where it is not listed.
EM_JS(int, vyr_find_picture, (const char *path, int *numbers), {
    const picture = Module.pictures && Module.pictures.get(UTF8ToString(path));
    if (!picture)
        return 0;
    HEAP32.set([ picture.width, picture.height, picture.components ], numbers >> 2);
    Module.loadedPicture = picture;
    return 1;
});

// Copies the pixels of the picture found last; 0 where they have not come.
EM_JS(int, vyr_copy_pixels, (unsigned char *to), {
    const pixels = Module.loadedPicture.pixels;
    if (pixels)
        HEAPU8.set(pixels, to);
    return pixels ? 1 : 0;
});

EM_JS(void, vyr_expect_picture, (unsigned texture), {
    Module.loadedPicture.texture = GL.textures[texture];
    Module.uploadPicture = function(picture)
    {
        if (!GLctx.isTexture(picture.texture))
            return; // the show has deleted it
        const bound = GLctx.getParameter(GLctx.TEXTURE_BINDING_2D);
        GLctx.bindTexture(GLctx.TEXTURE_2D, picture.texture);
        GLctx.texImage2D(GLctx.TEXTURE_2D, 0, GLctx.RGBA, GLctx.RGBA, GLctx.UNSIGNED_BYTE,
                         picture.bitmap);
        GLctx.bindTexture(GLctx.TEXTURE_2D, bound);
    };
});
// clang-format on

namespace vyr::web
{
namespace
{
const void *unarrived = nullptr; // a show loads one picture at a time
}

bool TakeUnarrived(const void *pixels)
{
    const bool isIt = pixels && pixels == unarrived;
    unarrived = nullptr;
    return isIt;
}

void ExpectPicture(unsigned texture) { vyr_expect_picture(texture); }
} // namespace vyr::web

stbi_uc *stbi_load(const char *path, int *width, int *height, int *components, int)
{
    int numbers[3] = {};
    if (!vyr_find_picture(path, numbers))
        return nullptr;
    *width = numbers[0];
    *height = numbers[1];
    *components = numbers[2];
    const size_t row = size_t(*width) * size_t(*components);
    auto *pixels = static_cast<stbi_uc *>(std::calloc(row, size_t(*height)));
    if (pixels && !vyr_copy_pixels(pixels))
        vyr::web::unarrived = pixels;
    return pixels;
}
