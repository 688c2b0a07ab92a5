#pragma once

#include "engine/3DObject.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <string>

/// What makes one example program. Main.cpp adds the rest of it: a window of 1280 by 720 and the
/// loop that draws into it until Escape.
struct cExample
{
    const char *mTitle;
    void (*mLoad)();               ///< once, with the window open; the working directory has data/
    void (*mDraw)(double seconds); ///< every frame, onto black, with blending on
    double (*mGetSeconds)();       ///< the clock that mDraw follows
};

/// Each example's one source file defines it.
extern const cExample kExample;

/// Seconds since the window was opened: the clock of an example without music.
double WindowSeconds();

inline vyr::cRenderer &Renderer() { return vyr::tSingleton<vyr::cRenderer>::GetSingleton(); }
inline vyr::cTextureManager &Textures()
{
    return vyr::tSingleton<vyr::cTextureManager>::GetSingleton();
}

// The engine says -1 or null when a file can't be read, and leaves it to the show what then. These
// two end the program with one line on standard error that names the file.

/// A texture, as Textures().LoadTexture gives it.
int LoadPicture(const std::string &path);
/// An LWO2 object, ready for Renderer().RenderObject.
vyr::c3DObject::cRenderObject *LoadObject(const std::string &path);
