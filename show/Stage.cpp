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

} // namespace

void cStage::Open(int width, int height, bool isFullscreen)
{
    RendererHolder::CreateSingleton();
    TexturesHolder::CreateSingleton();
    cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetScaleFactor({float(width) / designWidth, float(height) / designHeight});
    mIsOpen = renderer.Init(width, height, isFullscreen);
    if (!mIsOpen)
        return;
    renderer.InitPostProcessing();
    glEnable(GL_BLEND); // every show begins with it
}

cStage::cStage(eSurface surface, int width, int height)
{
    platform::UseWindowSystem(surface == OFFSCREEN ? platform::OffscreenWindowSystem()
                                                   : platform::ScreenWindowSystem());
    if (surface == FULLSCREEN) {
        platform::StartWindowSystem();
        width = platform::GetDisplaySize().width;
        height = platform::GetDisplaySize().height;
    }
    Open(width, height, surface == FULLSCREEN);
}

cStage::cStage(const platform::WindowSystem &system, int width, int height)
{
    platform::UseWindowSystem(system);
    Open(width, height, false);
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
