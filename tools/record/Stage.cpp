#include "tools/record/Stage.h"

#include "base/Truncate.h"
#include "demo/Frame.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "platform/Window.h"
#include "tools/record/Failure.h"
#include "tools/record/Readback.h"
#include "tools/record/ShowFiles.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace record
{
namespace
{
using RendererHolder = vyr::tSingleton<vyr::cRenderer>;
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

std::string ToText(const cSize &size)
{
    return std::to_string(size.mWidth) + "x" + std::to_string(size.mHeight);
}

// A context of a few pixels tells what the driver can do before it is asked for more.
cSize GetMaximumSize()
{
    if (!vyr::platform::StartWindowSystem() || !vyr::platform::OpenWindow(16, 16, false))
        throw cFailure(""); // the window system has said why
    GLint dimensions[2] = {}, textureSize = 0;
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, dimensions);
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &textureSize);
    vyr::platform::StopWindowSystem();
    return {std::min(dimensions[0], textureSize), std::min(dimensions[1], textureSize)};
}

void CheckSize(const cSize &size)
{
    const cSize maximum = GetMaximumSize();
    if (size.mWidth > maximum.mWidth || size.mHeight > maximum.mHeight)
        throw cUsageError("--size " + ToText(size) + ": the driver draws up to " + ToText(maximum));
}

unsigned int CreateFramebuffer(const cSize &size)
{
    auto &textures = TexturesHolder::GetSingleton();
    const int color =
        textures.CreateTexture("record:color", size.mWidth, size.mHeight, true, false);
    const int depth = textures.CreateTexture("record:depth", size.mWidth, size.mHeight, true, true);
    const unsigned int framebuffer =
        RendererHolder::GetSingleton().CreateFBO(unsigned(color), unsigned(depth));
    if (framebuffer == vyr::cRenderer::kNoFramebuffer || glGetError() != GL_NO_ERROR)
        throw cFailure("the driver has no room for pictures of " + ToText(size));
    return framebuffer;
}

bool HasTunnel(const demo::cShow &show, double row)
{
    return vyr::TruncateToInt(sync_get_val(show.mTracks[demo::TUNNEL_TEXTURE], row)) >= 0;
}

void CloseRenderer()
{
    TexturesHolder::DestroySingleton();
    RendererHolder::GetSingleton().Shutdown();
    RendererHolder::DestroySingleton();
}
} // namespace

cStage::cStage(const cSize &size) : mSize(size)
{
    vyr::platform::UseWindowSystem(vyr::platform::OffscreenWindowSystem());
    CheckSize(size);
    RendererHolder::CreateSingleton();
    TexturesHolder::CreateSingleton();
    auto &renderer = RendererHolder::GetSingleton();
    renderer.SetScaleFactor(
        {float(size.mWidth) / demo::kDesignWidth, float(size.mHeight) / demo::kDesignHeight});
    try {
        if (!renderer.Init(size.mWidth, size.mHeight, false))
            throw cFailure(""); // the same
        mFramebuffer = CreateFramebuffer(size);
    } catch (const cFailure &) {
        CloseRenderer();
        throw;
    }
    glEnable(GL_BLEND); // as the show has it
}

cStage::~cStage()
{
    if (mTracks)
        sync_destroy_device(mTracks);
    RendererHolder::GetSingleton().DestroyFBO(mFramebuffer);
    CloseRenderer();
}

void cStage::LoadShow()
{
    CheckShowFiles();
    mTracks = sync_create_device(demo::kTrackPrefix);
    if (!mTracks)
        throw cFailure("no memory for the tracks");
    mShow.mTracks = demo::LoadTracks(mTracks);
    mShow.mAssets = demo::LoadAssets();
    CheckPrograms(mShow.mAssets);
}

void cStage::Draw(double row, double seconds)
{
    CheckRow(mShow, row);
    RendererHolder::GetSingleton().BeginUpdateFBO(mFramebuffer);
    demo::DrawFrame(mShow, row, seconds);
}

int64_t cStage::FindFrameWithTunnel(const cFrameGrid &grid, int64_t end) const
{
    int64_t frame = end - 1;
    while (frame >= 0 && !HasTunnel(mShow, grid.Row(frame)))
        frame--;
    return frame;
}

void cStage::DrawFramesBefore(const cFrameGrid &grid, int64_t microRow)
{
    const int64_t end = grid.FirstAtOrAfter(microRow);
    const int64_t tunnel = FindFrameWithTunnel(grid, end);
    if (tunnel >= 0 && tunnel < end - 1)
        Draw(grid.Row(tunnel), grid.Seconds(tunnel));
    if (end > 0)
        Draw(grid.Row(end - 1), grid.Seconds(end - 1));
}

cPicture cStage::DrawStill(const cFrameGrid &grid, int64_t microRow)
{
    DrawFramesBefore(grid, microRow);
    const int64_t frame = grid.FirstAtOrAfter(microRow);
    if (grid.MicroRow(frame) == microRow) {
        Draw(grid.Row(frame), grid.Seconds(frame));
    } else {
        const double row = double(microRow) / double(kMicroRows);
        Draw(row, row / demo::kRowsPerSecond);
    }
    cReadback readback(mSize.mWidth, mSize.mHeight);
    cPicture picture(mSize.mWidth, mSize.mHeight);
    readback.Begin();
    if (!readback.Finish(picture))
        throw cFailure("the driver lost a frame");
    return picture;
}

std::string cStage::GetRendererName()
{
    const auto text = [](GLenum name) {
        return std::string(reinterpret_cast<const char *>(glGetString(name)));
    };
    return text(GL_RENDERER) + ", OpenGL " + text(GL_VERSION);
}
} // namespace record
