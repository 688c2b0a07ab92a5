#include "studio/TimelineFile.h"

#include "tools/support/AuthorFile.h"
#include "tools/support/Files.h"

#include <algorithm>
#include <stdexcept>

namespace studio
{
namespace
{
const char *const noFile = "the show's folder does not say where its timeline is: name it with "
                           "--timeline FILE";
const char *const faulty = "the timeline's file has a fault, which has to be mended first";

bool IsBlank(const std::string &text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}
} // namespace

cTimelineFile::cTimelineFile(const std::filesystem::path &path, const std::string &tracks)
    : mPath(path)
{
    timeline::tTextFaults faults;
    mDocument = timeline::cDocument::Open(tracks, faults);
    if (!mDocument)
        throw std::runtime_error("the show's tracks make no timeline: " + faults.front().mWhat);
    mDocument->SetFixed(mPath.empty() ? noFile : faulty);
    if (!mPath.empty())
        ReadAgain();
}

// A file that holds nothing is one that is being written, as a rule: no show is made of it.
std::string cTimelineFile::ReadFile()
{
    std::string text, error;
    mFaults.clear();
    if (!tools::ReadWhole(mPath, timeline::kMaximumTextBytes, text, error))
        mFaults.push_back({{0, 0}, error});
    else if (IsBlank(text))
        mFaults.push_back({{1, 1}, "nothing is in it"});
    return text;
}

void cTimelineFile::ReadAgain()
{
    const std::string text = ReadFile();
    if (!mFaults.empty())
        return;
    if (!mIsOfTracks) {
        const std::string before = mDocument->Text();
        mDocument->Become(text, mFaults);
        mGeneration += mDocument->Text() != before;
        return;
    }
    auto document = timeline::cDocument::Open(text, mFaults);
    if (!document)
        return;
    mDocument = std::move(document);
    mIsOfTracks = false;
    mGeneration++;
}

bool cTimelineFile::IsChangeable(std::string &refusal) const
{
    if (mPath.empty())
        refusal = noFile;
    else if (!mFaults.empty() || mIsOfTracks)
        refusal = faulty;
    else
        return true;
    return false;
}

bool cTimelineFile::Write(const std::string &before, std::string &refusal)
{
    const std::string after = mDocument->Text();
    return after == before || tools::ReplaceAuthorFile(mPath, before, after, refusal);
}

bool cTimelineFile::Change(const tChange &change, std::string &refusal)
{
    if (!IsChangeable(refusal))
        return false;
    timeline::cTextFault fault;
    const std::string before = mDocument->Text();
    mDocument->Begin();
    bool isDone = change(*mDocument, fault);
    if (!isDone) {
        const int line = fault.mPlace.mLine;
        refusal = (line > 0 ? "line " + std::to_string(line) + ": " : "") + fault.mWhat;
    }
    isDone = isDone && Write(before, refusal);
    mDocument->End(isDone);
    mGeneration++;
    return isDone;
}

bool cTimelineFile::Apply(const timeline::cEdits &edits, std::string &refusal)
{
    if (edits.IsEmpty())
        return true;
    return Change([&edits](timeline::cDocument &document,
                           timeline::cTextFault &fault) { return document.Apply(edits, fault); },
                  refusal);
}

bool cTimelineFile::Undo(std::string &refusal)
{
    if (!IsChangeable(refusal))
        return false;
    if (!mDocument->CanUndo())
        return true;
    const std::string before = mDocument->Text();
    mDocument->Undo();
    const bool isDone = Write(before, refusal);
    if (!isDone)
        mDocument->Redo();
    mGeneration++;
    return isDone;
}

bool cTimelineFile::Redo(std::string &refusal)
{
    if (!IsChangeable(refusal))
        return false;
    if (!mDocument->CanRedo())
        return true;
    const std::string before = mDocument->Text();
    mDocument->Redo();
    const bool isDone = Write(before, refusal);
    if (!isDone)
        mDocument->Undo();
    mGeneration++;
    return isDone;
}
} // namespace studio
