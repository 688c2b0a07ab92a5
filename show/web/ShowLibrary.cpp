// In a browser a show is linked into the program that plays it.

#include "show/ShowLibrary.h"

#include "show/ShowFolder.h"

extern "C" vyr::cShow *vyr_create_show();

namespace vyr
{
bool IsShowFolder(const std::filesystem::path &) { return true; }

std::string FindLibraryFault(const std::filesystem::path &) { return {}; }

void *OpenShowLibrary(const std::filesystem::path &) { return nullptr; }

void CloseShowLibrary(void *) {}

std::unique_ptr<cShow> CreateShow(void *) { return std::unique_ptr<cShow>(vyr_create_show()); }
} // namespace vyr
