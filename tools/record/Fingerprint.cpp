#include "tools/record/Fingerprint.h"

#include "show/ShowFolder.h"
#include "tools/record/Failure.h"

#include <xxhash.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>

namespace fs = std::filesystem;

namespace record
{
namespace
{
using tPaths = std::set<std::string>;

tPaths ListFiles(const vyr::cShowDescription &description)
{
    tPaths paths(description.mFiles.begin(), description.mFiles.end());
    paths.insert({vyr::kShowLibrary, description.mMusic});
    for (const std::string &track : description.mTracks)
        paths.insert(vyr::GetTrackFile(track));
    for (const auto &choice : description.mChoices)
        paths.insert(choice.mFiles.begin(), choice.mFiles.end());
    std::error_code error; // a show without this folder has none of its files
    for (fs::recursive_directory_iterator entry("data", error), end; !error && entry != end;
         entry.increment(error))
        paths.insert(entry->path().string());
    return paths;
}

/// The hash as it grows.
class cHash
{
public:
    cHash() : mState(XXH3_createState(), XXH3_freeState) { XXH3_128bits_reset(mState.get()); }

    void Add(const void *bytes, size_t count) { XXH3_128bits_update(mState.get(), bytes, count); }

    std::string ToText() const
    {
        const XXH128_hash_t hash = XXH3_128bits_digest(mState.get());
        char text[33];
        std::snprintf(text, sizeof text, "%016llx%016llx",
                      static_cast<unsigned long long>(hash.high64),
                      static_cast<unsigned long long>(hash.low64));
        return text;
    }

private:
    std::unique_ptr<XXH3_state_t, XXH_errorcode (*)(XXH3_state_t *)> mState;
};

// Its name and its size are part of it: no other division into files has the same bytes.
void AddFile(const std::string &path, cHash &hash)
{
    const std::string head = path + '\0' + std::to_string(fs::file_size(path)) + '\0';
    hash.Add(head.data(), head.size());
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file)
        throw cFailure(path + ": can't be read");
    std::array<char, 1 << 16> block;
    while (const size_t count = std::fread(block.data(), 1, block.size(), file.get()))
        hash.Add(block.data(), count);
    if (std::ferror(file.get()))
        throw cFailure(path + ": can't be read");
}
} // namespace

std::string FingerprintShow(const vyr::cShowDescription &description)
{
    cHash hash;
    std::error_code ignored;
    for (const std::string &path : ListFiles(description))
        if (fs::is_regular_file(path, ignored))
            AddFile(path, hash);
    return hash.ToText();
}
} // namespace record
