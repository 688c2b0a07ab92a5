// Waiting as a show among shows: what its folder's show.so holds, for the tools and any player.

#include "base/Truncate.h"
#include "demo/Frame.h"
#include "demo/Show.h"
#include "show/Show.h"

namespace demo
{
namespace
{
template <size_t Count>
vyr::cShowDescription::cChoice Choice(eTrack track, const std::array<std::string, Count> &files)
{
    return {TrackName(track), {files.begin(), files.end()}};
}

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
        for (int i = 0; i < TRACK_COUNT; i++)
            show.mTracks.push_back(TrackName(eTrack(i)));
        show.mFiles = {kVertexShaderFile, kNoiseShaderFile, kPlasmaShaderFile,
                       kLogoFile,         kVignetteFile,    kTunnelFile};
        for (eTrack track : {IMAGE_LEFT, IMAGE_RIGHT, IMAGE_CENTER})
            show.mChoices.push_back(Choice(track, PhotoNames()));
        show.mChoices.push_back(Choice(LYRICS_NUM, LyricNames()));
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
    demo::cShow mLoaded;
};
} // namespace
} // namespace demo

VYR_SHOW(demo::cWaiting);
