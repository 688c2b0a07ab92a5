// Edits of a timeline's text: the text, a line "====", a script of edits, and, after another such
// line, a text that somebody else saves meanwhile.
//
// Promises: what is refused changes nothing and says why on one line, at a place of the script;
// what is done leaves a text without faults that the document reads as any reader would; undo leads
// back to the first byte, redo to the last.

#include "fuzz/Fuzz.h"
#include "tools/timeline/Diff.h"
#include "tools/timeline/EditLanguage.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace
{
// Beyond, it is only slow: each edit reads the whole text.
const size_t maximumText = 4096, maximumScript = 1024;
const long long maximumKeys = 2000;

std::string_view TakePart(std::string_view &text)
{
    constexpr std::string_view mark = "====\n";
    const size_t end = std::min(text.find(mark), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + mark.size(), text.size()));
    return part;
}

long long CountKeys(std::string_view text)
{
    timeline::tTextFaults faults;
    long long count = 0;
    for (const timeline::cSection &section : timeline::ParseTimeline(text, faults).mSections)
        for (const timeline::cPlacement &placement : section.mPlacements)
            for (const timeline::cBlock &block : section.mBlocks)
                count += (1 + static_cast<long long>(block.mKeys.size())) * placement.mCount;
    return count;
}

// What the document holds is what its text says.
void ExpectTrue(const timeline::cDocument &document)
{
    timeline::tTextFaults faults;
    const auto placed = timeline::Place(timeline::ParseTimeline(document.Text(), faults), faults);
    FUZZ_EXPECT(faults.empty());
    FUZZ_EXPECT(placed.size() == document.Tracks().size());
    for (size_t i = 0; i < placed.size(); i++) {
        const timeline::cShowTrack &track = document.Tracks()[i];
        FUZZ_EXPECT(placed[i].mName == track.mName);
        FUZZ_EXPECT(placed[i].mKeys.size() == track.mKeys.size());
        for (size_t j = 0; j < track.mKeys.size(); j++) {
            FUZZ_EXPECT(placed[i].mKeys[j].mKey.row == track.mKeys[j].mKey.row);
            FUZZ_EXPECT(document.FindKey(track.mKeys[j].mId) == &track.mKeys[j]);
        }
    }
}

void ExpectReadable(const timeline::tTextFaults &faults, std::string_view script)
{
    const auto lines = 1 + std::count(script.begin(), script.end(), '\n');
    for (const timeline::cTextFault &fault : faults)
        FUZZ_EXPECT(fault.mPlace.mLine >= 1 && fault.mPlace.mLine <= lines &&
                    fault.mPlace.mColumn >= 1);
    for (const tools::cFault &report : timeline::ToReports("script", faults))
        for (char c : report.ToLine())
            FUZZ_EXPECT(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F);
}

void DoEdits(timeline::cDocument &document, std::string_view script, bool isPattern)
{
    const std::string before = document.Text();
    const timeline::cText lines = document.Lines();
    timeline::tTextFaults faults;
    const bool isDone = timeline::DoScript(document, script, "timeline", isPattern, faults);
    FUZZ_EXPECT(isDone == faults.empty());
    ExpectReadable(faults, script);
    ExpectTrue(document);
    const std::string after = document.Text();
    FUZZ_EXPECT(isDone || after == before);
    FUZZ_EXPECT(timeline::UnifiedDiff("f", lines, document.Lines()).empty() == (after == before));
    FUZZ_EXPECT(document.CanUndo() == (after != before) || isDone);
    document.Undo();
    FUZZ_EXPECT(document.Text() == before);
    ExpectTrue(document);
    document.Redo();
    FUZZ_EXPECT(document.Text() == after);
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string_view text = TakePart(rest), script = TakePart(rest);
    if (text.size() > maximumText || script.size() > maximumScript || rest.size() > maximumText ||
        CountKeys(text) > maximumKeys || CountKeys(rest) > maximumKeys)
        return 0;
    timeline::tTextFaults faults;
    const auto document = timeline::cDocument::Open(text, faults);
    FUZZ_EXPECT(faults.empty() == (document != nullptr));
    if (!document)
        return 0;
    FUZZ_EXPECT(document->Text() == text);
    for (const bool isPattern : {false, true}) {
        DoEdits(*document, script, isPattern);
        if (document->Text() != text)
            document->Undo();
    }
    const bool isGood = document->Become(rest, faults);
    FUZZ_EXPECT(document->Text() == (isGood ? rest : text));
    ExpectTrue(*document);
    return 0;
}
