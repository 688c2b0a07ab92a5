#pragma once

#include "tools/timeline/Text.h"

#include <vector>

namespace timeline
{
/// Undo and redo without end. It keeps what each step changed, not the texts.
class cHistory
{
public:
    /// A step that has just been done. What could be redone is gone.
    void Add(tPatches step);

    bool CanUndo() const { return mDone > 0; }
    bool CanRedo() const { return mDone < mSteps.size(); }
    void Undo(cText &text); ///< only where CanUndo
    void Redo(cText &text); ///< only where CanRedo

private:
    std::vector<tPatches> mSteps;
    size_t mDone = 0; ///< how many of them the text has
};
} // namespace timeline
