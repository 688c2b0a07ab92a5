#pragma once

#include "platform/Window.h"

#include <cstdint>

/// An OpenGL and a window that do nothing: what remains of a frame is this project's own work.
namespace bench
{
/// From now on no call of the engine reaches a driver. Before the first one, and for good.
void DropOpenGL();

/// How often it was called since then.
std::int64_t GetDroppedCalls();

/// A window of any size that shows nothing. It needs DropOpenGL.
const vyr::platform::WindowSystem &NoWindowSystem();
} // namespace bench
