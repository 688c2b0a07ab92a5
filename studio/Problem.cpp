#include "studio/Problem.h"

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>

namespace studio
{
namespace
{
int ToNumber(const std::string &digits) { return digits.empty() ? 0 : std::atoi(digits.c_str()); }

std::vector<std::string> WordsOf(const std::string &text)
{
    std::istringstream words(text);
    std::vector<std::string> list;
    for (std::string word; words >> word;)
        list.push_back(word);
    return list;
}

bool NeedsTerminal(const std::string &program)
{
    const std::string name = std::filesystem::path(program).filename().string();
    for (const char *known :
         {"vi", "vim", "nvim", "nano", "pico", "micro", "hx", "kak", "joe", "ne", "mcedit", "ed"})
        if (name == known)
            return true;
    return false;
}

bool TakesColumns(const std::string &program)
{
    const std::string name = std::filesystem::path(program).filename().string();
    return name == "code" || name == "codium";
}
} // namespace

std::string cProblem::ToLine() const
{
    std::string place = mFile;
    if (mLine > 0)
        place += ':' + std::to_string(mLine);
    if (mLine > 0 && mColumn > 0)
        place += ':' + std::to_string(mColumn);
    return place.empty() ? mWhat : place + ": " + mWhat;
}

tProblems FromShaderLog(const std::string &file, const std::string &log)
{
    static const std::regex mesa(R"(\d+:(\d+)\((\d+)\): *(.*))"), other(R"(\d+\((\d+)\) *: *(.*))");
    tProblems problems;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (line.find("warning") != std::string::npos || line.empty())
            continue;
        if (std::regex_match(line, found, mesa))
            problems.push_back({file, ToNumber(found[1]), ToNumber(found[2]), found[3], ""});
        else if (std::regex_match(line, found, other))
            problems.push_back({file, ToNumber(found[1]), 0, found[2], ""});
        else
            problems.push_back({file, 0, 0, line, ""});
    }
    if (problems.empty())
        problems.push_back({file, 0, 0, "does not compile or link", ""});
    return problems;
}

tProblems FromBuildLog(const std::string &log)
{
    static const std::regex error(R"(([^:\s][^:]*):(\d+):(?:(\d+):)? *(?:fatal )?error: (.*))");
    tProblems problems;
    std::string last;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (std::regex_match(line, found, error))
            problems.push_back({found[1], ToNumber(found[2]), ToNumber(found[3]), found[4], ""});
        else if (line.find("undefined reference") != std::string::npos)
            problems.push_back({"", 0, 0, line, ""});
        if (!line.empty())
            last = line;
    }
    if (problems.empty())
        problems.push_back({"", 0, 0, "the build has failed: " + last, ""});
    return problems;
}

std::vector<std::string> EditorCommand(const std::string &file, int line, int column)
{
    const char *visual = std::getenv("VISUAL"), *editor = std::getenv("EDITOR");
    std::vector<std::string> words = WordsOf(visual && *visual ? visual : editor ? editor : "");
    if (words.empty())
        return {"xdg-open", file};
    line = std::max(line, 1);
    if (TakesColumns(words[0])) {
        words.push_back("-g");
        words.push_back(file + ':' + std::to_string(line) + ':' +
                        std::to_string(std::max(column, 1)));
        return words;
    }
    if (NeedsTerminal(words[0]))
        words.insert(words.begin(), {"x-terminal-emulator", "-e"});
    words.push_back('+' + std::to_string(line));
    words.push_back(file);
    return words;
}
} // namespace studio
