#pragma once

#include <filesystem>

namespace test
{
/// Writes a complete small show into `folder`: the real one's drawing, 63 pictures of a few pixels,
/// two shaders, two objects, `seconds` of music, and tracks that turn everything off but the
/// white fade, which is on: every frame is white. It never changes when the art of the real show
/// does.
void WriteFixtureShow(const std::filesystem::path &folder, double seconds = 5.0);

/// Puts the drawing of the real show, as the build made it, into `folder`: its show.so.
void LinkShowLibrary(const std::filesystem::path &folder);
} // namespace test
