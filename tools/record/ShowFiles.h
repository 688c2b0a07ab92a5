#pragma once

#include "demo/Show.h"

#include <filesystem>

namespace record
{
/// The folder of the show: `asked` when it is not empty, else the one that this program stands in
/// when that has a data folder, else the working directory. Throws cFailure when there is no show.
std::filesystem::path FindShow(const std::string &asked);

// The player of the show trusts its files, as a player may: a show is checked before it is played.
// A recorder is also there for a show that is still being made, so it looks first. Each of these
// throws cFailure, which names the file, when something can't be used.

/// The tracks, shaders and objects in the working directory are there and well formed. A track may
/// be missing: it is 0 throughout, which a line on standard error says.
void CheckShowFiles();
/// The shaders, once loaded, were compiled and linked.
void CheckPrograms(const demo::cAssets &assets);
/// What the tracks choose at `row` exists: no index beyond its table, no picture that can't be
/// read. Pictures that no row asks for may be missing.
void CheckRow(const demo::cShow &show, double row);
} // namespace record
