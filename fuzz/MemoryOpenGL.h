#pragma once

#include <vector>

/// Stands in for OpenGL where a reader that makes textures is fuzzed: no context, no driver.
namespace fuzz
{
/// The calls of the texture manager and the font do nothing from now on but read every byte that
/// OpenGL would read.
void UseMemoryOpenGL();

/// The bytes that the last upload read.
const std::vector<unsigned char> &LastUpload();
} // namespace fuzz
