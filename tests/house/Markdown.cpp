#include "tests/house/Markdown.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <sstream>

namespace house
{
namespace
{
std::vector<std::string> Lines(const std::filesystem::path &path)
{
    std::istringstream text(test::ReadFile(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

bool IsFence(const std::string &line) { return line.starts_with("```"); }

std::string Trimmed(const std::string &text)
{
    const size_t begin = text.find_first_not_of(" `");
    const size_t end = text.find_last_not_of(" `");
    return begin == std::string::npos ? "" : text.substr(begin, end - begin + 1);
}

// "| a | b |" is a, b.
std::vector<std::string> Cells(const std::string &row)
{
    std::vector<std::string> cells;
    std::istringstream text(row.substr(1));
    for (std::string cell; std::getline(text, cell, '|');)
        cells.push_back(Trimmed(cell));
    return cells;
}

// "`night.cpp`:" is night.cpp.
std::string FileAbove(const std::vector<std::string> &lines, size_t fence)
{
    for (size_t i = fence; i-- > 0;) {
        const std::string &line = lines[i];
        if (line.empty())
            continue;
        return line.starts_with("`") && line.ends_with("`:") ? line.substr(1, line.size() - 3) : "";
    }
    return "";
}

// In order, with a word on where they stand for whoever reads the output.
std::string Commands(const cBlock &block)
{
    const std::string where = "echo \"== line " + std::to_string(block.mLine) + ", $SECONDS s\"\n";
    if (block.mLanguage == "sh")
        return where + block.mText;
    if (block.mFile.empty())
        return "";
    return where + "cat >" + block.mFile + " <<'END OF THE FILE'\n" + block.mText +
           "END OF THE FILE\n";
}

void Replace(std::string &text, const std::string &from, const std::string &to)
{
    const size_t at = text.find(from);
    if (at == std::string::npos)
        ADD_FAILURE() << "the page no longer says: " << from;
    else
        text.replace(at, from.size(), to);
}

bool IsRow(const std::string &line) { return line.starts_with("|"); }
} // namespace

std::vector<cBlock> CodeBlocks(const std::filesystem::path &path)
{
    const std::vector<std::string> lines = Lines(path);
    std::vector<cBlock> blocks;
    for (size_t i = 0; i < lines.size(); i++) {
        if (!IsFence(lines[i]))
            continue;
        cBlock block{lines[i].substr(3), FileAbove(lines, i), "", int(i) + 1};
        for (i++; i < lines.size() && !IsFence(lines[i]); i++)
            block.mText += lines[i] + "\n";
        blocks.push_back(block);
    }
    return blocks;
}

std::string Script(const std::filesystem::path &path, const tShortcuts &shortcuts)
{
    std::string script;
    for (const cBlock &block : CodeBlocks(path))
        script += Commands(block);
    for (const auto &[from, to] : shortcuts)
        Replace(script, from, to);
    return script;
}

std::vector<std::vector<std::string>> TableUnder(const std::filesystem::path &path,
                                                 const std::string &heading)
{
    const std::vector<std::string> lines = Lines(path);
    size_t i = 0;
    while (i < lines.size() && !(IsRow(lines[i]) && Cells(lines[i])[0] == heading))
        i++;
    std::vector<std::vector<std::string>> rows;
    for (i += 2; i < lines.size() && IsRow(lines[i]); i++)
        rows.push_back(Cells(lines[i]));
    return rows;
}
} // namespace house
