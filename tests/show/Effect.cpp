// A show that draws into the window, into a target of its own, and that target into the window's
// middle.

#include "engine/Renderer.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "show/Show.h"

#include <epoxy/gl.h>

namespace
{
vyr::cRenderer &Renderer() { return vyr::tSingleton<vyr::cRenderer>::GetSingleton(); }
vyr::cTextureManager &Textures() { return vyr::tSingleton<vyr::cTextureManager>::GetSingleton(); }

class cEffect : public vyr::cShow
{
public:
    vyr::cShowDescription Describe() const override
    {
        vyr::cShowDescription show;
        show.mTitle = "Effect";
        show.mMusic = "data/music.mp3";
        show.mRowsPerSecond = 16;
        show.mLastRow = 256;
        show.mTracks = {"height", "pick"};
        return show;
    }

    void Load() override
    {
        mTexture = Textures().CreateTexture("target", Renderer().GetWidth(), Renderer().GetHeight(),
                                            true, false);
        mTarget = Renderer().CreateFBO(unsigned(mTexture), 0);
    }

    void Draw(double, double) override
    {
        Renderer().BeginScene();
        Renderer().Clear({0, 1, 0, 1}); // stays around the effect
        Renderer().BeginUpdateFBO(mTarget);
        Renderer().Clear({1, 0, 0, 1});
        Renderer().EndUpdateFBO();
        glColor4f(1, 1, 1, 1);
        glEnable(GL_SCISSOR_TEST);
        glScissor(Renderer().GetWidth() / 4, Renderer().GetHeight() / 4, Renderer().GetWidth() / 2,
                  Renderer().GetHeight() / 2);
        Renderer().Post_Draw(mTexture);
        glDisable(GL_SCISSOR_TEST);
        Renderer().EndScene();
    }

private:
    int mTexture = -1;
    unsigned int mTarget = 0;
};
} // namespace

VYR_SHOW(cEffect);
