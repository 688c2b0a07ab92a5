#pragma once

#include "demo/Tables.h"
#include "engine/3DObject.h"
#include "sync/data.h"

#include <array>
#include <string>

/// The show, loaded.
namespace demo
{
using tTracks = std::array<const sync_track *, TRACK_COUNT>;

/// Everything drawn. Texture ids, -1 where an image could not be read; the show draws on without
/// asking.
struct cAssets
{
    unsigned int mNoiseProgram = 0;
    unsigned int mPlasmaProgram = 0;
    std::array<std::string, kPhotoCount> mPhotoNames;
    std::array<int, kPhotoCount> mPhotos{};
    std::array<int, kLyricCount> mLyrics{};
    int mLogo = -1;
    int mVignette = -1;
    int mTunnelTexture = -1;
    vyr::c3DObject::cRenderObject *mObject1 =
        nullptr; ///< never freed, as the mesh it was made from
    vyr::c3DObject::cRenderObject *mObject2 = nullptr;
};

/// What a frame is drawn from.
struct cLoadedShow
{
    tTracks mTracks{};
    cAssets mAssets;
};

/// Loads the tracks through `device`, which keeps them.
tTracks LoadTracks(sync_device *device);

/// Loads shaders, textures and objects, in this order, from data/ under the working directory. The
/// renderer and the texture manager must exist and the context be current. An object that can't be
/// read is an assertion that names its file. Leaves no shader program current.
cAssets LoadAssets();
} // namespace demo
