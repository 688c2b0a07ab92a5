// A show for measuring the studio: a hundred tracks, a picture, a shader and an object, and hardly
// anything to draw.

#include "engine/3DObject.h"
#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "show/Show.h"

#include <epoxy/gl.h>

#include <memory>

namespace
{
class cMeasured : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        vyr::cShowDescription show;
        show.mTitle = "Measured";
        show.mMusic = "music.mp3";
        show.mRowsPerSecond = 16.0;
        show.mLastRow = 4700.0;
        for (int i = 0; i < 100; i++)
            show.mTracks.push_back("track" + std::to_string(100 + i));
        show.mFiles = {"picture.png", "shader.fs", "object.lwo"};
        return show;
    }

    void Load() override
    {
        auto &textures = vyr::tSingleton<vyr::cTextureManager>::GetSingleton();
        mTexture = textures.LoadTexture("picture.png", false);
        mProgram =
            vyr::tSingleton<vyr::cRenderer>::GetSingleton().CreateShader("", "shader.fs", true);
        glUseProgram(0);
        mMesh.reset(vyr::c3DObject::CreateFromLWO2("object.lwo"));
        mObject.reset(mMesh->CreateRenderObject());
    }

    void Draw(double row, double) override
    {
        auto &renderer = vyr::tSingleton<vyr::cRenderer>::GetSingleton();
        renderer.BeginScene();
        renderer.Clear({Sample(0, row), 0.5f, float(mObject->mVertexCount) / 10.0f, 1.0f});
        renderer.EndScene();
    }

private:
    int mTexture = -1;
    unsigned int mProgram = 0;
    std::unique_ptr<vyr::c3DObject> mMesh;
    std::unique_ptr<vyr::c3DObject::cRenderObject> mObject;
};
} // namespace

VYR_SHOW(cMeasured);
