#include "tools/support/Faults.h"

#include <cstdio>

namespace tools
{
namespace
{
const size_t maximumQuoted = 40; // characters; a longer find is recognised by its beginning

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }
} // namespace

std::string OnOneLine(std::string_view text)
{
    std::string result;
    for (char c : text) {
        if (!IsControl(c)) {
            result.push_back(c);
            continue;
        }
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(c) & 0xFFu);
        result += escaped;
    }
    return result;
}

std::string Quote(std::string_view text)
{
    std::string quoted("'");
    quoted += OnOneLine(text.substr(0, maximumQuoted));
    quoted += text.size() > maximumQuoted ? "...'" : "'";
    return quoted;
}

std::string cFault::ToLine() const
{
    const std::string place = mPlace.empty() ? "" : OnOneLine(mPlace) + ": ";
    return OnOneLine(mFile) + ": " + place + OnOneLine(mWhat);
}

cFault ToFault(const std::string &line)
{
    const size_t colon = line.find(": ");
    return colon == std::string::npos ? cFault{line, "", ""}
                                      : cFault{line.substr(0, colon), "", line.substr(colon + 2)};
}

void Print(std::ostream &out, const tFaults &faults)
{
    for (const cFault &fault : faults)
        out << fault.ToLine() << '\n';
}
} // namespace tools
