#pragma once

#include "studio/LaneCurve.h"
#include "tools/timeline/Edits.h"

#include <vector>

namespace studio
{
/// A key as it lies on the page.
struct cPlacedKey
{
    timeline::cKeyId mId;
    cPoint mAt;
};

/// Finds the key that a hand means. A key takes at least ten pixels, whatever it is drawn as. The
/// nearest comes first; clicking again on the same spot goes through those that lie below it, and
/// round again.
class cPicker
{
public:
    /// `scale` of the page: 1 to 3.
    explicit cPicker(double scale) : mReach(kReach * scale) {}

    /// From the middle of a key, on each side.
    static constexpr double kReach = 6.0;

    /// The keys within reach of `at`, the nearest first, of two at one distance the later drawn.
    /// `keys` are those on the page, in the order in which they are drawn.
    std::vector<timeline::cKeyId> KeysAt(const std::vector<cPlacedKey> &keys, cPoint at) const;

    /// A click: the key that it means, kNoLine in its id for none.
    timeline::cKeyId Click(const std::vector<cPlacedKey> &keys, cPoint at);

    /// The keys within the box of two corners, in their order.
    static std::vector<timeline::cKeyId> KeysIn(const std::vector<cPlacedKey> &keys, cPoint corner,
                                                cPoint other);

private:
    const double mReach;
    std::vector<timeline::cKeyId> mStack; ///< that the last click found
    cPoint mLast;
    size_t mNext = 0; ///< of the stack
};
} // namespace studio
