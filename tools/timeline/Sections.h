#pragma once

#include "tools/timeline/Timeline.h"

#include <string>
#include <vector>

namespace timeline
{
/// A stretch of the show with a name; rows.
struct cSectionSpan
{
    std::string mName;
    double mFrom = 0.0, mTo = 0.0;
};

/// The sections of `timeline` that have a place and a length, and their repetitions, by their
/// start: what a ruler shows. Patterns are left out: they would hide the sections that they lie in.
std::vector<cSectionSpan> SectionsOf(const cTimeline &timeline);
} // namespace timeline
