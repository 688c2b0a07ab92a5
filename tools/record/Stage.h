#pragma once

#include "platform/Window.h"
#include "show/ShowFolder.h"
#include "show/Stage.h"
#include "tools/record/FrameGrid.h"
#include "tools/record/Picture.h"
#include "tools/record/ShowFiles.h"
#include "tools/record/WindowFramebuffer.h"

#include <optional>
#include <string>

namespace record
{
/// Where a show is drawn to be recorded: off screen, into a framebuffer of the asked size with a
/// depth buffer. One at a time, on the main thread. The working directory is the show's folder.
class cStage
{
public:
    /// Opens the context of `system` and the framebuffer, for `show`, which has to outlive the
    /// stage. Throws cUsageError for a size above what the driver draws, cFailure when there is no
    /// OpenGL.
    cStage(vyr::cShowFolder &show, const cSize &size,
           const vyr::platform::WindowSystem &system = vyr::platform::OffscreenWindowSystem());
    ~cStage();
    cStage(const cStage &) = delete;
    cStage &operator=(const cStage &) = delete;

    /// Loads the show. Throws cFailure or cShowError, naming the file, when something in it can't
    /// be read or used.
    void LoadShow();
    /// Another show is drawn from now on, once it is loaded; pictures that are there are kept. It
    /// has to outlive the stage.
    void SetShow(vyr::cShowFolder &show);
    const vyr::cShowFolder &GetShow() const { return *mShow; }
    /// Throws cFailure unless what the tracks choose at `row` can be shown.
    void CheckRow(double row);

    /// Draws the frame of music position `row`, `seconds`, and leaves it in the framebuffer bound
    /// now.
    void Draw(double row, double seconds);

    /// Draws the frames that a recording would have drawn before a frame at `microRow` and that
    /// reach into it: the last one of which the show says so, and the last one of all, which leaves
    /// its OpenGL state. A frame then looks the same wherever a recording starts.
    void DrawFramesBefore(const cFrameGrid &grid, int64_t microRow);

    /// Draws the frame at `microRow` as a recording on `grid` would show it, with those that reach
    /// into it before, and leaves it in the framebuffer bound now. A row that is printed for a
    /// frame of the grid stands for that frame.
    void DrawAlone(const cFrameGrid &grid, int64_t microRow);
    cPicture DrawStill(const cFrameGrid &grid, int64_t microRow);

    const cSize &GetSize() const { return mSize; }
    static std::string GetRendererName(); ///< the driver's, with its version

private:
    int64_t FindFrameThatReachesLater(const cFrameGrid &grid, int64_t end) const;

    vyr::cShowFolder *mShow;
    cSize mSize;
    std::optional<cRowCheck> mRowCheck;
    vyr::cStage mStage;
    unsigned int mFramebuffer = 0;
    std::optional<cWindowFramebuffer> mWindow; // which the show takes for the window's
};
} // namespace record
