#include "tests/house/Markdown.h"

#include "tests/support/TestFiles.h"

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

bool IsRow(const std::string &line) { return line.starts_with("|"); }
} // namespace

std::vector<cBlock> CodeBlocks(const std::filesystem::path &path)
{
    const std::vector<std::string> lines = Lines(path);
    std::vector<cBlock> blocks;
    for (size_t i = 0; i < lines.size(); i++) {
        if (!IsFence(lines[i]))
            continue;
        cBlock block{lines[i].substr(3), "", int(i) + 1};
        for (i++; i < lines.size() && !IsFence(lines[i]); i++)
            block.mText += lines[i] + "\n";
        blocks.push_back(block);
    }
    return blocks;
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
