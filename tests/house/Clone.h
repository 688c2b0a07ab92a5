#pragma once

#include <filesystem>
#include <string>

namespace house
{
/// A folder of this name that looks like a clone of the repository: its scripts, presets, content
/// and data, and in place of the sources a project with nothing to compile and one test.
std::filesystem::path MakeClone(const std::string &name);

/// Copies the show and the tools as they were built into the clone's build/.
void AddBuild(const std::filesystem::path &clone);
} // namespace house
