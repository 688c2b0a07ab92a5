#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace house
{
/// A fenced code block of a page.
struct cBlock
{
    std::string mLanguage; ///< the word after the fence: sh, cpp, cmake, text; may be empty
    std::string mFile;     ///< named in backquotes, with a colon, above the block; else empty
    std::string mText;
    int mLine = 0; ///< of the opening fence, from 1
};

/// The code blocks of the page at `path`, in its order.
std::vector<cBlock> CodeBlocks(const std::filesystem::path &path);

/// What stands in a page, and what a test puts in its place to be done sooner.
using tShortcuts = std::vector<std::pair<std::string, std::string>>;

/// All that the page at `path` tells its reader to type, as one bash script: its `sh` blocks, in
/// its order, and the files that it shows, written where they stand. A shortcut for something that
/// is not there is a failure of the running test.
std::string Script(const std::filesystem::path &path, const tShortcuts &shortcuts);

/// The cells of the first table whose first column is headed `heading`; its head and rule left out.
/// Backquotes are taken off.
std::vector<std::vector<std::string>> TableUnder(const std::filesystem::path &path,
                                                 const std::string &heading);
} // namespace house
