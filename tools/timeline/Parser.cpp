#include "tools/timeline/Parser.h"

#include "tools/support/Nearest.h"
#include "tools/timeline/Lexer.h"
#include "tools/timeline/Statements.h"

#include <algorithm>

namespace timeline
{
namespace
{
// Takes the first line off `text`.
std::string_view TakeLine(std::string_view &text)
{
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

void ParseLine(std::string_view line, int number, cStatements &statements, tTextFaults &faults,
               std::vector<cToken> &tokens)
{
    if (line.size() > kMaximumLineBytes) {
        faults.push_back({{number, int(kMaximumLineBytes) + 1},
                          "expected a line of at most " + std::to_string(kMaximumLineBytes) +
                              " bytes, found " + std::to_string(line.size())});
        return;
    }
    cLexFault fault;
    if (!SplitLine(line, tokens, fault))
        faults.push_back(
            {{number, fault.mColumn}, "expected " + fault.mExpected + ", found " + fault.mFound});
    else if (!tokens.empty())
        statements.Read({tokens, number, int(line.size()) + 1});
}
} // namespace

cTimeline ParseTimeline(std::string_view text, tTextFaults &faults)
{
    cTimeline timeline;
    if (text.size() > kMaximumTextBytes) {
        faults.push_back({{1, 1},
                          "expected a text of at most " + std::to_string(kMaximumTextBytes) +
                              " bytes, found " + std::to_string(text.size())});
        return timeline;
    }
    cStatements statements(timeline, faults);
    std::vector<cToken> tokens;
    for (int number = 1; !text.empty() && faults.size() < kMaximumFaults; number++)
        ParseLine(TakeLine(text), number, statements, faults, tokens);
    return timeline;
}

tools::tFaults ToReports(const std::string &file, tTextFaults faults)
{
    std::stable_sort(faults.begin(), faults.end(), [](const auto &a, const auto &b) {
        return std::pair(a.mPlace.mLine, a.mPlace.mColumn) <
               std::pair(b.mPlace.mLine, b.mPlace.mColumn);
    });
    tools::tFaults reports;
    for (const cTextFault &fault : faults)
        reports.push_back({file + ":" + std::to_string(fault.mPlace.mLine) + ":" +
                               std::to_string(fault.mPlace.mColumn),
                           "", fault.mWhat});
    return reports;
}
} // namespace timeline
