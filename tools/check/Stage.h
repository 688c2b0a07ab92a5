#pragma once

#include "engine/Renderer.h"
#include "engine/TextureManager.h"

#include <string>

namespace check
{
/// The engine with a context that needs no display, as long as this lives.
class cStage
{
public:
    cStage();
    ~cStage();
    cStage(const cStage &) = delete;
    cStage &operator=(const cStage &) = delete;

    bool IsOpen() const { return mIsOpen; } ///< false without OpenGL

private:
    bool mIsOpen;
};

/// The texture's id, or -1. Its pixels are kept too, until the stage ends.
int LoadImage(const std::string &path);

vyr::cRenderer &Renderer();
vyr::cTextureManager &Textures();
} // namespace check
