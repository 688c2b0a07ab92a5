#pragma once

#include "tools/support/Faults.h"
#include "tools/timeline/Timeline.h"

#include <string>
#include <string_view>
#include <vector>

namespace timeline
{
/// What is wrong at a place of a timeline: "expected X, found Y".
struct cTextFault
{
    cPlace mPlace;
    std::string mWhat;
};
using tTextFaults = std::vector<cTextFault>;

inline constexpr size_t kMaximumFaults = 10'000; ///< then reading ends: this is no timeline

/// Reads a whole timeline. Every faulty line adds a fault to `faults` and is left out; reading goes
/// on behind it as if it had been right, so that one fault does not bring others.
cTimeline ParseTimeline(std::string_view text, tTextFaults &faults);

/// `faults` in the order of the text, as reports about `file`.
tools::tFaults ToReports(const std::string &file, tTextFaults faults);
} // namespace timeline
