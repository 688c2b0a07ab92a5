#include "tools/check/Check.h"

#include "tools/check/CheckImages.h"
#include "tools/check/CheckLyrics.h"
#include "tools/check/CheckMusic.h"
#include "tools/check/CheckObjects.h"
#include "tools/check/CheckShaders.h"
#include "tools/check/CheckTracks.h"
#include "tools/check/Stage.h"

namespace check
{
cFindings CheckShow()
{
    cFindings findings;
    tools::cTrackFolder folder("");
    CheckMusic(findings);
    CheckTracks(folder, findings);
    const cStage stage;
    if (!stage.IsOpen()) {
        findings.Fault("OpenGL", "",
                       "no off-screen context: shaders, images and objects can't be "
                       "checked");
        return findings;
    }
    CheckShaders(findings);
    CheckImages(findings);
    CheckObjects(findings);
    CheckLyrics(folder, findings);
    return findings;
}
} // namespace check
