#pragma once

#include "engine/3DObject.h"
#include "engine/Color.h"
#include "engine/Vector2.h"
#include "engine/Vector3.h"

#include <list>
#include <string>

namespace vyr
{
/// The window, the OpenGL state that every layer starts from, and everything that draws.
///
/// One instance, held by tSingleton<cRenderer>; all calls belong to the main thread with the OpenGL
/// context current (construction and destruction need none). No OpenGL error is queried anywhere.
///
/// Two projections. The perspective one is the rule: a vertical field of view of 60 degrees, the
/// modelview the identity. The orthographic one, a unit a window pixel, origin top left, y down, is
/// entered and left again by each 2D call; leaving it always gives a modelview of identity.
///
/// Textures are named by the ids of cTextureManager, which must exist for every call that takes
/// one; an id out of range is an assertion there.
class cRenderer
{
public:
    /// How RenderObject draws. Any other number draws nothing.
    enum RENDERMODE : int
    {
        RENDERMODE_TEXTURED = 0, ///< filled, the object's texture by its own coordinates
        RENDERMODE_SPHEREMAP =
            1,                   ///< filled, the texture as an environment; nothing without texture
        RENDERMODE_NORMALS = 2,  ///< a line of length 0.1 along each vertex's normal
        RENDERMODE_WIREFRAME = 3 ///< the outline of every polygon
    };

    /// Returned by a framebuffer call that failed.
    static constexpr unsigned int kNoFramebuffer = 0xFFFFFFFF;

    cRenderer() = default;
    ~cRenderer() = default; ///< makes no OpenGL call; Shutdown closes the window

    // Window and state ---------------------------------------------------------------------------

    /// Opens the window, titled "Demo", swapping with the display, and sets the state of InitGL.
    /// False when the window library or the window can't be started; the size is stored anyway.
    bool Init(int width, int height, bool fullscreen);
    /// The state that every show starts from: depth test GL_LEQUAL, back faces culled, lighting
    /// off, the usual alpha blend function (blending itself stays off), texturing on, the
    /// perspective projection, and a viewport as wide as the window with the design's aspect ratio,
    /// centred: bars above and below in a tall window, a crop above and below in a wide one.
    void InitGL();
    /// Closes the window. Always true.
    bool Shutdown();

    void SetCaption(const std::string &caption);
    /// Window pixels per design unit of 1280 by 720, for sprites.
    void SetScaleFactor(const cVector2 &scaleFactor);
    const cVector2 &GetScaleFactor() const { return mScaleFactor; }
    int GetWidth() const { return mWidth; }   ///< of the window, in pixels
    int GetHeight() const { return mHeight; } ///< of the window, in pixels

    /// Loads the perspective projection (vertical degrees, aspect of the window, not of the
    /// viewport) and an identity modelview, even while the orthographic projection is on.
    void SetFOV(float degrees);
    float GetFOV() const { return mFOV; }
    /// Enters or leaves the orthographic projection; no effect if it is in that state already.
    void SetOrtho(bool on);
    /// Loads the identity into the current matrix.
    void Reset();

    /// For a window library that asks before it closes the window: sets a flag and declines the
    /// request. Nothing reads the flag: only Escape and the end of the music end a show.
    static int WindowCloseCallback();

    // The frame ----------------------------------------------------------------------------------

    /// BeginScene and EndScene only check that they are paired: else an assertion. Always true.
    bool BeginScene();
    void EndScene();
    /// Clears colour and depth, writing all four channels again from here on.
    void Clear(const cColor &color) const;
    void Present() const; ///< shows the frame and processes the window's events
    bool Update();        ///< false while Escape is held

    // Shaders ------------------------------------------------------------------------------------

    /// Builds a program from two source files and makes it current; an empty path leaves its stage
    /// out. `plainPath`: paths are relative to the working directory, else names of resources.
    /// Never fails: the driver's log is printed under "VertexShader Info Log: ",
    /// "FragmentShader Info Log: " or "Prog Info Log: ", and a missing file is treated as empty.
    unsigned int CreateShader(const std::string &vertexPath, const std::string &fragmentPath,
                              bool plainPath);

    /// The file `path` has changed: compiles and links every program made from it (with plain
    /// paths) again, under the same name; uniforms that it still has keep their values. On failure
    /// returns false, with the driver's log in `log`, and every program stays as it was. Leaves the
    /// current program current.
    static bool RefreshShaders(const std::string &path, std::string &log);

    // Render targets -----------------------------------------------------------------------------

    /// Makes the two targets of the window's size that Post_FeedbackBlur works in; once, after Init
    /// and with the texture manager there. They are the textures "box_fbo_zoomblur1" and "...2".
    /// Always true.
    bool InitPostProcessing();
    /// A framebuffer that draws into texture `color`, and tests depth in texture `depth` (0: none,
    /// so texture 0 can't be one). kNoFramebuffer when the driver refuses. The caller keeps the
    /// name; the textures stay the manager's. Leaves the window bound.
    unsigned int CreateFBO(unsigned int color, unsigned int depth);
    void DestroyFBO(unsigned int fbo); ///< the textures stay
    /// The depth buffer recorded for `fbo`. None is ever recorded, so always kNoFramebuffer.
    unsigned int GetFBODepthBuffer(unsigned int fbo);
    /// Draws into `fbo` from here on; the viewport stays the window's.
    void BeginUpdateFBO(unsigned int fbo);
    void EndUpdateFBO(); ///< draws into the window again

    // 2D drawing ---------------------------------------------------------------------------------

    /// A quad as large as the window, moved by `position` pixels; `uv0` lies at its bottom left,
    /// `uv1` at its top right: (0, 1) and (1, 0) show a texture upright. Colour, texture, blending
    /// and depth test are the caller's. Leaves depth writes on, the projection perspective.
    void DrawFullscreenQuad(const cVector3 &position, const cVector2 &uv0, const cVector2 &uv1);
    /// The texture over the whole window, times the current colour. Leaves texturing on.
    void Post_Draw(int texture);
    void Post_Draw(); ///< the same with whatever texture is bound

    /// Draws `texture` as a sprite at its own size. `position` is its top-left corner in design
    /// units (1280 by 720, origin top left, y down) before it is scaled and turned by `angle`
    /// degrees about its centre. A scale negative in one axis mirrors it, which turns its back:
    /// with culling on, nothing is drawn then. Colour and blending are the caller's. Leaves
    /// texturing on and depth testing off, which later layers count on.
    void Post_DrawSprite(int texture, cVector2 position, const cVector2 &scale, float angle);

    // Effects over the whole window --------------------------------------------------------------

    /// `texture` with its red moved by minus half of `offset` (window pixels) and its blue by plus
    /// half. Colour and blending are the caller's; alpha is written three times. Leaves texturing
    /// and all four channels on.
    void Post_RGBSplit(int texture, cVector2 offset);
    /// Adds to the window a zoom blur of `texture`: eight passes, each laying the picture,
    /// magnified by zoom^(2^i), over itself with the opacity w / (w + 1), w = weight^(2^i), times
    /// the alpha that the picture has by then. The layers lie upside down on one another from pass
    /// to pass, and the result compared with Post_Draw: a render target comes out upright. The
    /// plain copies in it take the current colour as it stands. Needs InitPostProcessing. Whatever
    /// was bound, it ends on the window, with blending on and additive (GL_ONE, GL_ONE), the colour
    /// white, depth testing on: the next drawer sets its own blend function.
    void Post_FeedbackBlur(int texture, float zoom, float weight);
    /// `texture` row by row, each row of the window moved sideways by a wave of `time` seconds. The
    /// strength is amount.x squared, so its sign does not matter; amount.y rolls the picture, in
    /// picture heights. The picture is upside down compared with Post_Draw. Colour and blending are
    /// the caller's. Leaves texturing on, the scissor test off.
    void Post_SignalDistort(int texture, cVector2 amount, float time);

    // Objects -------------------------------------------------------------------------------------

    /// Draws `object`, which must not be null, under the modelview that the caller set. `texture`
    /// replaces the object's own in the first two modes; -1 keeps it. An object without a texture
    /// is never textured. Every polygon counts as a triangle in the filled modes. Leaves all client
    /// arrays off; texturing on after a textured drawing, else off; blending and smooth lines on
    /// after RENDERMODE_NORMALS.
    void RenderObject(c3DObject::cRenderObject *object, RENDERMODE mode, int texture);

private:
    struct cFBOEntry
    {
        unsigned int mFBO;
        unsigned int mDepthBuffer;
    };

    void BlurPass(int pass, float zoom, float weight);
    void DrawTriangles(const c3DObject::cRenderObject &object);
    void DrawTextured(const c3DObject::cRenderObject &object, int texture);
    void DrawSphereMapped(const c3DObject::cRenderObject &object, int texture);
    void DrawNormals(const c3DObject::cRenderObject &object);
    void DrawWireframe(const c3DObject::cRenderObject &object);

    int mWidth = 0;
    int mHeight = 0;
    bool mFullscreen = false;
    bool mOrtho = false;
    float mFOV = 60.0f;
    bool mSceneBegun = false;
    unsigned int mZoomBlurTexture1 = 0;
    unsigned int mZoomBlurFBO1 = 0;
    unsigned int mZoomBlurTexture2 = 0;
    unsigned int mZoomBlurFBO2 = 0;
    cVector2 mScaleFactor{1.0f, 1.0f};
    cVector2 mDesignSize{1280.0f, 720.0f};
    std::list<cFBOEntry> mFBOs;

    static bool mQuitFromWindowManager;
};
} // namespace vyr
