#pragma once

#include "demo/Show.h"

namespace demo
{
/// Draws one frame of `show` into whatever is bound: the thirteen layers, back to front, between
/// the renderer's BeginScene and EndScene; presenting it is the caller's. What is shown depends on
/// `row` (rows of music, fractional) through the tracks, what wobbles on `seconds`, and the
/// tunnel's depth on the frame drawn before (see Tunnel). Blending must be on. Layers share OpenGL
/// state, and none restores what it changes.
void DrawFrame(const cLoadedShow &show, double row, double seconds);
} // namespace demo
