#pragma once

#include "show/Show.h"

#include <filesystem>
#include <memory>

namespace vyr
{
/// The show.so of `folder`, loaded; the caller closes it, after the show made of it. Throws
/// cShowError. In a browser, where the show is linked into the program, it is null.
void *OpenShowLibrary(const std::filesystem::path &folder);
void CloseShowLibrary(void *library);

/// Makes the show that `library` exports by VYR_SHOW. Throws cShowError where there is none, or one
/// of another version of the interface.
std::unique_ptr<cShow> CreateShow(void *library);
} // namespace vyr
