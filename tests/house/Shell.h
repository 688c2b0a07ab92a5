#pragma once

#include "tests/support/Process.h"

#include <filesystem>
#include <string>

namespace house
{
/// Runs `commands` as a person would type them, in bash; the first that fails ends it.
test::cProcessResult Shell(const std::string &commands, const std::filesystem::path &folder,
                           double seconds = test::hangSeconds);

/// What there is to read when commands went wrong: all that they printed.
std::string Transcript(const test::cProcessResult &result);

/// An empty folder of this name inside the build, the same in every run: what is compiled in it is
/// found in the compiler cache the next time.
std::filesystem::path FreshFolder(const std::string &name);
} // namespace house
