#pragma once

/// Stands where stb_image.h stands. The browser decodes pictures, not this program: the page has
/// listed them before (see platform/web/Pictures.h).

using stbi_uc = unsigned char;

extern "C" {
/// The picture file `path`: its pixels, rows top first, `*components` bytes each, in memory of
/// malloc's; null when the page has listed no such picture. `desiredComponents` must be 0. The
/// pixels are zeros where the picture has not arrived yet: what is uploaded from this very memory
/// becomes the picture once it is there.
stbi_uc *stbi_load(const char *path, int *width, int *height, int *components,
                   int desiredComponents);
}
