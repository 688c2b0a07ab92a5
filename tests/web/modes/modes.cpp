// A show for tests: the engine's four ways to draw an object and its four effects, one a bar of
// four rows, so that a still of each can be compared.

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "show/Show.h"

#include <epoxy/gl.h>

#include <stdexcept>

namespace
{
const int kRowsEach = 4;

vyr::cRenderer &Renderer() { return vyr::tSingleton<vyr::cRenderer>::GetSingleton(); }
vyr::cTextureManager &Textures() { return vyr::tSingleton<vyr::cTextureManager>::GetSingleton(); }

class cModes : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        vyr::cShowDescription show;
        show.mTitle = "Modes";
        show.mMusic = "data/waiting.mp3";
        show.mRowsPerSecond = 4;
        show.mLastRow = 8 * kRowsEach;
        show.mTracks = {"amount"};
        show.mFiles = {"data/oh2.lwo", "data/duck.png", "data/tex9.png"};
        return show;
    }

    void Load() override
    {
        mPicture = Textures().LoadTexture("data/duck.png", true);
        mSphere = Textures().LoadTexture("data/tex9.png", false);
        // What is kept is the picture, wherever it was decoded.
        const auto &kept = Textures().GetTexture(mPicture);
        const size_t bytes = size_t(kept.mSize.x) * size_t(kept.mSize.y) * size_t(kept.mComponents);
        size_t sum = 0;
        for (size_t i = 0; i < bytes; i++)
            sum += kept.mPixels[i];
        if (sum == 0)
            throw std::runtime_error("data/duck.png: kept pixels are empty");
        mObject = vyr::c3DObject::CreateFromLWO2("data/oh2.lwo");
        if (!mObject)
            throw std::runtime_error("data/oh2.lwo: no object");
        mRendered = mObject->CreateRenderObject();
        const int target = Textures().CreateTexture("scene", Renderer().GetWidth(),
                                                    Renderer().GetHeight(), true, false);
        mScene = target;
        mSceneBuffer = Renderer().CreateFBO(unsigned(target), 0);
    }

    void Draw(double row, double seconds) override
    {
        const int part = int(row) / kRowsEach;
        const float amount = Sample(0, row);
        Renderer().BeginScene();
        Renderer().Clear({0.1f, 0.2f, 0.3f, 1});
        if (part < 4)
            DrawObject(vyr::cRenderer::RENDERMODE(part), amount);
        else
            DrawEffect(part - 4, amount, float(seconds));
        Renderer().EndScene();
    }

private:
    void DrawObject(vyr::cRenderer::RENDERMODE mode, float amount)
    {
        glEnable(GL_DEPTH_TEST);
        glDisable(GL_BLEND);
        glColor4f(1, 1, 1, 1);
        Renderer().Reset();
        glTranslatef(0, 0, -4);
        glRotatef(30 + 20 * amount, 0.3f, 1, 0);
        Renderer().RenderObject(mRendered, mode,
                                mode == vyr::cRenderer::RENDERMODE_SPHEREMAP ? mSphere : -1);
    }

    // A scene of its own in a target, and the effect of it on the window.
    void DrawEffect(int effect, float amount, float seconds)
    {
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        Renderer().BeginUpdateFBO(mSceneBuffer);
        Renderer().Clear({0.3f, 0.1f, 0.1f, 1});
        glColor4f(1, 1, 1, 1);
        Renderer().Post_DrawSprite(mPicture, {300, 60}, {1, 1}, 10 * amount);
        Renderer().EndUpdateFBO();
        glColor4f(1, 1, 1, 1);
        switch (effect) {
        case 0:
            Renderer().Post_RGBSplit(mScene, {20 * amount, 6});
            break;
        case 1:
            Renderer().Post_FeedbackBlur(mScene, 1.01f, 0.5f + 0.3f * amount);
            glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
            break;
        case 2:
            Renderer().Post_SignalDistort(mScene, {1 + amount, 0.1f}, 300 + seconds);
            break;
        default:
            Renderer().Post_Draw(mScene);
        }
    }

    int mPicture = -1, mSphere = -1, mScene = -1;
    unsigned mSceneBuffer = 0;
    vyr::c3DObject *mObject = nullptr;
    vyr::c3DObject::cRenderObject *mRendered = nullptr;
};
} // namespace

VYR_SHOW(cModes);
