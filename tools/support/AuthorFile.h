#pragma once

#include <filesystem>
#include <string>

namespace tools
{
/// Puts `after` into the file of an author, where `before` is expected to be: when somebody else
/// has written to it meanwhile, nothing is. Whatever happens, a kill included, the file holds the
/// old bytes or the new ones: the new ones are written beside it, forced to the disk, and take its
/// place. Its mode stays; a symbolic link stays, and what it points to is replaced. False with one
/// line in `error` when it fails, and the file is as it was.
bool ReplaceAuthorFile(const std::filesystem::path &path, const std::string &before,
                       const std::string &after, std::string &error);
} // namespace tools
