#include "show/Stage.h"

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"

#include <epoxy/gl.h>

namespace vyr
{
namespace
{
using RendererHolder = tSingleton<cRenderer>;
using TexturesHolder = tSingleton<cTextureManager>;

const float designWidth = 1280.0f, designHeight = 720.0f;

bool Open(cStage::eSurface surface, int width, int height)
{
    cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetScaleFactor({float(width) / designWidth, float(height) / designHeight});
    if (!renderer.Init(width, height, surface == cStage::FULLSCREEN))
        return false;
    renderer.InitPostProcessing();
    glEnable(GL_BLEND); // every show begins with it
    return true;
}
} // namespace

cStage::cStage(eSurface surface, int width, int height)
{
    platform::UseWindowSystem(surface == OFFSCREEN ? platform::OffscreenWindowSystem()
                                                   : platform::ScreenWindowSystem());
    RendererHolder::CreateSingleton();
    TexturesHolder::CreateSingleton();
    if (surface == FULLSCREEN) {
        platform::StartWindowSystem();
        width = platform::GetDisplaySize().width;
        height = platform::GetDisplaySize().height;
    }
    mIsOpen = Open(surface, width, height);
}

cStage::~cStage()
{
    TexturesHolder::DestroySingleton();
    if (mIsOpen)
        RendererHolder::GetSingleton().Shutdown();
    RendererHolder::DestroySingleton();
}

cRenderer &cStage::GetRenderer() const { return RendererHolder::GetSingleton(); }
} // namespace vyr
