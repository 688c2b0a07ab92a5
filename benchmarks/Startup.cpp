// Start-up, from the renderer's creation to the first frame, beside the bare decoding and uploading
// of the same image files in the same order. Each runs in turn, in a context of its own, over a
// show folder:
//
//   bench-startup SHOW [RUNS]     prints the median seconds of both and their ratio

#include "demo/Frame.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"

#include <epoxy/gl.h>
#include <stb_image.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include <unistd.h>

namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

double SecondsOf(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A window's context, the work inside it timed.
double TimedInContext(const std::function<void(vyr::cRenderer &)> &work)
{
    RendererHolder::CreateSingleton();
    vyr::cRenderer &renderer = RendererHolder::GetSingleton();
    renderer.Init(1280, 720, true);
    TexturesHolder::CreateSingleton();
    const double seconds = SecondsOf([&] { work(renderer); });
    TexturesHolder::DestroySingleton();
    renderer.Shutdown();
    RendererHolder::DestroySingleton();
    return seconds;
}

void StartShow(vyr::cRenderer &renderer)
{
    renderer.InitPostProcessing();
    sync_device *device = sync_create_device(demo::kTrackPrefix);
    demo::cShow show;
    show.mTracks = demo::LoadTracks(device);
    show.mAssets = demo::LoadAssets();
    glEnable(GL_BLEND);
    demo::DrawFrame(show, 1.0, 0.05);
    glFinish();
    sync_destroy_device(device);
}

// The images of the show in its order, with those of the objects.
std::vector<std::string> ImageNames()
{
    std::vector<std::string> names;
    for (const std::string &photo : demo::PhotoNames())
        names.push_back(photo);
    for (int i = 0; i < demo::kLyricCount; i++)
        names.push_back(demo::LyricName(i));
    for (const char *name :
         {"data/zemlogo.png", "data/vignette1.png", "data/tex9.png", "data/textures/oh1.png"})
        names.push_back(name);
    return names;
}

void UploadBare(vyr::cRenderer &)
{
    for (const std::string &name : ImageNames()) {
        int width = 0, height = 0, components = 0;
        unsigned char *pixels = stbi_load(name.c_str(), &width, &height, &components, 0);
        GLuint texture = 0;
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, components, width, height, 0,
                     components == 4 ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, pixels);
        stbi_image_free(pixels);
    }
    glFinish();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 2 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-startup: needs the folder of a show\n");
        return 2;
    }
    const int runs = count > 2 ? std::atoi(arguments[2]) : 5;
    platform::UseWindowSystem(platform::OffscreenWindowSystem());
    std::vector<double> show, bare, ratios;
    for (int i = 0; i < runs; i++) {
        show.push_back(TimedInContext(StartShow));
        bare.push_back(TimedInContext(UploadBare));
        ratios.push_back(show.back() / bare.back());
    }
    std::printf("show %.4f s, bare %.4f s, ratio %.3f (%.3f to %.3f)\n", Median(show), Median(bare),
                Median(ratios), *std::min_element(ratios.begin(), ratios.end()),
                *std::max_element(ratios.begin(), ratios.end()));
}
