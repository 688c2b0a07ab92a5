#include "benchmarks/Stage.h"

#include "demo/Frame.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cstdlib>

namespace bench
{
namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;
} // namespace

cStage::cStage(const vyr::platform::WindowSystem &system, int width, int height)
{
    vyr::platform::UseWindowSystem(system);
    RendererHolder::CreateSingleton();
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetScaleFactor(
        {float(width) / demo::kDesignWidth, float(height) / demo::kDesignHeight});
    if (!renderer.Init(width, height, false))
        std::exit(1); // the window system has said why
    TexturesHolder::CreateSingleton();
    renderer.InitPostProcessing();
    mDevice = sync_create_device(demo::kTrackPrefix);
    mLoaded.mTracks = demo::LoadTracks(mDevice);
    mLoaded.mAssets = demo::LoadAssets();
    mShow = mLoaded;
    vyr::platform::SetSwapInterval(0); // nothing waits for a screen
    glEnable(GL_BLEND);                // as the show has it
}

cStage::~cStage()
{
    sync_destroy_device(mDevice);
    TexturesHolder::DestroySingleton();
    RendererHolder::GetSingleton().Shutdown();
    RendererHolder::DestroySingleton();
}

void cStage::ShowFrame(double row)
{
    demo::DrawFrame(mShow, row, row / demo::kRowsPerSecond);
    glFinish();
    RendererHolder::GetSingleton().Present();
}

void cStage::Fix(demo::eTrack track, float value)
{
    cConstant &constant = mConstants.emplace_back();
    constant.mKey = {0, value, SYNC_KEY_HOLD};
    constant.mTrack = {nullptr, &constant.mKey, 1};
    mShow.mTracks[size_t(track)] = &constant.mTrack;
}

void cStage::FixToFlatLayers()
{
    Fix(demo::FADE_PLASMA, 0.0f);
    Fix(demo::TUNNEL_TEXTURE, -1.0f);
    Fix(demo::OBJECT_NUM, -1.0f);
    Fix(demo::FADE_FG_NOISE, 0.0f);
}

long cStage::GetTextureBytes() const
{
    auto &textures = TexturesHolder::GetSingleton();
    // Ids are handed out from 0 upward; the next one is their count.
    unsigned char pixel[4] = {};
    const int count = textures.CreateTexture(pixel, 1, 1, 4);
    long pixels = 0;
    for (int i = 0; i < count; i++) {
        const vyr::cVector2 size = textures.GetTexture(i).mSize;
        pixels += long(size.x) * long(size.y);
    }
    return pixels * 4;
}
} // namespace bench
