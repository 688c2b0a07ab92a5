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
    std::string mText;
    int mLine = 0; ///< of the opening fence, from 1
};

/// The code blocks of the page at `path`, in its order.
std::vector<cBlock> CodeBlocks(const std::filesystem::path &path);

/// The cells of the first table whose first column is headed `heading`; its head and rule left out.
/// Backquotes are taken off.
std::vector<std::vector<std::string>> TableUnder(const std::filesystem::path &path,
                                                 const std::string &heading);
} // namespace house
