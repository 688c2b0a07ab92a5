#include "tests/timeline/Editing.h"

#include "tools/timeline/Diff.h"

#include <gtest/gtest.h>

#include <sstream>

namespace test
{
namespace
{
std::vector<std::string> Words(const std::string &edit)
{
    std::istringstream stream(edit);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::string ChangedLines(const timeline::cText &before, const timeline::cText &after)
{
    std::istringstream diff(timeline::UnifiedDiff("f", before, after));
    std::string changed;
    bool isContext = true;
    for (std::string line; std::getline(diff, line);) {
        if (line.starts_with("\\ No newline"))
            changed += isContext ? "" : "\\\n";
        else if (!line.starts_with("---") && !line.starts_with("+++") && !line.empty() &&
                 (line[0] == '-' || line[0] == '+'))
            changed += line + "\n";
        isContext = line.starts_with(' ');
    }
    return changed;
}
} // namespace

std::unique_ptr<timeline::cDocument> Open(const std::string &text)
{
    timeline::tTextFaults faults;
    auto document = timeline::cDocument::Open(text, faults);
    for (const tools::cFault &fault : timeline::ToReports("timeline", faults))
        ADD_FAILURE() << fault.ToLine();
    return document;
}

std::vector<timeline::cTrack> CompileText(const std::string &text)
{
    timeline::tTextFaults faults;
    const timeline::cTimeline timeline = timeline::ParseTimeline(text, faults);
    auto tracks = timeline::Compile(timeline, faults);
    for (const tools::cFault &fault : timeline::ToReports("timeline", faults))
        ADD_FAILURE() << fault.ToLine() << "\n" << text;
    return tracks;
}

cEditing::cEditing(const std::string &text, bool isPattern) : mIsPattern(isPattern)
{
    timeline::tTextFaults faults;
    mDocument = timeline::cDocument::Open(text, faults);
}

std::string cEditing::Do(const std::string &edit)
{
    const timeline::cText before = mDocument->Lines();
    timeline::cEditFault fault;
    if (!timeline::DoEdit(*mDocument, Words(edit), mIsPattern, fault))
        ADD_FAILURE() << edit << ": " << fault.mReason.mWhat;
    return ChangedLines(before, mDocument->Lines());
}

std::string cEditing::Apply(const timeline::cEdits &edits)
{
    const timeline::cText before = mDocument->Lines();
    timeline::cTextFault refusal;
    if (!mDocument->Apply(edits, refusal))
        ADD_FAILURE() << refusal.mWhat;
    return ChangedLines(before, mDocument->Lines());
}

std::string Refusal(const std::string &text, const std::string &edit, bool isPattern)
{
    const auto document = Open(text);
    timeline::cEditFault fault;
    EXPECT_FALSE(timeline::DoEdit(*document, Words(edit), isPattern, fault)) << edit;
    EXPECT_EQ(document->Text(), text);
    EXPECT_FALSE(document->CanUndo());
    return std::to_string(fault.mReason.mPlace.mLine) + ": " + fault.mReason.mWhat;
}
} // namespace test
