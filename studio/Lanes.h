#pragma once

#include "show/Show.h"
#include "studio/LaneCurve.h"
#include "tools/timeline/Document.h"

#include <map>
#include <string>
#include <vector>

namespace studio
{
/// A track on the page.
struct cLane
{
    std::string mTrack;
    std::vector<std::string> mFiles; ///< that its values pick from, by number; empty: it picks none
    std::string mProblem;            ///< why it is not as the author means it; empty: it is
    bool mIsHidden = false, mIsSolo = false;

    std::vector<timeline::cKeyId> mIds; ///< of the keys, in the curve's order
    cLaneCurve mCurve{{}};
    float mLow = 0.0f, mHigh = 1.0f; ///< the values on the page; the lower one is less

    bool IsPicking() const { return !mFiles.empty(); }
    /// All its values are whole numbers that hold: they are counted, not measured.
    bool IsCounting() const;
};

/// The tracks as a list: what the show has in its order, then what only the timeline has.
class cLanes
{
public:
    /// Takes the tracks as they are now. What a hand has hidden stays hidden; values that fit on
    /// the page as it is leave it so.
    void Take(const vyr::cShowDescription &show, const timeline::cDocument &document);

    /// While a hand drags: curves of `changed`, as they would be. The keys' names are those of the
    /// document no more, so none can be picked.
    void TakePreview(const std::vector<timeline::cTrack> &changed);

    std::vector<cLane> &All() { return mLanes; }
    cLane *Find(const std::string &track);

    /// Those on the page: of those that are alone, if there are any, and not hidden, the ones whose
    /// name holds the words of `search`, in any order, large and small letters alike.
    std::vector<cLane *> Shown(const std::string &search);

private:
    std::vector<cLane> mLanes;
};
} // namespace studio
