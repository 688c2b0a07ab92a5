#include "tests/house/Markdown.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
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

Names Split(const std::string &list)
{
    Names names;
    std::istringstream words(std::regex_replace(list, std::regex("[`,]"), " "));
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
    const std::string text = test::ReadFile(file), name = fs::relative(file, root).string();
    const std::regex line("(?:^|\n)#include ([<\"])([^>\"]+)");
    for (std::sregex_iterator i(text.begin(), text.end(), line), end; i != end; ++i)
        includes.push_back({name, (*i)[2], (*i)[1] == "<"});
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
    static const std::regex system("[a-z_]+|(fcntl|unistd|spawn|signal|poll)\\.h|sys/.*");
    return std::regex_match(name, system);
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
