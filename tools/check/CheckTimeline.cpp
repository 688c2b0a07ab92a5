#include "tools/check/CheckTimeline.h"

#include "show/Tempo.h"
#include "tools/support/Files.h"
#include "tools/timeline/Parser.h"

namespace check
{
namespace
{
std::string Describe(const vyr::cTempo &tempo)
{
    if (tempo.HasSeconds())
        return "'tempo " + vyr::FormatTempo(tempo) + "'";
    return "no tempo";
}
} // namespace

void CheckTimeline(const vyr::cShowDescription &show, const std::string &path, cFindings &findings)
{
    std::string text, error;
    if (!tools::ReadWhole(path, timeline::kMaximumTextBytes, text, error))
        return findings.Fault(path, "", error);
    timeline::tTextFaults faults;
    const timeline::cTimeline read = timeline::ParseTimeline(text, faults);
    for (const tools::cFault &fault : timeline::ToReports(path, faults))
        findings.mFaults.push_back(fault);
    // The usual bars and beats, and seconds only where the timeline says its tempo.
    const vyr::cTempo tempo = vyr::TempoOf(show);
    const bool isUsual = tempo.RowsPerBar() == vyr::cTempo().RowsPerBar() &&
                         tempo.mRowsPerBeat == vyr::cTempo().mRowsPerBeat;
    const bool agrees = read.mTempo.HasSeconds() ? read.mTempo == tempo : isUsual;
    if (faults.empty() && !agrees)
        findings.Fault(path, "tempo",
                       "expected " + Describe(tempo) + ", which is the show's, found " +
                           Describe(read.mTempo));
}
} // namespace check
