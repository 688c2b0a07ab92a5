#include "studio/Preview.h"

#include "engine/3DObject.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "tools/record/Failure.h"
#include "tools/record/Readback.h"
#include "tools/support/Files.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>

namespace studio
{
namespace
{
using TexturesHolder = vyr::tSingleton<vyr::cTextureManager>;

double Now()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

/// The show's context is current as long as this lives, and the page's after it.
class cShowContext
{
public:
    explicit cShowContext(cWindow &window) : mWindow(window) { mWindow.UseShow(); }
    ~cShowContext() { mWindow.UsePage(); }
    cShowContext(const cShowContext &) = delete;
    cShowContext &operator=(const cShowContext &) = delete;

private:
    cWindow &mWindow;
};

// A recording draws its first frame on the state that loading has left, whatever was drawn here
// since: it is kept aside, once, and put back before each frame.
void KeepState()
{
    glUseProgram(0);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
}

void DropState()
{
    glPopClientAttrib();
    glPopAttrib();
}

void PutBackState()
{
    DropState();
    KeepState();
}

std::vector<GLuint> ListPrograms()
{
    std::vector<GLuint> programs;
    for (GLuint program = 1; program < 4096; program++)
        if (glIsProgram(program))
            programs.push_back(program);
    return programs;
}

void DeleteProgram(GLuint program)
{
    GLuint shaders[2] = {};
    GLsizei count = 0;
    glGetAttachedShaders(program, 2, &count, shaders);
    std::for_each(shaders, shaders + count, [](GLuint shader) { glDeleteShader(shader); });
    glDeleteProgram(program);
}
} // namespace

cPreview::cPreview(cWindow &window, const std::filesystem::path &folder, const record::cSize &size)
    : mWindow(window), mFolder(std::filesystem::absolute(folder)), mSize(size),
      mShow(std::make_unique<vyr::cShowFolder>(folder))
{
    std::filesystem::current_path(mFolder);
    const cShowContext context(mWindow);
    mStage = std::make_unique<record::cStage>(*mShow, mSize, PreviewWindowSystem());
    FindTexture();
}

cPreview::~cPreview()
{
    const cShowContext context(mWindow);
    mStage.reset();
}

void cPreview::FindTexture()
{
    auto &textures = TexturesHolder::GetSingleton();
    const int id = textures.LoadTexture("record:color", false); // known, so it is only found
    mTexture = textures.GetTexture(id).mHandle;
}

bool cPreview::Load(std::string &error)
{
    const cShowContext context(mWindow);
    const double begin = Now();
    try {
        mStage->LoadShow();
        KeepState();
        mIsLoaded = true;
    } catch (const std::exception &failure) {
        error = failure.what();
    }
    mLoadSeconds = Now() - begin;
    Forget();
    return mIsLoaded;
}

void cPreview::SetKeys(const std::string &track, const std::vector<sync_key> &keys)
{
    const auto &names = Description().mTracks;
    const auto found = std::ranges::find(names, track);
    if (found != names.end())
        mShow->SetKeys(int(found - names.begin()), keys);
}

void cPreview::SetTracks(const std::vector<timeline::cShowTrack> &tracks)
{
    if (!mIsLoaded)
        return;
    for (const timeline::cShowTrack &track : tracks) {
        std::vector<sync_key> keys;
        for (const timeline::cShowKey &key : track.mKeys)
            keys.push_back(key.mKey);
        SetKeys(track.mName, keys);
    }
    Forget();
}

void cPreview::SetTracks(const std::vector<timeline::cTrack> &tracks)
{
    if (!mIsLoaded)
        return;
    for (const timeline::cTrack &track : tracks)
        SetKeys(track.mName, track.mKeys);
    Forget();
}

bool cPreview::Draw(double row, std::string &error)
{
    const int64_t microRow = record::ToMicroRow(row);
    if (!mIsLoaded || microRow == mDrawn)
        return true;
    const cShowContext context(mWindow);
    const double begin = Now();
    try {
        PutBackState();
        const record::cFrameGrid grid(record::cFrameRate{}, Description().mRowsPerSecond);
        mStage->DrawAlone(grid, microRow);
        glFinish();
        mDrawn = microRow;
    } catch (const std::exception &failure) {
        error = failure.what();
        return false;
    }
    mFrameSeconds = Now() - begin;
    return true;
}

record::cPicture cPreview::Read()
{
    const cShowContext context(mWindow);
    record::cReadback readback(mSize.mWidth, mSize.mHeight);
    record::cPicture picture(mSize.mWidth, mSize.mHeight);
    readback.Begin();
    readback.Finish(picture);
    return picture;
}

bool cPreview::Refresh(const std::string &path, std::string &error)
{
    const cShowContext context(mWindow);
    Forget();
    if (!mIsLoaded)
        return true;
    if (tools::IsShader(path))
        return vyr::cRenderer::RefreshShaders(path, error);
    if (tools::IsObject(path)) {
        error = "not an LWO2 object that can be read";
        return vyr::c3DObject::Refresh(path);
    }
    // What the show could not load at its start, and what it reads by itself, needs another start.
    auto &textures = TexturesHolder::GetSingleton();
    if (!textures.IsKnown(path))
        return Reload(std::make_unique<vyr::cShowFolder>(mFolder), error);
    error = "no picture that can be read";
    return textures.RefreshTexture(path);
}

bool cPreview::Exchange(std::string &error)
{
    const cShowContext context(mWindow);
    try {
        return Reload(std::make_unique<vyr::cShowFolder>(mFolder), error);
    } catch (const std::exception &failure) {
        error = failure.what();
        return false;
    }
}

bool cPreview::Reload(std::unique_ptr<vyr::cShowFolder> show, std::string &error)
{
    const std::vector<GLuint> programs = ListPrograms();
    if (mIsLoaded)
        PutBackState();
    mStage->SetShow(*show);
    try {
        mStage->LoadShow();
    } catch (const std::exception &failure) {
        mStage->SetShow(*mShow);
        error = failure.what();
        return false;
    }
    std::ranges::for_each(programs, DeleteProgram); // of the show that goes
    mShow = std::move(show);
    if (mIsLoaded)
        DropState();
    KeepState();
    mIsLoaded = true;
    Forget();
    return true;
}

unsigned int cPreview::FindPicture(const std::string &path, record::cSize &size)
{
    const cShowContext context(mWindow);
    auto &textures = TexturesHolder::GetSingleton();
    const int id = textures.LoadTexture(path, false);
    if (id < 0)
        return 0;
    const auto &texture = textures.GetTexture(id);
    size = {int(texture.mSize.x), int(texture.mSize.y)};
    return texture.mHandle;
}
} // namespace studio
