#include "show/ShowLibrary.h"

#include "show/ShowFolder.h"

#include <array>
#include <cstring>
#include <fstream>

#include <dlfcn.h>
#include <elf.h>

namespace fs = std::filesystem;

namespace vyr
{
namespace
{
using tHeader = std::array<char, sizeof(Elf64_Ehdr)>;
using tCreateShow = cShow *();

// The beginning of a program or a library; short when the file is.
size_t ReadHeader(const fs::path &path, tHeader &header)
{
    std::ifstream file(path, std::ios::binary);
    file.read(header.data(), std::streamsize(header.size()));
    return size_t(file.gcount());
}

// What says for which machine a library is: word size, byte order, processor.
bool IsForTheSameMachine(const tHeader &a, const tHeader &b)
{
    const auto at = [](const tHeader &header, size_t offset) { return header.data() + offset; };
    const size_t machine = offsetof(Elf64_Ehdr, e_machine);
    return std::memcmp(at(a, EI_CLASS), at(b, EI_CLASS), 2) == 0 &&
           std::memcmp(at(a, machine), at(b, machine), sizeof(Elf64_Half)) == 0;
}

// dlerror names the library's path first, which the caller has said already.
std::string TakeLoaderError(const std::string &path)
{
    const char *error = dlerror();
    std::string text = error ? error : "can't be loaded";
    if (text.starts_with(path + ": "))
        text.erase(0, path.size() + 2);
    return text;
}

// The loader takes a library for one that it has when only the names agree, whatever has been built
// there since. While a show is open and the next one of its folder is being opened, they have to
// differ.
std::string NextNameOf(const fs::path &library)
{
    static unsigned int opened = 0;
    std::string name = library.parent_path().string();
    for (unsigned int i = opened++ % 8; i > 0; i--)
        name += "/.";
    return name + "/" + library.filename().string();
}

template <typename T>
T *FindSymbol(void *library, const char *name)
{
    return reinterpret_cast<T *>(dlsym(library, name));
}
} // namespace

bool IsShowFolder(const fs::path &folder)
{
    std::error_code ignored;
    return fs::exists(folder / kShowLibrary, ignored);
}

std::string FindLibraryFault(const fs::path &folder)
{
    const fs::path path = folder / kShowLibrary;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return "not there, so this is no show's folder";
    if (error)
        return error.message();
    if (!fs::is_regular_file(status))
        return "not a file";
    tHeader own{}, header{};
    if (!std::ifstream(path))
        return "can't be read";
    if (ReadHeader(path, header) < header.size() ||
        std::memcmp(header.data(), ELFMAG, SELFMAG) != 0)
        return "not a library";
    ReadHeader("/proc/self/exe", own);
    return IsForTheSameMachine(own, header) ? "" : "a library for another kind of machine";
}

void *OpenShowLibrary(const fs::path &folder)
{
    if (const std::string fault = FindLibraryFault(folder); !fault.empty())
        throw cShowError(fault);
    const std::string path = NextNameOf(fs::canonical(folder / kShowLibrary));
    void *library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw cShowError(TakeLoaderError(path));
    return library;
}

void CloseShowLibrary(void *library) { dlclose(library); }

std::unique_ptr<cShow> CreateShow(void *library)
{
    auto *interface = FindSymbol<const int>(library, "vyr_show_interface");
    auto *create = FindSymbol<tCreateShow>(library, "vyr_create_show");
    if (!interface || !create)
        throw cShowError("no show in it: VYR_SHOW stands in none of its sources");
    if (*interface != kShowInterface)
        throw cShowError("made for version " + std::to_string(*interface) +
                         " of the interface of shows, and this program has version " +
                         std::to_string(kShowInterface) + ": build it anew");
    return std::unique_ptr<cShow>(create());
}
} // namespace vyr
