#include "tools/timeline/Diff.h"

#include <algorithm>
#include <vector>

namespace timeline
{
namespace
{
const size_t context = 3; // lines

/// A line of the diff: of both texts (' '), of the old one ('-') or of the new one ('+').
struct cDiffLine
{
    char mSign = ' ';
    const cTextLine *mLine = nullptr;
};

bool IsSame(const cTextLine &a, const cTextLine &b)
{
    return a.mId == b.mId && a.mBytes == b.mBytes;
}

// Lines keep their identity and their order, so that one walk along both texts finds them all.
std::vector<cDiffLine> Compare(const cText &before, const cText &after)
{
    std::vector<cDiffLine> lines;
    int i = 0, j = 0;
    while (i < before.Count() || j < after.Count()) {
        if (i < before.Count() && j < after.Count() && IsSame(before.At(i), after.At(j))) {
            lines.push_back({' ', &before.At(i++)});
            j++;
            continue;
        }
        // Up to the next line that both have unchanged: the old ones, then the new ones.
        const auto isKept = [&](int line) {
            const int place = after.Find(before.At(line).mId);
            return place >= j && IsSame(before.At(line), after.At(place));
        };
        while (i < before.Count() && !isKept(i))
            lines.push_back({'-', &before.At(i++)});
        const int end = i < before.Count() ? after.Find(before.At(i).mId) : after.Count();
        while (j < end)
            lines.push_back({'+', &after.At(j++)});
    }
    return lines;
}

// "12" or "12,3", counted from 1; of no line the one before.
std::string Range(size_t first, size_t count)
{
    const size_t number = count == 0 ? first : first + 1;
    std::string range = std::to_string(number);
    if (count != 1)
        range.append(",").append(std::to_string(count));
    return range;
}

size_t CountOf(const std::vector<cDiffLine> &lines, size_t begin, size_t end, char other)
{
    return size_t(std::count_if(lines.begin() + long(begin), lines.begin() + long(end),
                                [&](const cDiffLine &line) { return line.mSign != other; }));
}

void AppendHunk(const std::vector<cDiffLine> &lines, size_t begin, size_t end, std::string &diff)
{
    diff += "@@ -" + Range(CountOf(lines, 0, begin, '+'), CountOf(lines, begin, end, '+')) + " +" +
            Range(CountOf(lines, 0, begin, '-'), CountOf(lines, begin, end, '-')) + " @@\n";
    for (size_t i = begin; i < end; i++) {
        diff.append(1, lines[i].mSign).append(lines[i].mLine->mBytes);
        if (!lines[i].mLine->mBytes.ends_with('\n'))
            diff += "\n\\ No newline at end of file\n";
    }
}
} // namespace

std::string UnifiedDiff(const std::string &file, const cText &before, const cText &after)
{
    const std::vector<cDiffLine> lines = Compare(before, after);
    std::string diff;
    for (size_t i = 0; i < lines.size(); i++) {
        if (lines[i].mSign == ' ')
            continue;
        const size_t begin = i - std::min(i, context);
        size_t last = i; // of the changes that are too near for a hunk of their own
        for (size_t j = i; j < lines.size() && j <= last + 2 * context; j++)
            if (lines[j].mSign != ' ')
                last = j;
        i = std::min(last + context, lines.size() - 1);
        if (diff.empty())
            diff = "--- " + file + "\n+++ " + file + "\n";
        AppendHunk(lines, begin, i + 1, diff);
    }
    return diff;
}
} // namespace timeline
