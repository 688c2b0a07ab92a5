// Real contexts on a screen: what a show leaves, and what the page draws.

#include "studio/Window.h"
#include "studio/Gui.h"

#include <epoxy/gl.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include <functional>
#include <vector>

namespace
{
using tPixels = std::vector<unsigned char>;

/// A window with a page in it.
class Window : public testing::Test
{
protected:
    Window() : mWindow(320, 200), mGui(mWindow, 1.0) {}

    tPixels Draw(const std::function<void(ImDrawList &)> &draw)
    {
        mGui.Begin({}, 1.0 / 60.0);
        ImGui::SetNextWindowPos({0, 0});
        ImGui::SetNextWindowSize({320, 200});
        ImGui::Begin("page", nullptr, ImGuiWindowFlags_NoDecoration);
        ImGui::Button("a button");
        draw(*ImGui::GetWindowDrawList());
        ImGui::End();
        mGui.End();
        mGui.Render();
        tPixels pixels(320 * 200 * 4);
        glReadPixels(0, 0, 320, 200, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        mWindow.Present();
        return pixels;
    }

    studio::cWindow mWindow;
    studio::cGui mGui;
};

void DrawSomething(ImDrawList &list)
{
    list.AddCircleFilled({160, 100}, 50, IM_COL32(200, 40, 30, 180));
    list.AddText({150, 90}, IM_COL32_WHITE, "text");
}

// Everything that a layer could leave behind.
void LeaveHostileState()
{
    glEnable(GL_FOG);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_NEVER, 0.0f);
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_LIGHTING);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_FALSE);
    glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
    glBlendFunc(GL_ZERO, GL_ONE);
    glLogicOp(GL_INVERT);
    glEnable(GL_COLOR_LOGIC_OP);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 7);
    glActiveTexture(GL_TEXTURE1);
    glMatrixMode(GL_TEXTURE);
    glScalef(3.0f, 5.0f, 7.0f);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glUseProgram(glCreateProgram());
    GLuint names[2] = {};
    glGenBuffers(1, names);
    glBindBuffer(GL_ARRAY_BUFFER, names[0]);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, names[0]);
    glGenFramebuffers(1, &names[1]);
    glBindFramebuffer(GL_FRAMEBUFFER, names[1]);
    glBegin(GL_TRIANGLES); // and it never ends
}

TEST_F(Window, PageIsTheSameWhateverAShowLeavesAndTheShowFindsItAgain)
{
    const tPixels before = Draw(DrawSomething);
    mWindow.UseShow();
    LeaveHostileState();
    for (int i = 0; i < 3; i++)
        EXPECT_EQ(Draw(DrawSomething), before);
    mWindow.UseShow();
    glEnd();
    EXPECT_TRUE(glIsEnabled(GL_FOG));
    GLint value = 0;
    glGetIntegerv(GL_ALPHA_TEST_FUNC, &value);
    EXPECT_EQ(value, GL_NEVER);
    glGetIntegerv(GL_BLEND_EQUATION, &value);
    EXPECT_EQ(value, GL_FUNC_REVERSE_SUBTRACT);
    glGetIntegerv(GL_UNPACK_ROW_LENGTH, &value);
    EXPECT_EQ(value, 7);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &value);
    EXPECT_EQ(value, 2);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &value);
    EXPECT_EQ(value, GL_TEXTURE1);
    glActiveTexture(GL_TEXTURE0);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_GEN_S));
    glActiveTexture(GL_TEXTURE1);
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &value);
    EXPECT_NE(value, 0);
    float matrix[16];
    glGetFloatv(GL_TEXTURE_MATRIX, matrix);
    EXPECT_EQ(matrix[5], 5.0f);
}

// Indices have 16 bits: what comes after the first 65,536 vertices has to be drawn from its own.
TEST_F(Window, PageMayHaveHundredThousandsOfVertices)
{
    const tPixels pixels = Draw([](ImDrawList &list) {
        for (int i = 0; i < 100'000; i++)
            list.AddRectFilled({300, 10}, {301, 11}, IM_COL32(0, 0, 255, 255));
        list.AddRectFilled({200, 150}, {210, 160}, IM_COL32(0, 255, 0, 255));
    });
    const auto at = [&pixels](int x, int y) { return &pixels[size_t((199 - y) * 320 + x) * 4]; };
    EXPECT_EQ(at(205, 155)[0], 0);
    EXPECT_EQ(at(205, 155)[1], 255);
    EXPECT_EQ(at(300, 10)[2], 255);
    EXPECT_NE(at(100, 155)[1], 0); // paper beside them
}

// A picture that the show has drawn is seen by the page.
TEST_F(Window, TexturesAreShared)
{
    mWindow.UseShow();
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    const unsigned char violet[] = {120, 10, 200, 255};
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, violet);
    const tPixels pixels = Draw([texture](ImDrawList &list) {
        list.AddImage(reinterpret_cast<ImTextureID>(static_cast<intptr_t>(texture)), {200, 50},
                      {300, 150});
    });
    const unsigned char *pixel = &pixels[size_t(100 * 320 + 250) * 4];
    EXPECT_EQ(pixel[0], 120);
    EXPECT_EQ(pixel[2], 200);
}
} // namespace
