#include "tools/timeline/Lexer.h"

#include "tools/support/Faults.h"

#include <cstdio>

namespace timeline
{
namespace
{
bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

bool EndsWord(char c) { return IsSpace(c) || c == '#' || c == '"' || c == '='; }

// Value of a hexadecimal digit, or -1.
int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Length of the escape at the start of `text`, 0 when it is none.
size_t EscapeLength(std::string_view text)
{
    if (text.size() >= 2 && (text[1] == '"' || text[1] == '\\'))
        return 2;
    const bool isByte =
        text.size() >= 4 && text[1] == 'x' && HexDigit(text[2]) >= 0 && HexDigit(text[3]) >= 0;
    return isByte ? 4 : 0;
}

bool Fail(cLexFault &fault, size_t offset, const char *expected, const std::string &found)
{
    fault = {int(offset) + 1, expected, found};
    return false;
}

// The string that starts at `start`; `end` is set behind its closing quote.
bool FindStringEnd(std::string_view line, size_t start, size_t &end, cLexFault &fault)
{
    for (end = start + 1; end < line.size() && line[end] != '"';) {
        const size_t length = line[end] == '\\' ? EscapeLength(line.substr(end)) : 1;
        if (length == 0)
            return Fail(fault, end, "an escape \\\", \\\\ or \\xNN",
                        tools::Quote(line.substr(end, 4)));
        if (IsControl(line[end]))
            return Fail(fault, end, "printable text", tools::Quote(line.substr(end, 1)));
        end += length;
    }
    if (end == line.size())
        return Fail(fault, start, "a closing quote", "the end of the line");
    end++;
    return true;
}

bool FindWordEnd(std::string_view line, size_t start, size_t &end, cLexFault &fault)
{
    for (end = start; end < line.size() && !EndsWord(line[end]); end++)
        if (IsControl(line[end]))
            return Fail(fault, end, "printable text", tools::Quote(line.substr(end, 1)));
    return true;
}

bool IsBare(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ':' ||
           c == '.' || c == '_' || c == '-' || c == '+';
}
} // namespace

bool SplitLine(std::string_view line, std::vector<cToken> &tokens, cLexFault &fault)
{
    tokens.clear();
    for (size_t i = 0; i < line.size() && line[i] != '#';) {
        if (IsSpace(line[i])) {
            i++;
            continue;
        }
        size_t end = i + 1;
        cToken token;
        if (line[i] == '=') {
            token.mKind = cToken::eKind::Equals;
        } else if (line[i] == '"') {
            token.mKind = cToken::eKind::String;
            if (!FindStringEnd(line, i, end, fault))
                return false;
        } else if (!FindWordEnd(line, i, end, fault)) {
            return false;
        }
        token.mText = line.substr(i, end - i);
        token.mColumn = int(i) + 1;
        tokens.push_back(token);
        i = end;
    }
    return true;
}

std::string Unquote(const cToken &token)
{
    if (token.mKind != cToken::eKind::String)
        return std::string(token.mText);
    std::string result;
    const std::string_view text = token.mText.substr(1, token.mText.size() - 2);
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\') {
            result.push_back(text[i]);
        } else if (text[i + 1] != 'x') {
            result.push_back(text[++i]);
        } else {
            result.push_back(char(HexDigit(text[i + 2]) << 4 | HexDigit(text[i + 3])));
            i += 3;
        }
    }
    return result;
}

std::string QuoteName(std::string_view name)
{
    bool isBare = !name.empty();
    std::string quoted = "\"";
    for (char c : name) {
        isBare = isBare && IsBare(c);
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(c) & 0xFFu);
        if (IsControl(c))
            quoted += escaped;
        else if (c == '"' || c == '\\')
            quoted += std::string("\\") + c;
        else
            quoted += c;
    }
    return isBare ? std::string(name) : quoted + "\"";
}
} // namespace timeline
