#include "tools/timeline/KeyLine.h"

#include "tools/timeline/Lexer.h"

#include <algorithm>
#include <vector>

namespace timeline
{
namespace
{
std::vector<cToken> TokensOf(std::string_view line)
{
    std::vector<cToken> tokens;
    cLexFault fault;
    SplitLine(line, tokens, fault);
    return tokens;
}

size_t BeginOf(const cToken &token) { return size_t(token.mColumn) - 1; }

size_t EndOf(const cToken &token) { return BeginOf(token) + token.mText.size(); }

size_t CountSpaces(std::string_view text)
{
    return std::min(text.find_first_not_of(' '), text.size());
}

bool IsAtEnd(std::string_view rest)
{
    return rest.find_first_not_of(" \t\r") == std::string_view::npos;
}

// `rest`, which follows a word, after the word has become `longer` bytes longer (or shorter): it
// takes that from the spaces at its beginning, and leaves one at least.
std::string Shift(std::string_view rest, long longer)
{
    const size_t spaces = CountSpaces(rest);
    const bool isTabbed = spaces < rest.size() && rest[spaces] == '\t';
    if (spaces == 0 || isTabbed || IsAtEnd(rest))
        return std::string(rest);
    const long wanted = std::max(1L, long(spaces) - longer);
    return std::string(size_t(wanted), ' ') + std::string(rest.substr(spaces));
}

// What stands between two words, for a first one of another length.
std::string GapLike(std::string_view like, size_t from, size_t to, size_t here, bool isAligned)
{
    const std::string_view gap = like.substr(from, to - from);
    const bool isFixed = gap.find('\t') != std::string_view::npos || (gap.size() < 2 && !isAligned);
    if (isFixed)
        return std::string(gap);
    return std::string(here < to ? to - here : 1, ' ');
}
// Of "section NAME at TIME ...": where the option stands; 0 where it doesn't.
size_t OptionWord(std::string_view line, std::string_view name)
{
    const std::vector<cToken> tokens = TokensOf(line);
    for (size_t i = 2; i + 1 < tokens.size(); i += 2)
        if (tokens[i].mText == name)
            return i;
    return 0;
}

// Puts `added` behind the last word, at the cost of the spaces before a comment.
std::string InsertBehind(std::string_view line, const std::string &added)
{
    const size_t end = EndOf(TokensOf(line).back());
    return std::string(line.substr(0, end)) + added + Shift(line.substr(end), long(added.size()));
}
} // namespace

size_t CountWords(std::string_view line) { return TokensOf(line).size(); }

std::string_view WordOf(std::string_view line, size_t index)
{
    const std::vector<cToken> tokens = TokensOf(line);
    return index < tokens.size() ? tokens[index].mText : std::string_view();
}

size_t ColumnOf(std::string_view line, size_t index)
{
    const std::vector<cToken> tokens = TokensOf(line);
    if (index < tokens.size())
        return BeginOf(tokens[index]);
    return tokens.empty() ? 0 : EndOf(tokens.back());
}

std::string_view IndentOf(std::string_view line)
{
    return line.substr(0, std::min(line.find_first_not_of(" \t"), line.size()));
}

std::string ReplaceWord(std::string_view line, size_t index, std::string_view word, bool isAligned)
{
    const cToken token = TokensOf(line)[index];
    const std::string_view rest = line.substr(EndOf(token));
    const bool isKept = isAligned || CountSpaces(rest) >= 2;
    const long longer = long(word.size()) - long(token.mText.size());
    return std::string(line.substr(0, BeginOf(token))) + std::string(word) +
           (isKept ? Shift(rest, longer) : std::string(rest));
}

std::string AppendWord(std::string_view line, std::string_view word, size_t column)
{
    const std::vector<cToken> tokens = TokensOf(line);
    const size_t end = EndOf(tokens.back());
    std::string gap(tokens.size() > 1
                        ? line.substr(EndOf(tokens[0]), BeginOf(tokens[1]) - EndOf(tokens[0]))
                        : " ");
    if (gap.find('\t') != std::string::npos)
        gap = "\t";
    else
        gap.assign(column > end ? column - end : std::clamp<size_t>(gap.size(), 1, 2), ' ');
    return InsertBehind(line, gap + std::string(word));
}

std::string RemoveWord(std::string_view line, size_t index)
{
    const std::vector<cToken> tokens = TokensOf(line);
    const size_t begin = index == 0 ? BeginOf(tokens[0]) : EndOf(tokens[index - 1]);
    return std::string(line.substr(0, begin)) + std::string(line.substr(EndOf(tokens[index])));
}

std::string_view OptionOf(std::string_view line, std::string_view name)
{
    const size_t word = OptionWord(line, name);
    return word == 0 ? std::string_view() : WordOf(line, word + 1);
}

std::string SetOption(std::string_view line, std::string_view name, std::string_view value)
{
    const size_t word = OptionWord(line, name);
    if (word != 0)
        return ReplaceWord(line, word + 1, value, false);
    std::string added(" ");
    added.append(name).append(" ").append(value);
    return InsertBehind(line, added);
}

std::string RemoveOption(std::string_view line, std::string_view name)
{
    const size_t word = OptionWord(line, name);
    return word == 0 ? std::string(line) : RemoveWord(RemoveWord(line, word + 1), word);
}

std::string_view WithoutComment(std::string_view line)
{
    const std::vector<cToken> tokens = TokensOf(line);
    return line.substr(0, tokens.empty() ? 0 : EndOf(tokens.back()));
}

std::string MakeKeyLine(std::string_view like, bool isAligned, std::string_view time,
                        std::string_view value, std::string_view interpolation)
{
    const std::vector<cToken> tokens = TokensOf(like);
    std::string line = std::string(IndentOf(like)) + std::string(time);
    line += GapLike(like, EndOf(tokens[kTimeWord]), BeginOf(tokens[kValueWord]), line.size(),
                    isAligned);
    line += value;
    if (interpolation.empty())
        return line;
    line += GapLike(like, EndOf(tokens[kValueWord]), BeginOf(tokens[kInterpolationWord]),
                    line.size(), isAligned);
    return line + std::string(interpolation);
}
} // namespace timeline
