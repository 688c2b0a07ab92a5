#include "tests/house/Markdown.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace
{
using Names = std::set<std::string>;

const fs::path root = VYR_SOURCE_DIR;
const std::string everything = "everything";

/// A row of the table: what a folder's files may include.
struct cRule
{
    Names mFolders;   ///< of this repository
    Names mLibraries; ///< first part of the path between <>: "epoxy", "tinyxml.h"
};

Names Split(std::string list)
{
    std::ranges::replace_if(
        list, [](char c) { return c == '`' || c == ','; }, ' ');
    Names names;
    std::istringstream words(list);
    for (std::string word; words >> word;)
        names.insert(word);
    return names;
}

std::map<std::string, cRule> ReadRules()
{
    std::map<std::string, cRule> rules;
    for (const auto &row : house::TableUnder(root / "docs/architecture.md", "folder"))
        if (row.size() >= 4)
            rules[row[0]] = {Split(row[2]), Split(row[3])};
    return rules;
}

// The longest folder of the table that `path` lies in: tools/record before tools.
std::string FolderOf(const std::string &path, const std::map<std::string, cRule> &rules)
{
    std::string found;
    for (const auto &[folder, rule] : rules)
        if (path.starts_with(folder + "/") && folder.size() > found.size())
            found = folder;
    return found;
}

struct cInclude
{
    std::string mFile; ///< that includes
    std::string mName;
    bool mIsLibrary = false;
};

void AddIncludes(const fs::path &file, std::vector<cInclude> &includes)
{
    constexpr std::string_view directive = "#include ";
    const std::string name = fs::relative(file, root).string();
    std::istringstream lines(test::ReadFile(file));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(directive))
            continue;
        const std::size_t begin = directive.size() + 1, end = line.find_first_of(">\"", begin);
        includes.push_back({name, line.substr(begin, end - begin), line[begin - 1] == '<'});
    }
}

bool IsSource(const fs::path &file)
{
    return file.extension() == ".h" || file.extension() == ".cpp";
}

std::vector<cInclude> ReadIncludes(const std::string &folder)
{
    std::vector<cInclude> includes;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root / folder))
        if (IsSource(entry.path()))
            AddIncludes(entry.path(), includes);
    return includes;
}

// Headers of the language and the system are everybody's.
bool IsOfTheSystem(const std::string &name)
{
    static const Names system{"dlfcn.h",  "elf.h",   "fcntl.h", "poll.h",
                              "signal.h", "spawn.h", "unistd.h"};
    const bool isOfTheLanguage = name.find_first_of("./") == std::string::npos;
    return isOfTheLanguage || system.count(name) || name.starts_with("sys/");
}

std::string Library(const std::string &name) { return name.substr(0, name.find('/')); }

// What is under the root, builds and hidden folders left out.
std::vector<fs::path> SourceFolders()
{
    std::vector<fs::path> folders;
    for (const fs::directory_entry &entry : fs::directory_iterator(root)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && !name.starts_with("build") && !name.starts_with("."))
            folders.push_back(entry.path());
    }
    return folders;
}

class Architecture : public testing::Test
{
protected:
    const std::map<std::string, cRule> mRules = ReadRules();

    bool IsAllowed(const std::string &folder, const cInclude &include) const
    {
        const cRule &rule = mRules.at(folder);
        if (include.mIsLibrary)
            return IsOfTheSystem(include.mName) || rule.mLibraries.count(everything) ||
                   rule.mLibraries.count(Library(include.mName));
        if (include.mName.find('/') == std::string::npos)
            return true; // beside it
        const std::string target = FolderOf(include.mName, mRules);
        return target == folder || rule.mFolders.count(everything) || rule.mFolders.count(target);
    }
};

TEST_F(Architecture, TableNamesEveryFolderWithCode)
{
    ASSERT_GE(mRules.size(), 8u);
    for (const fs::path &folder : SourceFolders())
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
            const std::string name = fs::relative(entry.path(), root).string();
            EXPECT_TRUE(!IsSource(entry.path()) || FolderOf(name, mRules) != "") << name;
        }
}

TEST_F(Architecture, FilesIncludeOnlyWhatTheTableAllows)
{
    for (const auto &[folder, rule] : mRules)
        for (const cInclude &include : ReadIncludes(folder)) {
            const bool isOfAnother = FolderOf(include.mFile, mRules) != folder;
            EXPECT_TRUE(isOfAnother || IsAllowed(folder, include))
                << include.mFile << ": docs/architecture.md does not allow " << include.mName;
        }
}

// The table says what is, not what might be: an entry that nothing uses any more goes.
TEST_F(Architecture, TableAllowsNothingThatNobodyIncludes)
{
    for (const auto &[folder, rule] : mRules) {
        Names used{everything};
        for (const cInclude &include : ReadIncludes(folder))
            used.insert(include.mIsLibrary ? Library(include.mName)
                                           : FolderOf(include.mName, mRules));
        if (used.size() == 1)
            continue; // no code there
        for (const Names &names : {rule.mFolders, rule.mLibraries})
            for (const std::string &name : names)
                EXPECT_TRUE(used.count(name)) << folder << ": " << name;
    }
}
} // namespace
