#include "tools/check/Check.h"

#include "show/ShowFolder.h"
#include "tools/check/CheckImages.h"
#include "tools/check/CheckLyrics.h"
#include "tools/check/CheckMusic.h"
#include "tools/check/CheckObjects.h"
#include "tools/check/CheckShaders.h"
#include "tools/check/CheckTimeline.h"
#include "tools/check/CheckTracks.h"
#include "tools/check/ShowProcess.h"
#include "tools/check/Stage.h"
#include "tools/support/Sources.h"

namespace check
{
namespace
{
// Without a description it is not known which tracks there should be, only which are.
void CheckTrackFiles(tools::cTrackFolder &folder, cFindings &findings)
{
    for (const std::string &name : folder.Names())
        folder.Load(name, findings.mFaults);
}

void CheckWithOpenGL(const vyr::cShowDescription &show, tools::cTrackFolder &folder,
                     cFindings &findings)
{
    const cStage stage;
    if (!stage.IsOpen())
        return findings.Fault("OpenGL", "",
                              "no off-screen context: shaders, images and objects can't be "
                              "checked");
    CheckShaders(show, findings);
    CheckImages(show, findings);
    CheckObjects(show, findings);
    CheckLyrics(show, folder, findings);
}

void CheckFiles(const vyr::cShowDescription &show, const std::string &timeline,
                tools::cTrackFolder &folder, cFindings &findings)
{
    CheckMusic(show, findings);
    const std::string noted = tools::ReadSources(".").mTimeline.string();
    if (const std::string &text = timeline.empty() ? noted : timeline; !text.empty())
        CheckTimeline(show, text, findings);
    CheckTracks(show, folder, findings);
    CheckWithOpenGL(show, folder, findings);
}
} // namespace

cFindings CheckShow(const std::string &timeline)
{
    cFindings findings;
    tools::cTrackFolder folder("");
    if (const std::string fault = vyr::FindLibraryFault("."); !fault.empty())
        findings.Fault(vyr::kShowLibrary, "", fault);
    const auto show = findings.mFaults.empty() ? DescribeShow(findings) : std::nullopt;
    if (!show) {
        CheckTrackFiles(folder, findings);
        return findings;
    }
    CheckFiles(*show, timeline, folder, findings);
    if (findings.mFaults.empty())
        CheckDrawing(findings);
    return findings;
}
} // namespace check
