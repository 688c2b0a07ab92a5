#include "tools/support/AuthorFile.h"
#include "tools/support/Faults.h"
#include "tools/support/Files.h"
#include "tools/timeline/Diff.h"
#include "tools/timeline/EditLanguage.h"
#include "tools/tracks/Commands.h"

#include <cstdio>
#include <iostream>
#include <iterator>

namespace tracks
{
namespace
{
const size_t maximumScriptBytes = 16u << 20;

int Fail(const std::string &line, int status = kFaulty)
{
    std::cerr << tools::OnOneLine(line) << '\n';
    return status;
}

int Fail(const tools::tFaults &faults)
{
    tools::Print(std::cerr, faults);
    return kFaulty;
}

std::string PlaceIn(const std::string &file, const timeline::cPlace &place)
{
    if (place.mLine == 0)
        return file + ": ";
    return file + ":" + std::to_string(place.mLine) + ":" + std::to_string(place.mColumn) + ": ";
}

bool ReadScript(const std::string &path, std::string &script, std::string &error)
{
    if (path != "-")
        return tools::ReadWhole(path, maximumScriptBytes, script, error);
    script.assign(std::istreambuf_iterator<char>(std::cin), {});
    return true;
}

int RunScript(const cOptions &options, timeline::cDocument &document)
{
    const std::string name = options.mScript == "-" ? "standard input" : options.mScript;
    std::string script, error;
    if (!ReadScript(options.mScript, script, error))
        return Fail(name + ": " + error);
    timeline::tTextFaults faults;
    if (timeline::DoScript(document, script, options.mTimeline, options.mIsPattern, faults))
        return kClean;
    return Fail(timeline::ToReports(name, faults));
}

int RunWords(const cOptions &options, timeline::cDocument &document)
{
    timeline::cEditFault fault;
    if (timeline::DoEdit(document, options.mEdit, options.mIsPattern, fault))
        return kClean;
    if (fault.mIsMisused)
        return Fail(fault.mReason.mWhat, kMisused);
    return Fail(PlaceIn(options.mTimeline, fault.mReason.mPlace) + fault.mReason.mWhat);
}

int Print(const std::string &text)
{
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return std::fflush(stdout) == 0 && isWritten ? kClean : Fail("standard output: can't write");
}

int Write(const cOptions &options, const std::string &before, const std::string &after)
{
    std::string error;
    if (!options.mOutput.empty())
        return tools::ReplaceFiles({{options.mOutput, after}}, error) ? kClean : Fail(error);
    if (before == after)
        return kClean;
    return tools::ReplaceAuthorFile(options.mTimeline, before, after, error) ? kClean : Fail(error);
}
} // namespace

int RunEdit(const cOptions &options)
{
    if (options.mEdit.empty() == options.mScript.empty())
        return Fail("expected an edit or --script FILE, and not both", kMisused);
    std::string before, error;
    if (!tools::ReadWhole(options.mTimeline, timeline::kMaximumTextBytes, before, error))
        return Fail(options.mTimeline + ": " + error);
    timeline::tTextFaults faults;
    const auto document = timeline::cDocument::Open(before, faults);
    if (!document)
        return Fail(timeline::ToReports(options.mTimeline, faults));
    const timeline::cText old = document->Lines();
    const int status =
        options.mScript.empty() ? RunWords(options, *document) : RunScript(options, *document);
    if (status != kClean)
        return status;
    if (options.mIsDryRun)
        return Print(timeline::UnifiedDiff(options.mTimeline, old, document->Lines()));
    return Write(options, before, document->Text());
}
} // namespace tracks
