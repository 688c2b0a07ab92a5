#include "tools/check/Stage.h"

#include "engine/Singleton.h"
#include "platform/Window.h"

#include <cstdlib>
#include <vector>

namespace check
{
namespace
{
const int size = 64; // nothing is looked at

std::vector<int> loaded; // the manager does not free the pixels that it keeps
} // namespace

cStage::cStage()
{
    // Mesa keeps compiled shaders between runs, and of a kept one it has no log to show.
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    vyr::tSingleton<vyr::cRenderer>::CreateSingleton();
    vyr::tSingleton<vyr::cTextureManager>::CreateSingleton();
    mIsOpen = Renderer().Init(size, size, false);
}

cStage::~cStage()
{
    for (int id : loaded)
        Textures().DestroyTexture(unsigned(id));
    loaded.clear();
    vyr::tSingleton<vyr::cTextureManager>::DestroySingleton();
    Renderer().Shutdown();
    vyr::tSingleton<vyr::cRenderer>::DestroySingleton();
}

int LoadImage(const std::string &path)
{
    const int id = Textures().LoadTexture(path, true);
    if (id >= 0)
        loaded.push_back(id);
    return id;
}

vyr::cRenderer &Renderer() { return vyr::tSingleton<vyr::cRenderer>::GetSingleton(); }

vyr::cTextureManager &Textures() { return vyr::tSingleton<vyr::cTextureManager>::GetSingleton(); }
} // namespace check
