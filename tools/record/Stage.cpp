#include "tools/record/Stage.h"

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "tools/record/Failure.h"
#include "tools/record/Readback.h"

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

// A context of a few pixels is enough to ask for the driver's limits.
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

// As large as the driver allows, checked before the stage asks for it.
const cSize &Checked(const cSize &size, const vyr::platform::WindowSystem &system)
{
    vyr::platform::UseWindowSystem(system);
    CheckSize(size);
    return size;
}
} // namespace

cStage::cStage(vyr::cShowFolder &show, const cSize &size, const vyr::platform::WindowSystem &system)
    : mShow(&show), mSize(Checked(size, system)), mRowCheck(show),
      mStage(system, size.mWidth, size.mHeight)
{
    if (!mStage.IsOpen())
        throw cFailure(""); // the window system has said why
    mFramebuffer = CreateFramebuffer(size);
    mWindow.emplace(mFramebuffer);
}

cStage::~cStage()
{
    mWindow.reset();
    mStage.GetRenderer().DestroyFBO(mFramebuffer);
}

void cStage::LoadShow()
{
    CheckShowFiles(mShow->GetDescription());
    mShow->LoadTracks();
    mShow->Load();
    CheckLoaded(mShow->GetDescription());
}

void cStage::CheckRow(double row) { mRowCheck->Check(row); }

void cStage::Draw(double row, double seconds)
{
    CheckRow(row);
    mStage.GetRenderer().BeginUpdateFBO(mFramebuffer);
    mShow->Draw(row, seconds);
}

int64_t cStage::FindFrameThatReachesLater(const cFrameGrid &grid, int64_t end) const
{
    int64_t frame = end - 1;
    while (frame >= 0 && !mShow->ReachesLater(grid.Row(frame)))
        frame--;
    return frame;
}

void cStage::DrawFramesBefore(const cFrameGrid &grid, int64_t microRow)
{
    const int64_t end = grid.FirstAtOrAfter(microRow);
    const int64_t reaching = FindFrameThatReachesLater(grid, end);
    if (reaching >= 0 && reaching < end - 1)
        Draw(grid.Row(reaching), grid.Seconds(reaching));
    if (end > 0)
        Draw(grid.Row(end - 1), grid.Seconds(end - 1));
}

void cStage::SetShow(vyr::cShowFolder &show)
{
    mShow = &show;
    mRowCheck.emplace(show);
}

void cStage::DrawAlone(const cFrameGrid &grid, int64_t microRow)
{
    DrawFramesBefore(grid, microRow);
    const int64_t frame = grid.FirstAtOrAfter(microRow);
    if (grid.MicroRow(frame) == microRow) {
        Draw(grid.Row(frame), grid.Seconds(frame));
    } else {
        const double row = double(microRow) / double(kMicroRows);
        Draw(row, row / mShow->GetDescription().mRowsPerSecond);
    }
}

cPicture cStage::DrawStill(const cFrameGrid &grid, int64_t microRow)
{
    DrawAlone(grid, microRow);
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
