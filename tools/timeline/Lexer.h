#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace timeline
{
/// A word of a line.
struct cToken
{
    enum class eKind
    {
        Word,   ///< as it stands
        String, ///< between double quotes, which `mText` still has
        Equals
    };
    eKind mKind = eKind::Word;
    std::string_view mText;
    int mColumn = 0; ///< of its first byte, from 1
};

/// Splits `line` (without its line end) into `tokens`; a comment ends it. Spaces, tabs and a
/// carriage return separate. False when a byte or a string can't be read: then `column`, `expected`
/// and `found` say which.
struct cLexFault
{
    int mColumn = 0;
    std::string mExpected, mFound;
};
bool SplitLine(std::string_view line, std::vector<cToken> &tokens, cLexFault &fault);

/// What a String token stands for: \" \\ and \xNN resolved. A Word is itself.
std::string Unquote(const cToken &token);

/// `name` so that it reads back as one token: bare where that is possible, else as a string.
std::string QuoteName(std::string_view name);
} // namespace timeline
