#include "demo/Frame.h"
#include "demo/Music.h"
#include "demo/Show.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Display.h"
#include "platform/Window.h"

#include <epoxy/gl.h>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

const int failed = -1; // contract: the exit status after a failure; nothing is released then

vyr::cRenderer &OpenFullScreen()
{
    RendererHolder::CreateSingleton();
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    const int width = CGDisplayPixelsWide(0);
    const int height = CGDisplayPixelsHigh(0);
    renderer.SetScaleFactor(
        {float(width) / demo::kDesignWidth, float(height) / demo::kDesignHeight});
    renderer.Init(width, height, true);
    TexturesHolder::CreateSingleton();
    TexturesHolder::GetSingleton();
    return renderer;
}

// The screen stays black while everything loads.
void ShowBlackFrame(vyr::cRenderer &renderer)
{
    renderer.BeginScene();
    renderer.Clear(vyr::cColor(0, 0, 0, 1));
    renderer.EndScene();
    renderer.Present();
}

// Until the music reaches the last row, or Escape. A frame is drawn only when the music has moved
// on; when it stops moving, the last frame stays until Escape.
void Play(vyr::cRenderer &renderer, const demo::cMusic &music, const demo::cLoadedShow &show)
{
    // One number in two roles: the last drawn row, and, while a frame is drawn, the timer's
    // seconds.
    double time = 0.0;
    unsigned int position = 0; // a position that can't be read leaves the one before
    for (;;) {
        const bool isRunning = renderer.Update();
        if (!(time < demo::kLastRow && isRunning))
            return;
        music.mSystem->update();
        music.mChannel->getPosition(&position, FMOD_TIMEUNIT_PCMBYTES);
        const double row = demo::RowAtPosition(position);
        const bool hasMoved = row != time;
        time = row;
        if (!hasMoved)
            continue;
        time = vyr::platform::GetTime();
        demo::DrawFrame(show, row, time);
        renderer.Present();
        time = row;
    }
}

void CloseWindow(vyr::cRenderer &renderer)
{
    TexturesHolder::DestroySingleton();
    renderer.Shutdown();
    RendererHolder::DestroySingleton();
}
} // namespace

int main()
{
    vyr::cRenderer &renderer = OpenFullScreen();
    if (!vyr::platform::IsWindowOpen())
        return failed; // the window system has said why
    renderer.InitPostProcessing();
    ShowBlackFrame(renderer);

    demo::cMusic music;
    if (!demo::StartSound(music) || !demo::OpenMusic(music))
        return failed;

    sync_device *device = sync_create_device(demo::kTrackPrefix);
    if (!device)
        return failed;
    demo::cLoadedShow show;
    show.mTracks = demo::LoadTracks(device);
    show.mAssets = demo::LoadAssets();

    if (!demo::PlayMusic(music))
        return failed;
    glEnable(GL_BLEND);
    Play(renderer, music, show);

    sync_destroy_device(device);
    if (!demo::StopSound(music))
        return failed;
    CloseWindow(renderer);
    return 0;
}
