#pragma once

#include "studio/Events.h"

#include <string>
#include <vector>

namespace studio
{
/// One thing that a script does.
struct cStep
{
    enum eKind
    {
        EVENT,      ///< mEvent, in a frame of its own
        TO_LANE,    ///< the pointer goes to mText's lane at time mTime, at mValue or at the curve
        TO_RULER,   ///< the pointer goes to mTime on the ruler
        SEEK,       ///< the playhead goes to mTime
        WAIT,       ///< mCount frames
        SETTLE,     ///< until nothing goes on in the background
        RUN,        ///< the shell's command mText, to its end
        SCREENSHOT, ///< the window into mText, a PNG
        PRINT       ///< mText's value on standard output: title, message, problems, selection, row
    };
    eKind mKind = EVENT;
    cEvent mEvent;
    std::string mText, mTime, mValue;
    int mCount = 0;
    int mLine = 0; ///< of the script, from 1
};

/// Reads a script, one instruction a line:
///
///     key Ctrl+Z              a key goes down and up; Shift+, Alt+ too; Space, Left, F1, Enter ...
///     hold Shift / let Shift  a modifier stays down while the pointer works
///     type WORDS              text
///     move X Y                the pointer, in pixels of the window
///     lane TRACK TIME [VALUE] the pointer to a key, or to a value of a lane
///     ruler TIME
///     seek TIME               the playhead
///     press / release [left|right|middle], click [left|right], double
///     wheel STEPS
///     wait FRAMES, settle, run COMMAND, screenshot FILE, print WHAT
///
/// Empty lines and those that begin with # are left out. False with "line N: ..." in `error`.
bool ReadScript(const std::string &text, std::vector<cStep> &steps, std::string &error);
} // namespace studio
