#include "tools/timeline/History.h"

namespace timeline
{
void cHistory::Add(tPatches step)
{
    mSteps.resize(mDone);
    mSteps.push_back(std::move(step));
    mDone++;
}

void cHistory::Undo(cText &text) { text.Undo(mSteps[--mDone]); }

void cHistory::Redo(cText &text) { text.Redo(mSteps[mDone++]); }
} // namespace timeline
