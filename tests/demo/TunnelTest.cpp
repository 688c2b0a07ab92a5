#include "demo/Tunnel.h"

#include "engine/Singleton.h"
#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"

#include <epoxy/gl.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace
{
using tLines = std::vector<std::string>;

std::vector<float> Numbers(const std::string &line)
{
    std::istringstream text(line);
    std::string call;
    text >> call;
    std::vector<float> numbers;
    for (float number = 0; text >> number;)
        numbers.push_back(number);
    return numbers;
}

class TunnelEffect : public test::cOffscreenTest
{
protected:
    TunnelEffect()
        : cOffscreenTest(320, 180), mTexture(MakeTexture(1, 1, test::tPixel{255, 255, 255, 255}))
    {
        Anchor(0);
    }

    // Draws once at `pos`, which leaves its anchor behind for the next call.
    void Anchor(float pos) { demo::Tunnel(mTexture, pos); }

    // The depths of the slices of one call, far to near.
    std::vector<float> SliceDepths(float pos)
    {
        const test::cOpenGLLog log;
        demo::Tunnel(mTexture, pos);
        std::vector<float> depths;
        for (const std::string &line : log.LinesOf("glTranslatef"))
            depths.push_back(-Numbers(line)[2]);
        depths.erase(depths.begin()); // the camera
        return depths;
    }

    float NearestDepthAfter(float pos)
    {
        Anchor(pos);
        return SliceDepths(0).back();
    }

    int mTexture;
};

TEST_F(TunnelEffect, HasTenSlicesFromFarToNear)
{
    const std::vector<float> depths = SliceDepths(0);
    EXPECT_EQ(depths, (std::vector<float>{5, 4.5, 4, 3.5, 3, 2.5, 2, 1.5, 1, 0.5}));
}

// -3 + 4 * 0.5 = -1: the nearest slice then lies at -0.5.
TEST_F(TunnelEffect, NextCallStartsWhereThisOneEnded)
{
    EXPECT_FLOAT_EQ(NearestDepthAfter(3.0f), -0.5f);
    EXPECT_FLOAT_EQ(NearestDepthAfter(1.25f), -0.75f + 0.5f);
    EXPECT_FLOAT_EQ(NearestDepthAfter(1.0f), -0.5f); // not above 1: taken as it is
    EXPECT_FLOAT_EQ(NearestDepthAfter(0.25f), -0.25f + 0.5f);
    EXPECT_FLOAT_EQ(NearestDepthAfter(-3.0f), 3.5f);
    EXPECT_FLOAT_EQ(NearestDepthAfter(1234.75f), -0.75f + 0.5f);
}

// The farthest slice lies at 2^23: half a step nearer is a number of its own, half a step farther
// is not.
TEST_F(TunnelEffect, HasTenSlicesAsLongAsAStepNearerIsANumber)
{
    Anchor(-8388603.0f);
    const std::vector<float> depths = SliceDepths(0);
    EXPECT_EQ(depths.size(), 10u);
    EXPECT_EQ(depths.front(), 8388608.0f);
    EXPECT_EQ(depths.back(), 8388603.5f);
}

TEST_F(TunnelEffect, NegativePositionsMoveTheWholeTunnelAway)
{
    Anchor(-3.0f);
    const std::vector<float> depths = SliceDepths(0);
    EXPECT_EQ(depths.front(), 8.0f);
    EXPECT_EQ(depths.back(), 3.5f);
}

// Stepping by halves from -pos is what the anchor is defined by; the step at 1.01 is the same sum.
TEST_F(TunnelEffect, AnchorIsThatOfSteppingByHalves)
{
    for (float pos : {1.01f, 1.5f, 1.75f, 2.3f, 17.123f, 99.999f, 1000.5f}) {
        float expected = -pos;
        do
            expected += 0.5f;
        while (expected < -1.0f);
        Anchor(pos);
        EXPECT_EQ(SliceDepths(0).front(), expected + 5.0f) << pos;
    }
}

// Where the anchor's own rounding lifts the last step above it, an eleventh slice is drawn.
TEST_F(TunnelEffect, RoundingMayGiveAnEleventhSlice)
{
    int elevens = 0;
    for (int i = 0; i < 40; i++) {
        const float pos = 1.0f + float(i) * 0.0685f;
        Anchor(pos);
        float anchor = -pos;
        if (pos > 1.0f)
            do
                anchor += 0.5f;
            while (anchor < -1.0f);
        size_t expected = 0;
        for (float z = anchor + 5.0f; z > anchor; z -= 0.5f)
            expected++;
        EXPECT_EQ(SliceDepths(0).size(), expected) << pos;
        elevens += expected == 11;
    }
    EXPECT_GT(elevens, 0);
}

TEST_F(TunnelEffect, SliceIsThreeSquaresOfHalvingSizeTurnedFurther)
{
    const test::cOpenGLLog log;
    demo::Tunnel(mTexture, 0);
    const tLines vertices = log.LinesOf("glVertex2f");
    ASSERT_EQ(vertices.size(), 10u * 3 * 4);
    const float size = 10.0f / 6.0f; // of the farthest, at depth 5
    EXPECT_FLOAT_EQ(Numbers(vertices[0])[0], -size);
    EXPECT_FLOAT_EQ(Numbers(vertices[0])[1], -size);
    EXPECT_FLOAT_EQ(Numbers(vertices[4])[0], -size / 2);
    EXPECT_FLOAT_EQ(Numbers(vertices[8])[0], -size / 4);
    EXPECT_FLOAT_EQ(Numbers(vertices[108])[0], -10.0f / 1.5f); // of the nearest
    EXPECT_EQ(log.LinesOf("glRotatef"), tLines(20, "glRotatef 22 0 0 1"));
}

TEST_F(TunnelEffect, SliceIsMagentaBrighterFarAndOpaqueNear)
{
    const test::cOpenGLLog log;
    demo::Tunnel(mTexture, 0);
    const tLines colors = log.LinesOf("glColor4f");
    ASSERT_EQ(colors.size(), 10u);
    EXPECT_EQ(Numbers(colors[0]), (std::vector<float>{1, 0, 1, 2.0f / 6.0f}));
    EXPECT_EQ(Numbers(colors[9]), (std::vector<float>{0.1f, 0, 0.1f, 2.0f / 1.5f}));
}

TEST_F(TunnelEffect, CameraFollowsThePath)
{
    const test::cOpenGLLog log;
    demo::Tunnel(mTexture, 30);
    const std::vector<float> camera = Numbers(log.LinesOf("glTranslatef")[0]);
    const double x = std::cos(6.0) + std::cos(1.5) + std::sin(2.0) + std::sin(double(30.0f / 7.0f));
    const double y = 4 * std::cos(1.5) + std::sin(2.5) + std::cos(6.0) + std::sin(double(1.2f));
    EXPECT_NEAR(camera[0], -x, 1e-4);
    EXPECT_NEAR(camera[1], -2 * y, 1e-4);
    EXPECT_EQ(camera[2], 0.0f);
    const std::vector<float> slice = Numbers(log.LinesOf("glTranslatef")[1]); // at depth 5
    const double u = 35.0;
    EXPECT_NEAR(slice[0], std::cos(u / 5) + std::cos(u / 20) + std::sin(u / 15) + std::sin(u / 7),
                1e-4);
}

TEST_F(TunnelEffect, LeavesItsStateBehind)
{
    glTranslatef(5, 5, 5);
    glDisable(GL_TEXTURE_2D);
    Anchor(2);
    GLint function = 0, depth = 0;
    GLboolean isWritten = GL_TRUE;
    glGetIntegerv(GL_DEPTH_FUNC, &function);
    glGetBooleanv(GL_DEPTH_WRITEMASK, &isWritten);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(function, GL_ALWAYS);
    EXPECT_FALSE(isWritten);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(depth, 1);
}

TEST_F(TunnelEffect, BindsItsTextureTwice)
{
    const test::cOpenGLLog log;
    demo::Tunnel(mTexture, 0);
    EXPECT_EQ(log.LinesOf("glBindTexture").size(), 2u);
}

// Positions that no track should hold: something is drawn or not, and it ends.
TEST_F(TunnelEffect, EndsAtAnyPosition)
{
    const float infinity = std::numeric_limits<float>::infinity();
    for (float pos : {-1e8f, 1e8f, 8388607.5f, 1e30f, infinity, -infinity, std::nanf("")}) {
        Anchor(pos);
        EXPECT_LE(SliceDepths(0).size(), 11u) << pos;
        Anchor(0);
    }
}

TEST_F(TunnelEffect, SquareCoversTheTextureUpright)
{
    const test::cOpenGLLog log;
    demo::DrawQuad(2);
    EXPECT_EQ(log.Lines(), (tLines{"glTexCoord2f 0 1", "glVertex2f -2 -2", "glTexCoord2f 1 1",
                                   "glVertex2f 2 -2", "glTexCoord2f 1 0", "glVertex2f 2 2",
                                   "glTexCoord2f 0 0", "glVertex2f -2 2"}));
}

TEST(TunnelDeath, NeedsTheSingletons)
{
    EXPECT_DEATH(demo::Tunnel(0, 0), "Singleton not initialised!");
}
} // namespace
