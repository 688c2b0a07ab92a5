#include "tools/timeline/Sections.h"

#include <algorithm>

namespace timeline
{
namespace
{
void AddPlaces(const cSection &section, std::vector<cSectionSpan> &sections)
{
    for (const cPlacement &placement : section.mPlacements) {
        for (long long i = 0; i < placement.mCount; i++) {
            const double from = double(placement.mStart + i * placement.mStep);
            sections.push_back({placement.mName, from, from + *section.mLength});
        }
    }
}
} // namespace

std::vector<cSectionSpan> SectionsOf(const cTimeline &timeline)
{
    std::vector<cSectionSpan> sections;
    for (const cSection &section : timeline.mSections)
        if (section.mLength && !section.mIsPattern)
            AddPlaces(section, sections);
    std::sort(sections.begin(), sections.end(),
              [](const auto &a, const auto &b) { return a.mFrom < b.mFrom; });
    return sections;
}
} // namespace timeline
