#pragma once

#include <filesystem>
#include <string>

namespace test
{
/// Writes a small complete show into `folder`; `library` is "Broken", a show that goes wrong where
/// the environment's VYR_BROKEN says (see Broken.cpp) and is good without it, "Effect", green
/// with a red middle by way of a render target, "NoShow" or "OtherVersion".
void WriteBrokenShow(const std::filesystem::path &folder, const std::string &library = "Broken");
} // namespace test
