#pragma once

/// The picture that the three examples of post effects work on: a clock and the logo.

/// Loads its images and makes its render target, of the window's size.
void LoadScene();

/// Draws it into its render target and gives the target's texture. Render targets lie upside down
/// in their textures: Post_Draw shows this one standing on its head. Leaves the window bound.
int DrawScene(double seconds);
