#include "studio/Picker.h"

#include <algorithm>
#include <cmath>

namespace studio
{
namespace
{
const double sameSpot = 3.0; // pixels: a hand does not hold quite still
} // namespace

std::vector<timeline::cKeyId> cPicker::KeysAt(const std::vector<cPlacedKey> &keys, cPoint at) const
{
    struct cFound
    {
        double mDistance;
        timeline::cKeyId mId;
    };
    std::vector<cFound> found;
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        const double dx = std::fabs(key->mAt.x - at.x), dy = std::fabs(key->mAt.y - at.y);
        if (dx <= mReach && dy <= mReach)
            found.push_back({dx * dx + dy * dy, key->mId});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const cFound &a, const cFound &b) { return a.mDistance < b.mDistance; });
    std::vector<timeline::cKeyId> ids;
    for (const cFound &key : found)
        ids.push_back(key.mId);
    return ids;
}

timeline::cKeyId cPicker::Click(const std::vector<cPlacedKey> &keys, cPoint at)
{
    const std::vector<timeline::cKeyId> stack = KeysAt(keys, at);
    const bool isAgain =
        std::hypot(at.x - mLast.x, at.y - mLast.y) <= sameSpot &&
        std::is_permutation(stack.begin(), stack.end(), mStack.begin(), mStack.end());
    if (!isAgain) {
        mStack = stack;
        mLast = at;
        mNext = 0;
    }
    return mStack.empty() ? timeline::cKeyId{} : mStack[mNext++ % mStack.size()];
}

std::vector<timeline::cKeyId> cPicker::KeysIn(const std::vector<cPlacedKey> &keys, cPoint corner,
                                              cPoint other)
{
    const auto [left, right] = std::minmax(corner.x, other.x);
    const auto [top, bottom] = std::minmax(corner.y, other.y);
    std::vector<timeline::cKeyId> ids;
    for (const cPlacedKey &key : keys)
        if (key.mAt.x >= left && key.mAt.x <= right && key.mAt.y >= top && key.mAt.y <= bottom)
            ids.push_back(key.mId);
    return ids;
}
} // namespace studio
