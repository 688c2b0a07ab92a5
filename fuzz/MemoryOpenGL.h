#pragma once

/// Stands in for OpenGL where a reader that makes textures is fuzzed: no context, no driver.
namespace fuzz
{
/// The calls of the texture manager and the font do nothing from now on but read every byte that
/// OpenGL would read.
void UseMemoryOpenGL();
} // namespace fuzz
