// Waiting as a show among shows: what its folder's show.so holds, for the tools and any player.

#include "base/Truncate.h"
#include "demo/Frame.h"
#include "demo/Show.h"
#include "show/Show.h"

namespace demo
{
namespace
{
class cWaiting : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        vyr::cShowDescription show;
        show.mTitle = "Waiting";
        show.mMusic = kMusicFile;
        show.mRowsPerSecond = kRowsPerSecond;
        show.mLastRow = kLastRow;
        show.mTracks.assign(kTrackNames.begin(), kTrackNames.end());
        show.mFiles = {kVertexShaderFile, kNoiseShaderFile, kPlasmaShaderFile,
                       kLogoFile,         kVignetteFile,    kTunnelFile};
        for (eTrack track : {IMAGE_LEFT, IMAGE_RIGHT, IMAGE_CENTER})
            show.mChoices.push_back({TrackName(track), {kPhotoFiles.begin(), kPhotoFiles.end()}});
        show.mChoices.push_back({TrackName(LYRICS_NUM), {}});
        for (int i = 0; i < kLyricCount; i++)
            show.mChoices.back().mFiles.push_back(LyricName(i));
        show.mChoices.push_back({TrackName(OBJECT_NUM), {kObject1File, kObject2File}});
        return show;
    }

    void Load() override
    {
        for (int i = 0; i < TRACK_COUNT; i++)
            mLoaded.mTracks[size_t(i)] = GetTrack(i);
        mLoaded.mAssets = LoadAssets();
    }

    void Draw(double row, double seconds) override { DrawFrame(mLoaded, row, seconds); }

    // The tunnel's slices begin where the frame before left them.
    bool ReachesLater(double row) const override
    {
        return vyr::TruncateToInt(double(Sample(TUNNEL_TEXTURE, row))) >= 0;
    }

private:
    demo::cLoadedShow mLoaded;
};
} // namespace
} // namespace demo

VYR_SHOW(demo::cWaiting);
