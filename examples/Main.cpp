// What all examples share: the window and the loop. Your own show starts with these lines too.

#include "examples/Example.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <filesystem>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

// Files are named from the working directory; the build puts data/ beside the examples.
void GoToProgramFolder()
{
    std::error_code ignored;
    const auto program = std::filesystem::canonical("/proc/self/exe", ignored);
    std::filesystem::current_path(program.parent_path(), ignored);
}

void DrawFrame(double seconds)
{
    Renderer().BeginScene();
    Renderer().Clear(vyr::cColor(0, 0, 0, 1));
    // What every example starts from; drawing calls leave other states behind.
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, 1);
    kExample.mDraw(seconds);
    Renderer().EndScene();
    Renderer().Present();
}
} // namespace

int main()
{
    GoToProgramFolder();
    // The renderer, then its window, then the textures: each needs the one before it.
    RendererHolder::CreateSingleton();
    if (!Renderer().Init(1280, 720, false))
        return 1;
    Renderer().SetCaption(kExample.mTitle);
    TexturesHolder::CreateSingleton();

    kExample.mLoad();
    std::printf("%s. Escape ends it.\n", kExample.mTitle);
    std::fflush(stdout);
    while (Renderer().Update())
        DrawFrame(kExample.mGetSeconds());

    TexturesHolder::DestroySingleton();
    Renderer().Shutdown();
    RendererHolder::DestroySingleton();
    return 0;
}
