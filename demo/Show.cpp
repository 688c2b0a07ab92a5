#include "demo/Show.h"

#include "base/Assert.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

#include <epoxy/gl.h>

#include <cstdio>

namespace demo
{
namespace
{
const char *const trackNames[TRACK_COUNT] = {
    "fade:bg_white",  "fade:fg_black", "fade:fg_noise", "fade:plasma",
    "flare:x",        "flare:y",       "flare:size",    "lyrics:num",
    "lyrics:fade",    "lyrics:x",      "lyrics:y",      "image:zemlogo",
    "image:left",     "image:right",   "image:center",  "image:center_alpha",
    "object:num",     "object:x",      "object:y",      "object:z",
    "tunnel:texture", "tunnel:pos"};

int LoadTexture(const std::string &path)
{
    return vyr::tSingleton<vyr::cTextureManager>::GetSingleton().LoadTexture(path, false);
}

unsigned int LoadFragmentShader(const char *path)
{
    auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
    return renderer.CreateShader(kVertexShaderFile, path, true);
}

// The mesh is not freed: its textures and its render object live as long as the program.
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

std::string Numbered(const char *format, int number)
{
    char name[64];
    std::snprintf(name, sizeof name, format, number);
    return name;
}
} // namespace

const char *TrackName(eTrack track) { return trackNames[track]; }

std::array<std::string, kPhotoCount> PhotoNames()
{
    std::array<std::string, kPhotoCount> names;
    size_t count = 0;
    names[count++] = "data/duck.png";
    names[count++] = "data/frenchduck.png";
    for (int i = 1; i <= 12; i++)
        names[count++] = Numbered("data/photos/tovak%02d.png", i);
    for (int i = 1; i <= 6; i++)
        names[count++] = Numbered("data/photos/vemby%02d.png", i);
    names[count++] = "data/photos/vembyskarnold01.png";
    for (int i = 1; i <= 6; i++)
        names[count++] = Numbered("data/photos/skarnold%02d.png", i);
    names[count++] = "data/photos/leather.png";
    names[count++] = "data/photos/heart.png";
    return names;
}

std::string LyricName(int number) { return Numbered("data/lyrics/lyrics%03d", number); }

tTracks LoadTracks(sync_device *device)
{
    tTracks tracks{};
    for (size_t i = 0; i < tracks.size(); i++)
        tracks[i] = sync_get_track(device, trackNames[i]);
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
