// What the show takes of the memory: "textures N", "window N" and "show N", in bytes. Textures
// count as OpenGL keeps them, four bytes a pixel; the window is one of the same driver in which
// nothing is loaded; the show has drawn frames from all over its length.
//
//   bench-memory SHOW

#include "benchmarks/Stage.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <fstream>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
const int frameCount = 100;

// Resident bytes of this process.
long GetResident()
{
    std::ifstream file("/proc/self/statm");
    long total = 0, resident = 0;
    file >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// The part of `work` runs in a process of its own, so that neither finds the other's memory.
template <typename Work>
void Apart(Work work)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::fflush(stdout);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

void MeasureEmptyWindow()
{
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    vyr::cRenderer renderer;
    if (!renderer.Init(1280, 720, false))
        _exit(1);
    for (int i = 0; i < frameCount; i++) {
        renderer.Clear(vyr::cColor(0, 0, 0, 1));
        renderer.DrawFullscreenQuad({0, 0, 0}, {0, 1}, {1, 0});
        glFinish();
        renderer.Present();
    }
    std::printf("window %ld\n", GetResident());
}

void MeasureShow()
{
    bench::cStage stage(vyr::platform::OffscreenWindowSystem(), 1280, 720);
    for (int i = 0; i < frameCount; i++)
        stage.ShowFrame(bench::RowOf(i, frameCount));
    std::printf("textures %ld\nshow %ld\n", stage.GetTextureBytes(), GetResident());
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-memory: needs the folder of a show\n");
        return 2;
    }
    Apart(MeasureEmptyWindow);
    Apart(MeasureShow);
}
