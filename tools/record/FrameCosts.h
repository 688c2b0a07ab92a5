#pragma once

#include "tools/record/Manifest.h"

#include <string>

namespace record
{
/// What each frame costs, as a text: a line a frame with its number, its row, and the milliseconds
/// from the beginning of its drawing until the driver has finished it, by the clock and by the
/// processor (all threads of this program together). Of a graphics card's work only the clock
/// knows; of the software renderer's, on a machine that does other work too, only the processor's
/// time is worth something.
///
/// Waits for the driver at each frame, so a recording that is measured is slower than others.
class cFrameCosts
{
public:
    /// `remark` stands in the first line. Throws cFailure.
    cFrameCosts(const std::string &path, const std::string &remark);

    void Begin();                        ///< of a frame
    void End(int64_t frame, double row); ///< of the same; throws cFailure
    void Finish();                       ///< throws cFailure

private:
    struct cTimes
    {
        double mClock = 0, mProcessor = 0; ///< milliseconds
    };
    static cTimes Now();

    cTextFile mFile;
    cTimes mBegin;
};
} // namespace record
