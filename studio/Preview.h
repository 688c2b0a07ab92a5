#pragma once

#include "show/ShowFolder.h"
#include "studio/Window.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/Picture.h"
#include "tools/record/Stage.h"
#include "tools/timeline/Document.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace studio
{
/// The show's picture: the frame that a recording would have at a row, as a texture. It is drawn by
/// the recorder's own stage, in the context that the window keeps for the show. Every call leaves
/// the page's context current. The working directory is the show's folder.
class cPreview
{
public:
    /// Opens the show of `folder` to be drawn at `size`. Throws vyr::cShowError or
    /// record::cFailure. The show is loaded by Load.
    cPreview(cWindow &window, const std::filesystem::path &folder, const record::cSize &size);
    ~cPreview();
    cPreview(const cPreview &) = delete;
    cPreview &operator=(const cPreview &) = delete;

    const vyr::cShowDescription &Description() const { return mShow->GetDescription(); }
    record::cSize Size() const { return mSize; }

    /// Loads tracks, shaders, pictures, objects. False with one line in `error`; it may be tried
    /// again when something has changed.
    bool Load(std::string &error);
    bool IsLoaded() const { return mIsLoaded; }
    double LoadSeconds() const { return mLoadSeconds; } ///< that the first Load took

    /// The tracks have these keys from now on. Those that the show does not have are left out.
    void SetTracks(const std::vector<timeline::cShowTrack> &tracks);
    void SetTracks(const std::vector<timeline::cTrack> &tracks);

    /// Draws the frame at `row`, unless it is there. False with one line in `error`, and the
    /// picture before stays.
    bool Draw(double row, std::string &error);
    /// What is drawn changes without a change of the row.
    void Forget() { mDrawn.reset(); }
    unsigned int Texture() const { return mTexture; }     ///< rows bottom first
    double FrameSeconds() const { return mFrameSeconds; } ///< that the last frame took to be drawn
    record::cPicture Read();                              ///< the picture as it is, for a still

    /// The file `path`, as the show names it, has changed. False with one line in `error`, and what
    /// was made of it before is drawn on.
    bool Refresh(const std::string &path, std::string &error);
    /// The folder's library is another one: it is opened, loaded, and takes the place of the one
    /// that is drawn. False with one line in `error`, and that one is drawn on.
    bool Exchange(std::string &error);

    /// The OpenGL name of the picture in `path`, with its size in pixels; 0: it can't be read.
    unsigned int FindPicture(const std::string &path, record::cSize &size);

private:
    void SetKeys(const std::string &track, const std::vector<sync_key> &keys);
    void FindTexture();
    bool Reload(std::unique_ptr<vyr::cShowFolder> show, std::string &error);

    cWindow &mWindow;
    const std::filesystem::path mFolder;
    record::cSize mSize;
    std::unique_ptr<vyr::cShowFolder> mShow;
    std::unique_ptr<record::cStage> mStage;
    bool mIsLoaded = false;
    std::optional<int64_t> mDrawn; ///< millionths of a row
    unsigned int mTexture = 0;
    double mFrameSeconds = 0.0, mLoadSeconds = 0.0;
};
} // namespace studio
