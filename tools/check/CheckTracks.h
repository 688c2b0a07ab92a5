#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"
#include "tools/support/TrackFolder.h"

namespace check
{
/// The show's track files: there, legal, within the show's rows and the files that they choose
/// from; and no other track files.
void CheckTracks(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                 cFindings &findings);
} // namespace check
