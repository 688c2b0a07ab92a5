#pragma once

#include "demo/Show.h"

namespace demo
{
/// Draws one frame of `show` into the bound framebuffer: the thirteen layers, back to front,
/// between the renderer's BeginScene and EndScene. The caller presents it.
///
/// The tracks are sampled at `row` (rows of music, fractional). The photos' wobble and the shaders'
/// time follow `seconds`, the window's timer in `demo`, not the music. The tunnel's depth depends
/// on the frame drawn before (see Tunnel). Needs blending on. Layers share OpenGL state, and none
/// restores what it changes.
void DrawFrame(const cLoadedShow &show, double row, double seconds);
} // namespace demo
