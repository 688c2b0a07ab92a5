#pragma once

#include <string>

namespace vyr::platform
{
/// Finds `name` among the program's resources and writes its path, with a terminating zero, into
/// `buffer`. There are no application bundles on this system: names are relative to the working
/// directory, so the path is the name itself. False, and an empty path, when it does not fit into
/// `size` bytes.
bool ResolveResource(const std::string &name, char *buffer, size_t size);
} // namespace vyr::platform
