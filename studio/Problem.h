#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace studio
{
/// Something that an author has to mend, and where.
struct cProblem
{
    std::string mFile;          ///< empty: it is in no file
    int mLine = 0, mColumn = 0; ///< from 1; 0: the whole file
    std::string mWhat;
    std::string mTrack; ///< at whose lane it is shown; empty: at none

    std::string ToLine() const; ///< "file:line:column: what"
};
using tProblems = std::vector<cProblem>;

/// What a driver says of a shader that does not compile, in any of the usual ways:
/// "0:12(5): error: ..." or "0(12) : error ...".
tProblems FromShaderLog(const std::string &file, const std::string &log);

/// What a compiler or linker says: "file:12:5: error: ...". Warnings are left out. Where nothing of
/// this kind is found, the last line stands for all.
tProblems FromBuildLog(const std::string &log);

/// The words that start the author's editor at a place of a file: $VISUAL, else $EDITOR, else what
/// the desktop has for texts. An editor for terminals gets a terminal.
std::vector<std::string> EditorCommand(const std::string &file, int line, int column);
} // namespace studio
