#pragma once

#include "show/ShowFolder.h"

#include <filesystem>
#include <map>

namespace record
{
/// The folder of the show: `asked` when it is not empty, else the one that this program stands in
/// when that is a show's, else the working directory. Throws cFailure when there is no show.
std::filesystem::path FindShow(const std::string &asked);

// A player of shows trusts their files, as a player may: a show is checked before it is played. A
// recorder is also there for a show that is still being made, so it looks first. Each of these
// throws cFailure, which names the file, when something can't be used. The working directory is the
// show's folder.

/// The tracks and the files of the description's list are there and well formed. A track may be
/// missing: it is 0 throughout, which a line on standard error says.
void CheckShowFiles(const vyr::cShowDescription &description);
/// Of a show that has loaded: its shaders were compiled and linked, the pictures of its list can be
/// read.
void CheckLoaded(const vyr::cShowDescription &description);

/// What the tracks choose, row by row, once the show is loaded: no index beyond its table, no file
/// that can't be read. Files that no row asks for may be missing.
class cRowCheck
{
public:
    explicit cRowCheck(const vyr::cShowFolder &show) : mShow(show) {}
    void Check(double row);

private:
    void CheckChoice(const vyr::cShowDescription::cChoice &choice, double row);

    const vyr::cShowFolder &mShow;
    std::map<std::string, bool> mIsUsable; ///< by path; each is looked at once
};
} // namespace record
