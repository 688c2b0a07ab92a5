#pragma once

namespace demo
{
/// One textured square of half-width `size` around the origin, upright, in the z = 0 plane. Uses
/// the current colour and texture.
void DrawQuad(float size);

/// The fly-through at `pos` of its path: ten slices of `texture`, far to near, each of three nested
/// squares, seen from a camera that follows the path. Needs the renderer and the texture manager.
/// The slices of a call are anchored in depth where the call before left them, 0 at first; nothing
/// else of the show remembers a frame.
/// Leaves the depth function GL_ALWAYS, depth writes off, texturing and blending on, the modelview
/// moved.
void Tunnel(int texture, float pos);
} // namespace demo
