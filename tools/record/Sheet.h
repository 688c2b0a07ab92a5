#pragma once

#include "show/Tempo.h"
#include "tools/record/Recording.h"

#include <vector>

namespace record
{
/// Draws the contact sheet: a picture every `options.mEveryBars` bars between `mFrom` and `mTo`,
/// each with its row, bar and time under it. Throws cFailure.
eOutcome RecordSheet(const cOptions &options, vyr::cShowFolder &show);

/// The rows, in millionths, at which the sheet has a picture.
std::vector<int64_t> SheetRows(const cOptions &options, const vyr::cTempo &tempo);
/// What stands under the picture at `microRow`: "bar 24   row 768   0:43.6".
std::string SheetLabel(int64_t microRow, const vyr::cTempo &tempo);
} // namespace record
