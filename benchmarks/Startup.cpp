// From an open window to the show's first frame, beside a program that does bare what any must: it
// reads the same files in the same order, compiles the shaders, decodes and uploads the images, and
// draws the same first picture. The window itself is on neither side: opening it is the driver's.
//
//   bench-startup SHOW [PAIRS]     over a folder of a show
//
// Each run is a fresh process and reports its processor time, of all threads, since the window was
// open: nothing is left over from a run before, and a busy machine changes little.

#include "benchmarks/Report.h"
#include "benchmarks/StartupBare.h"
#include "demo/Frame.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"

#include <epoxy/gl.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <string>

#include <unistd.h>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

const int defaultPairs = 9;

double ProcessorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

vyr::cRenderer &OpenWindow()
{
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    RendererHolder::CreateSingleton();
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.SetScaleFactor({1.0f, 1.0f});
    renderer.Init(1280, 720, true);
    return renderer;
}

void StartShow(vyr::cRenderer &renderer)
{
    TexturesHolder::CreateSingleton();
    renderer.InitPostProcessing();
    sync_device *device = sync_create_device(demo::kTrackPrefix);
    demo::cLoadedShow show;
    show.mTracks = demo::LoadTracks(device);
    show.mAssets = demo::LoadAssets();
    glEnable(GL_BLEND);
    demo::DrawFrame(show, bench::kFirstRow, bench::kFirstSeconds);
    glFinish();
}

// The mesh and the tracks' values are a gift to the bare side, which only reads their bytes.
double MeasureHere(bool isShow)
{
    vyr::cRenderer &renderer = OpenWindow();
    bench::cBareGift gift;
    if (!isShow)
        gift = bench::MakeBareGift();
    glFinish();
    const double before = ProcessorSeconds();
    if (isShow)
        StartShow(renderer);
    else
        bench::StartBare(gift);
    return ProcessorSeconds() - before;
}

// Of what was drawn, so that both sides can be seen to have drawn the same.
size_t HashPicture()
{
    std::string pixels(size_t(4 * 1280 * 720), '\0');
    glReadPixels(0, 0, 1280, 720, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return std::hash<std::string>()(pixels);
}

double MeasureInProcess(const char *side, const char *folder)
{
    static size_t firstPicture = 0;
    const std::string command =
        "/proc/" + std::to_string(getpid()) + "/exe --" + side + " '" + std::string(folder) + "'";
    FILE *process = popen(command.c_str(), "r");
    double seconds = 0.0;
    size_t picture = 0;
    const bool hasRun = process && std::fscanf(process, "%lf %zu", &seconds, &picture) == 2;
    if (firstPicture == 0)
        firstPicture = picture;
    if (!hasRun || pclose(process) != 0 || picture != firstPicture) {
        std::fprintf(stderr, "bench-startup: a run failed, or the pictures differ\n");
        std::exit(1);
    }
    return seconds * 1000.0;
}
} // namespace

int main(int count, char **arguments)
{
    const bool isOneRun = count == 3 && std::strncmp(arguments[1], "--", 2) == 0;
    if (isOneRun && chdir(arguments[2]) == 0) {
        std::printf("%.6f ", MeasureHere(std::strcmp(arguments[1], "--show") == 0));
        std::printf("%zu\n", HashPicture());
        return 0;
    }
    if (count < 2 || access(arguments[1], X_OK) != 0) {
        std::fprintf(stderr, "bench-startup: needs the folder of a show\n");
        return 2;
    }
    const auto show = [&] { return MeasureInProcess("show", arguments[1]); };
    const auto bare = [&] { return MeasureInProcess("bare", arguments[1]); };
    show(), bare(); // into the disk's and the driver's caches
    const auto pairs =
        bench::MeasurePairs(count > 2 ? std::atoi(arguments[2]) : defaultPairs, show, bare);
    bench::PrintRow(
        {"start-up to the first frame", "the same files and picture, bare", "ms (CPU)", "<=1.05"},
        pairs);
}
