#include "demo/Show.h"

#include "base/Assert.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

namespace demo
{
namespace
{
int LoadTexture(const std::string &path)
{
    return vyr::tSingleton<vyr::cTextureManager>::GetSingleton().LoadTexture(path, false);
}

unsigned int LoadFragmentShader(const char *path)
{
    auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
    return renderer.CreateShader(kVertexShaderFile, path, true);
}

// contract: the mesh is not freed; its textures and its render object live as long as the program.
vyr::c3DObject::cRenderObject *LoadObject1()
{
    vyr::c3DObject *object = vyr::c3DObject::CreateFromLWO2(kObject1File);
    VYR_ASSERT("Show", object != 0 && "data/oh1.lwo: missing or no LWO2 object");
    return object->CreateRenderObject();
}

vyr::c3DObject::cRenderObject *LoadObject2()
{
    vyr::c3DObject *object = vyr::c3DObject::CreateFromLWO2(kObject2File);
    VYR_ASSERT("Show", object != 0 && "data/oh2.lwo: missing or no LWO2 object");
    return object->CreateRenderObject();
}

} // namespace

tTracks LoadTracks(sync_device *device)
{
    tTracks tracks{};
    for (size_t i = 0; i < tracks.size(); i++)
        tracks[i] = sync_get_track(device, TrackName(eTrack(i)));
    return tracks;
}

cAssets LoadAssets()
{
    cAssets assets;
    assets.mNoiseProgram = LoadFragmentShader(kNoiseShaderFile);
    assets.mPlasmaProgram = LoadFragmentShader(kPlasmaShaderFile);
    glUseProgram(0);

    assets.mPhotoNames = PhotoNames();
    for (size_t i = 0; i < assets.mPhotos.size(); i++)
        assets.mPhotos[i] = LoadTexture(assets.mPhotoNames[i]);
    for (size_t i = 0; i < assets.mLyrics.size(); i++)
        assets.mLyrics[i] = LoadTexture(LyricName(int(i)));
    assets.mLogo = LoadTexture(kLogoFile);
    assets.mVignette = LoadTexture(kVignetteFile);
    assets.mTunnelTexture = LoadTexture(kTunnelFile);

    assets.mObject1 = LoadObject1();
    assets.mObject2 = LoadObject2();
    return assets;
}
} // namespace demo
