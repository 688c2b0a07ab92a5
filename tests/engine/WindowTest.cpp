#include "platform/Window.h"
#include "engine/Renderer.h"
#include "platform/Display.h"
#include "tests/support/Screen.h"

#include <epoxy/gl.h>
#include <gtest/gtest.h>

namespace
{
// A real window on a real display of 1280 by 720.
class Window : public testing::Test
{
protected:
    ~Window() override { mRenderer.Shutdown(); }

    void Open(int width, int height, bool fullscreen)
    {
        ASSERT_TRUE(mRenderer.Init(width, height, fullscreen));
        mRenderer.Present();
        ASSERT_TRUE(mScreen.WaitForWindow("Demo"));
    }

    // Passes that draw nothing, until Update answers `expected`.
    bool UpdateBecomes(bool expected)
    {
        return test::WaitUntil([&] { return mRenderer.Update() == expected; });
    }

    int Bits(GLenum name)
    {
        GLint bits = 0;
        glGetIntegerv(name, &bits);
        return bits;
    }

    test::cScreen mScreen;
    vyr::cRenderer mRenderer;
};

TEST_F(Window, DisplayIsMeasuredBeforeAnythingIsOpen)
{
    EXPECT_EQ(CGDisplayPixelsWide(0), 1280);
    EXPECT_EQ(CGDisplayPixelsHigh(0), 720);
}

TEST_F(Window, HasTheFramebufferAndTheFixedPipeline)
{
    Open(320, 180, false);
    EXPECT_EQ(Bits(GL_RED_BITS), 8);
    EXPECT_EQ(Bits(GL_GREEN_BITS), 8);
    EXPECT_EQ(Bits(GL_BLUE_BITS), 8);
    EXPECT_EQ(Bits(GL_ALPHA_BITS), 8);
    EXPECT_GE(Bits(GL_DEPTH_BITS), 16);
    glBegin(GL_QUADS);
    glEnd();
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(Window, HasTheAskedSize)
{
    Open(320, 180, false);
    EXPECT_EQ(mScreen.Width(), 320);
    EXPECT_EQ(mScreen.Height(), 180);
    EXPECT_EQ(mRenderer.GetWidth(), 320);
}

TEST_F(Window, FillsTheScreen)
{
    Open(1280, 720, true);
    EXPECT_EQ(mScreen.Width(), 1280);
    EXPECT_EQ(mScreen.Height(), 720);
}

TEST_F(Window, HidesThePointerWhereItFillsTheScreen)
{
    Open(1280, 720, true);
    EXPECT_TRUE(mScreen.HidesPointer());
}

TEST_F(Window, LeavesThePointerWhereOtherWindowsAre)
{
    Open(320, 180, false);
    EXPECT_FALSE(mScreen.HidesPointer());
}

TEST_F(Window, ShowsWhatWasDrawn)
{
    Open(320, 180, false);
    for (int i = 0; i < 3; i++) {
        mRenderer.Clear(vyr::cColor(1.0f, 0.5f, 0.0f, 1.0f));
        mRenderer.Present();
    }
    glFinish();
    EXPECT_EQ(mScreen.Pixel(100, 100), 0xFF8000u);
}

// Without any swap in between: a loop that draws nothing sees the key.
TEST_F(Window, UpdateIsFalseWhileEscapeIsHeld)
{
    Open(320, 180, false);
    EXPECT_TRUE(mRenderer.Update());
    mScreen.PressEscape();
    EXPECT_TRUE(UpdateBecomes(false));
    EXPECT_FALSE(mRenderer.Update());
    mScreen.ReleaseEscape();
    EXPECT_TRUE(UpdateBecomes(true));
}

TEST_F(Window, CloseRequestChangesNothing)
{
    Open(320, 180, false);
    mScreen.RequestClose();
    for (int i = 0; i < 20; i++) {
        mRenderer.Present();
        EXPECT_TRUE(mRenderer.Update());
    }
    EXPECT_EQ(mScreen.Width(), 320);
}

TEST_F(Window, CaptionCanBeChanged)
{
    Open(320, 180, false);
    mRenderer.SetCaption("Another");
    mRenderer.Present();
    EXPECT_TRUE(mScreen.WaitForWindow("Another"));
}

// The size is kept although there is no window.
TEST(WindowWithoutDisplay, InitIsFalse)
{
    const char *now = getenv("DISPLAY");
    const std::string display = now ? now : "";
    setenv("DISPLAY", ":nowhere", 1);
    vyr::cRenderer renderer;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(renderer.Init(640, 360, true));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(renderer.GetWidth(), 640);
    EXPECT_EQ(renderer.GetHeight(), 360);
    setenv("DISPLAY", display.c_str(), 1);
}
} // namespace
