#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"

#include <epoxy/gl.h>

#include <GL/glu.h>

#include <array>

namespace
{
using vyr::cRenderer;

using tMatrix = std::array<double, 16>;

tMatrix GetMatrix(GLenum name)
{
    tMatrix matrix;
    glGetDoublev(name, matrix.data());
    return matrix;
}

tMatrix Identity() { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

int GetInteger(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

float GetFloat(GLenum name)
{
    GLfloat value = 0;
    glGetFloatv(name, &value);
    return value;
}

std::array<int, 4> GetViewport()
{
    std::array<int, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return viewport;
}

class Renderer : public test::cOffscreenTest
{};

TEST_F(Renderer, HasNoScaleBeforeItIsGivenOne)
{
    const cRenderer renderer;
    EXPECT_EQ(renderer.GetScaleFactor().x, 1.0f);
    EXPECT_EQ(renderer.GetScaleFactor().y, 1.0f);
}

// Mirrored, half of 16:9 in single precision high, and replaced at once by the perspective.
TEST_F(Renderer, BeginsWithAFrustumThatDoesNotLast)
{
    mRenderer.Shutdown();
    const test::cOpenGLLog log;
    ASSERT_TRUE(mRenderer.Init(1280, 720, false));
    EXPECT_EQ(log.LinesOf("glFrustum"),
              std::vector<std::string>{"glFrustum 0.5 -0.5 -0.888888896 0.888888896 1 1000"});
}

TEST_F(Renderer, StartsFromItsFixedState)
{
    EXPECT_EQ(GetFloat(GL_DEPTH_CLEAR_VALUE), 1.0f);
    EXPECT_EQ(GetInteger(GL_STENCIL_CLEAR_VALUE), 0);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_EQ(GetInteger(GL_DEPTH_FUNC), GL_LEQUAL);
    EXPECT_EQ(GetInteger(GL_FRONT_FACE), GL_CCW);
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    EXPECT_EQ(GetInteger(GL_CULL_FACE_MODE), GL_BACK);
    EXPECT_EQ(GetInteger(GL_PERSPECTIVE_CORRECTION_HINT), GL_NICEST);
    EXPECT_EQ(GetInteger(GL_LINE_SMOOTH_HINT), GL_NICEST);
    EXPECT_TRUE(glIsEnabled(GL_LINE_SMOOTH));
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_BLEND)); // switched on by whoever draws the show
    EXPECT_EQ(GetInteger(GL_BLEND_SRC), GL_SRC_ALPHA);
    EXPECT_EQ(GetInteger(GL_BLEND_DST), GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_S));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_T));
    for (GLenum coordinate : {GL_S, GL_T}) {
        GLint mode = 0;
        glGetTexGeniv(coordinate, GL_TEXTURE_GEN_MODE, &mode);
        EXPECT_EQ(mode, GL_SPHERE_MAP);
    }
    EXPECT_EQ(GetInteger(GL_MATRIX_MODE), GL_MODELVIEW);
    EXPECT_EQ(GetMatrix(GL_MODELVIEW_MATRIX), Identity());
}

// 60 degrees, the near plane a single-precision 0.0001.
TEST_F(Renderer, ProjectsInPerspective)
{
    const tMatrix projection = GetMatrix(GL_PROJECTION_MATRIX);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(60.0, double(1280.0f / 720.0f), double(0.0001f), 1000.0);
    EXPECT_EQ(projection, GetMatrix(GL_PROJECTION_MATRIX));
    glMatrixMode(GL_MODELVIEW);
    EXPECT_EQ(mRenderer.GetFOV(), 60.0f);
}

TEST_F(Renderer, SetFOVLoadsIdentityAndIgnoresTheOrthographicMode)
{
    mRenderer.SetOrtho(true);
    glTranslatef(1, 2, 3);
    mRenderer.SetFOV(90.0f);
    EXPECT_EQ(mRenderer.GetFOV(), 90.0f);
    EXPECT_EQ(GetMatrix(GL_MODELVIEW_MATRIX), Identity());
    EXPECT_NEAR(GetMatrix(GL_PROJECTION_MATRIX)[5], 1.0, 1e-6); // 1 / tan(45 degrees)
    mRenderer.SetOrtho(true);                                   // still on: nothing happens
    EXPECT_NEAR(GetMatrix(GL_PROJECTION_MATRIX)[5], 1.0, 1e-6);
    mRenderer.SetOrtho(false);
}

TEST_F(Renderer, OrthographicModeHasAUnitAPixelAndYDown)
{
    mRenderer.SetOrtho(true);
    const tMatrix projection = GetMatrix(GL_PROJECTION_MATRIX);
    EXPECT_NEAR(projection[0], 2.0 / 1280.0, 1e-9);
    EXPECT_NEAR(projection[5], -2.0 / 720.0, 1e-9);
    EXPECT_NEAR(projection[12], -1.0, 1e-6);
    EXPECT_NEAR(projection[13], 1.0, 1e-6);
    EXPECT_EQ(projection[10], -1.0f); // from -1 to 1 in depth
    EXPECT_EQ(projection[14], 0.0f);
    mRenderer.SetOrtho(false);
}

TEST_F(Renderer, LeavingTheOrthographicModeAlwaysGivesIdentity)
{
    glTranslatef(1, 2, 3);
    mRenderer.SetOrtho(true);
    mRenderer.SetOrtho(false);
    EXPECT_EQ(GetMatrix(GL_MODELVIEW_MATRIX), Identity());
    EXPECT_EQ(GetInteger(GL_MATRIX_MODE), GL_MODELVIEW);
}

TEST_F(Renderer, EnteringTwicePushesOnceAndLeavingTwicePopsOnce)
{
    const int depth = GetInteger(GL_MODELVIEW_STACK_DEPTH);
    mRenderer.SetOrtho(true);
    mRenderer.SetOrtho(true);
    EXPECT_EQ(GetInteger(GL_MODELVIEW_STACK_DEPTH), depth + 1);
    mRenderer.SetOrtho(false);
    mRenderer.SetOrtho(false);
    EXPECT_EQ(GetInteger(GL_MODELVIEW_STACK_DEPTH), depth);
}

TEST_F(Renderer, ResetLoadsIdentityIntoTheCurrentMatrix)
{
    glTranslatef(1, 2, 3);
    mRenderer.Reset();
    EXPECT_EQ(GetMatrix(GL_MODELVIEW_MATRIX), Identity());
}

TEST_F(Renderer, ClearWritesAllChannelsAgain)
{
    glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_FALSE);
    mRenderer.Clear(vyr::cColor(0.2f, 0.4f, 0.6f, 0.8f));
    EXPECT_EQ(ReadPixel(640, 360), (test::tPixel{51, 102, 153, 204}));
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_TRUE(mask[0] && mask[1] && mask[2] && mask[3]);
}

TEST_F(Renderer, ClearEmptiesTheDepthBuffer)
{
    glClearDepth(0.25);
    mRenderer.Clear(vyr::cColor());
    float depth = 0;
    glReadPixels(5, 5, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_NEAR(depth, 0.25f, 1e-4f);
}

TEST_F(Renderer, SceneBracketMakesNoOpenGLCallAndAnswersTrue)
{
    EXPECT_TRUE(mRenderer.BeginScene());
    mRenderer.EndScene();
    EXPECT_TRUE(mRenderer.BeginScene());
    mRenderer.EndScene();
}

TEST_F(Renderer, CloseRequestsAreDeclinedAndEndNothing)
{
    EXPECT_EQ(cRenderer::WindowCloseCallback(), 0);
    EXPECT_TRUE(mRenderer.Update());
}

TEST_F(Renderer, KeepsItsScaleFactor)
{
    mRenderer.SetScaleFactor({2.0f, 3.0f});
    EXPECT_EQ(mRenderer.GetScaleFactor().x, 2.0f);
    EXPECT_EQ(mRenderer.GetScaleFactor().y, 3.0f);
}

using RendererDeath = Renderer;

TEST_F(RendererDeath, MispairedBracketsStopTheProgram)
{
    EXPECT_DEATH(mRenderer.EndScene(),
                 "mSceneBegun && \"cRenderer::EndScene\\(\\): Called with no prior call to "
                 "BeginScene\\(\\).\"\\), function EndScene, file Renderer, line 191");
    EXPECT_DEATH(
        {
            mRenderer.BeginScene();
            mRenderer.BeginScene();
        },
        "!mSceneBegun && \"cRenderer::BeginScene\\(\\): Called twice with no matching call to "
        "EndScene\\(\\).\"\\), function BeginScene, file Renderer, line 183");
}

// The letter-boxed viewport, for windows of several shapes.
class Viewport : public testing::Test
{
protected:
    static std::array<int, 4> Of(int width, int height)
    {
        struct cWindow : test::cOffscreenTest
        {
            cWindow(int w, int h) : cOffscreenTest(w, h) {}
            void TestBody() override {}
        };
        const cWindow window(width, height);
        return GetViewport();
    }
};

using tViewport = std::array<int, 4>;

TEST_F(Viewport, FillsAWindowOfTheDesignsShape)
{
    EXPECT_EQ(Of(1280, 720), (tViewport{0, 0, 1280, 720}));
}

// 44, not 45: the height is rounded to slightly above 810.
TEST_F(Viewport, HasBarsInATallWindow)
{
    EXPECT_EQ(Of(1440, 900), (tViewport{0, 44, 1440, 810}));
    EXPECT_EQ(Of(1024, 768), (tViewport{0, 96, 1024, 576}));
}

// Not bars at the sides: the picture is cropped above and below.
TEST_F(Viewport, IsCroppedInAWideWindow)
{
    EXPECT_EQ(Of(2560, 1080), (tViewport{0, -180, 2560, 1440}));
    EXPECT_EQ(Of(1366, 768), (tViewport{0, 0, 1366, 768}));
}
} // namespace
