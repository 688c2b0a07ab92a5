#pragma once

#include "tools/check/Findings.h"
#include "tools/support/TrackFolder.h"

namespace check
{
/// The show's 22 track files: there, legal, within the show's rows and the tables that they pick
/// from; and no other track files.
void CheckTracks(tools::cTrackFolder &folder, cFindings &findings);

/// How many entries there are to pick for the track called `name`; 0 when it picks none.
int EntryCount(const std::string &name);
} // namespace check
