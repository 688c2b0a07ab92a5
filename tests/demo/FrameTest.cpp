#include "demo/Frame.h"

#include "tests/support/OffscreenTest.h"
#include "tests/support/OpenGLLog.h"
#include "tests/support/TestFiles.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <iomanip>
#include <memory>
#include <sstream>

namespace
{
using namespace demo;
using test::tPixel;

const char flatVertex[] = "void main() { gl_Position = ftransform(); }";
// Both shaders show their uniforms as a colour.
const char plasmaFragment[] =
    "uniform float time; uniform float alpha; uniform vec2 resolution; uniform vec2 flarepos;"
    "uniform float flaresize; void main() { gl_FragColor = vec4(time / 10.0, resolution.x / 2560.0,"
    " flarepos.x + flarepos.y * 0.1 + flaresize * 0.01, alpha); }";
const char noiseFragment[] =
    "uniform float time; uniform float alpha;"
    "void main() { gl_FragColor = vec4(0.0, 1.0, 0.0, alpha + time * 0.0); }";

// A show whose tracks each hold one value, and whose every picture has a colour and a size of its
// own.
class Frame : public test::cOffscreenTest
{
protected:
    Frame()
    {
        for (int i = 0; i < TRACK_COUNT; i++) {
            mKeys.push_back({0, Rest(eTrack(i)), SYNC_KEY_HOLD});
            mTracks.push_back({nullptr, &mKeys.back(), 1});
            mShow.mTracks[size_t(i)] = &mTracks.back();
        }
        MakeTextures();
        MakeObjects();
        mShow.mAssets.mPlasmaProgram = MakeProgram(plasmaFragment);
        mShow.mAssets.mNoiseProgram = MakeProgram(noiseFragment);
        glUseProgram(0);
        glEnable(GL_BLEND);
    }

    // Everything off.
    static float Rest(eTrack track)
    {
        for (eTrack picture :
             {IMAGE_LEFT, IMAGE_RIGHT, IMAGE_CENTER, LYRICS_NUM, OBJECT_NUM, TUNNEL_TEXTURE})
            if (track == picture)
                return -1.0f;
        return 0.0f;
    }

    void Set(eTrack track, float value) { mKeys[size_t(track)].value = value; }

    unsigned int MakeProgram(const char *fragment)
    {
        test::WriteFile("a.vs", flatVertex);
        test::WriteFile("a.fs", fragment);
        return mRenderer.CreateShader("a.vs", "a.fs", true);
    }

    // One pixel, which counts as a picture of that size.
    int MakeFlat(float width, float height, const tPixel &color)
    {
        const int texture = MakeTexture(1, 1, color);
        mTextures.GetTexture(texture).mSize = {width, height};
        return texture;
    }

    // Photo i is (100 + i, 0, 0), lyric i (0, 100 + i, 0).
    void MakeTextures()
    {
        for (int i = 0; i < kPhotoCount; i++)
            mShow.mAssets.mPhotos[size_t(i)] = MakeFlat(200, 100, tPixel{100 + i, 0, 0, 255});
        for (int i = 0; i < kLyricCount; i++)
            mShow.mAssets.mLyrics[size_t(i)] = MakeFlat(50, 20, tPixel{0, 100 + i, 0, 255});
        mShow.mAssets.mLogo = MakeFlat(100, 50, tPixel{0, 0, 255, 255});
        mShow.mAssets.mVignette = MakeFlat(1000, 30, tPixel{9, 9, 9, 255});
        mShow.mAssets.mTunnelTexture = MakeTexture(1, 1, tPixel{255, 255, 255, 255});
    }

    // Two squares: yellow and cyan.
    void MakeObjects()
    {
        mShow.mAssets.mObject1 = MakeObject({1, 1, 0, 1});
        mShow.mAssets.mObject2 = MakeObject({0, 1, 1, 1});
    }

    vyr::c3DObject::cRenderObject *MakeObject(const vyr::cColor &color)
    {
        vyr::c3DObject mesh;
        mesh.mVertices.resize(3);
        mesh.mVertices[0].mPosition = {-3, -3, 0};
        mesh.mVertices[1].mPosition = {3, -3, 0};
        mesh.mVertices[2].mPosition = {0, 3, 0};
        mesh.mSurfaces.resize(1);
        mesh.mSurfaces[0].mColor = color;
        mesh.mPolygons.resize(1);
        mesh.mPolygons[0].mIndices = {0, 1, 2};
        mesh.mPolygons[0].mSurface = &mesh.mSurfaces[0];
        mObjects.emplace_back(mesh.CreateRenderObject());
        return mObjects.back().get();
    }

    // The second frame: the first one of a run still has depth testing on.
    test::cPicture Draw(double seconds = 0.0)
    {
        DrawFrame(mShow, 5.0, seconds);
        DrawFrame(mShow, 5.0, seconds);
        return ReadPicture();
    }

    // The textures bound by one frame, in order, without repetitions.
    std::vector<std::string> DrawnTextures()
    {
        const test::cOpenGLLog log;
        DrawFrame(mShow, 5.0, 0.0);
        std::vector<std::string> lines = log.LinesOf("glBindTexture");
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
        return lines;
    }

    std::string Bind(int id)
    {
        return "glBindTexture " + std::to_string(mTextures.GetTexture(id).mHandle);
    }

    struct cFreeObject
    {
        void operator()(vyr::c3DObject::cRenderObject *object) const
        {
            delete[] object->mLineIndices; // outlive the object by design
            delete[] object->mTexCoords;
            delete object;
        }
    };

    test::cTemporaryFolder mFolder;
    std::deque<sync_key> mKeys;
    std::deque<sync_track> mTracks;
    std::vector<std::unique_ptr<vyr::c3DObject::cRenderObject, cFreeObject>> mObjects;
    cLoadedShow mShow;
};

const tPixel black = {0, 0, 0, 255};

TEST_F(Frame, WithEverythingOffShowsOnlyTheVignette)
{
    EXPECT_EQ(DrawnTextures(), std::vector<std::string>{Bind(mShow.mAssets.mVignette)});
    const test::cPicture picture = Draw();
    EXPECT_EQ(picture.At(640, 360), black);
    EXPECT_EQ(picture.At(640, 10), (tPixel{9, 9, 9, 255})); // centred, at the top
    EXPECT_EQ(picture.At(140, 10), (tPixel{9, 9, 9, 255}));
    EXPECT_EQ(picture.At(139, 10), black);
    EXPECT_EQ(picture.At(1140, 10), black);
    EXPECT_EQ(picture.At(640, 30), black);
}

// A track that never says anything is 0, which turns pictures on, not off.
TEST_F(Frame, WithAllTracksAtZeroShowsTheFirstOfEverything)
{
    for (int i = 0; i < TRACK_COUNT; i++)
        Set(eTrack(i), 0.0f);
    const cAssets &assets = mShow.mAssets;
    EXPECT_EQ(DrawnTextures(),
              (std::vector<std::string>{Bind(assets.mTunnelTexture), Bind(assets.mPhotos[0]),
                                        Bind(assets.mLyrics[0]), Bind(assets.mVignette)}));
}

TEST_F(Frame, DrawsItsLayersBackToFront)
{
    for (int i = 0; i < TRACK_COUNT; i++)
        Set(eTrack(i), 1.0f);
    Set(IMAGE_LEFT, 1);
    Set(IMAGE_RIGHT, 2);
    Set(IMAGE_CENTER, 3);
    Set(LYRICS_NUM, 4);
    Set(FADE_BG_WHITE, 0.25f);
    Set(FADE_FG_BLACK, 0.75f);
    const cAssets &assets = mShow.mAssets;
    const test::cOpenGLLog log;
    DrawFrame(mShow, 5.0, 0.0);
    std::vector<std::string> order;
    const std::string object = "glDrawElements 3";
    const std::string white = "glColor4f 1 1 1 0.25", darkness = "glColor4f 0 0 0 0.75";
    const std::string plasma = "glUseProgram " + std::to_string(assets.mPlasmaProgram);
    const std::string noise = "glUseProgram " + std::to_string(assets.mNoiseProgram);
    for (const std::string &line : log.Lines())
        if (line.starts_with("glBindTexture") || line.starts_with("glUseProgram") ||
            line.starts_with("glClear") || line == object || line == white || line == darkness)
            order.push_back(line);
    order.erase(std::unique(order.begin(), order.end()), order.end());
    EXPECT_EQ(order, (std::vector<std::string>{
                         "glClear 16640", plasma, "glUseProgram 0", Bind(assets.mTunnelTexture),
                         Bind(assets.mPhotos[1]), Bind(assets.mPhotos[2]), Bind(assets.mPhotos[3]),
                         Bind(assets.mLyrics[4]), object, noise, "glUseProgram 0",
                         Bind(assets.mLogo), white, Bind(assets.mVignette), darkness}));
}

// All layers at once, each over the whole screen and in a colour of its own. The uppermost is seen;
// taken away, it shows the next one.
class Stack : public Frame
{
protected:
    Stack()
    {
        const cAssets &assets = mShow.mAssets;
        for (int texture : {assets.mPhotos[1], assets.mPhotos[2], assets.mPhotos[3],
                            assets.mLyrics[4], assets.mLogo, assets.mVignette})
            Stretch(texture);
        for (int i = 0; i < TRACK_COUNT; i++)
            Set(eTrack(i), 1.0f);
        Set(IMAGE_RIGHT, 2);
        Set(IMAGE_CENTER, 3);
        Set(LYRICS_NUM, 4);
        for (eTrack place : {LYRICS_X, LYRICS_Y, OBJECT_X, OBJECT_Y, FLARE_X, FLARE_Y, FLARE_SIZE})
            Set(place, 0);
        Set(OBJECT_Z, -4);
        glScissor(632, 312, 16, 16); // only what is looked at
        glEnable(GL_SCISSOR_TEST);
        DrawFrame(mShow, 5.0, 0.0); // the first frame of a run still has depth testing on
    }

    void Stretch(int texture)
    {
        mTextures.GetTexture(texture).mSize = {kDesignWidth, kDesignHeight};
    }

    tPixel Seen()
    {
        DrawFrame(mShow, 5.0, 0.0);
        return ReadPixel(640, 400);
    }
};

TEST_F(Stack, EachLayerCoversThoseThatComeBeforeIt)
{
    const auto off = [this](eTrack track) { Set(track, Rest(track)); };
    EXPECT_EQ(Seen(), black);
    off(FADE_FG_BLACK);
    EXPECT_EQ(Seen(), (tPixel{9, 9, 9, 255})) << "the vignette";
    mShow.mAssets.mVignette = MakeTexture(1, 1, tPixel{0, 0, 0, 0});
    EXPECT_EQ(Seen(), (tPixel{255, 255, 255, 255})) << "the white fade";
    off(FADE_BG_WHITE);
    EXPECT_EQ(Seen(), (tPixel{0, 0, 255, 255})) << "the logo";
    off(IMAGE_ZEMLOGO);
    EXPECT_EQ(Seen(), (tPixel{0, 255, 0, 255})) << "the noise";
    off(FADE_FG_NOISE);
    EXPECT_EQ(Seen(), (tPixel{0, 255, 255, 255})) << "the object";
    off(OBJECT_NUM);
    EXPECT_EQ(Seen(), (tPixel{0, 104, 0, 255})) << "the words";
    off(LYRICS_NUM);
    EXPECT_EQ(Seen(), (tPixel{103, 0, 0, 255})) << "the centre photo";
    off(IMAGE_CENTER);
    EXPECT_EQ(Seen(), (tPixel{102, 0, 0, 255})) << "the right photo";
    off(IMAGE_RIGHT);
    EXPECT_EQ(Seen(), (tPixel{101, 0, 0, 255})) << "the left photo";
    off(IMAGE_LEFT);
    const tPixel tunnel = Seen();
    EXPECT_GT(tunnel[0], 0) << "the tunnel's magenta, over a plasma that has no red";
    off(TUNNEL_TEXTURE);
    EXPECT_EQ(Seen(), (tPixel{0, 128, 0, 255})) << "the plasma";
    off(FADE_PLASMA);
    EXPECT_EQ(Seen(), black);
}

TEST_F(Frame, PictureTracksAreTruncatedTowardZero)
{
    for (const auto &[value, photo] : {std::pair(3.9f, 3), std::pair(-0.4f, 0)}) {
        Set(IMAGE_LEFT, value);
        EXPECT_EQ(Draw().At(250, 150), (tPixel{100 + photo, 0, 0, 255})) << value;
    }
    for (float value : {-1.0f, std::nanf(""), -1e30f, 1e30f}) {
        Set(IMAGE_LEFT, value);
        EXPECT_EQ(Draw().At(250, 150), black) << value;
    }
}

TEST_F(Frame, PlasmaGetsItsUniforms)
{
    Set(FADE_PLASMA, 1.0f);
    Set(FLARE_X, 0.2f);
    Set(FLARE_Y, 0.5f);
    Set(FLARE_SIZE, 3.0f);
    const tPixel pixel = Draw(5.0).At(640, 360);
    EXPECT_NEAR(pixel[0], 128, 1);                 // 5 seconds
    EXPECT_NEAR(pixel[1], 128, 1);                 // the window's 1280 pixels
    EXPECT_NEAR(pixel[2], 255 * (0.25 + 0.03), 1); // 0.2 + 0.05 + 0.03
}

TEST_F(Frame, PlasmaFades)
{
    Set(FADE_PLASMA, 0.5f);
    EXPECT_NEAR(Draw(5.0).At(640, 360)[1], 64, 1);
}

// Off, and its program not even touched, at exactly 0 and at what is no number.
TEST_F(Frame, FadesAreOffUnlessAboveZero)
{
    for (float value : {0.0f, -1.0f, std::nanf("")}) {
        for (eTrack track : {FADE_PLASMA, FADE_FG_NOISE, IMAGE_ZEMLOGO})
            Set(track, value);
        const test::cOpenGLLog log;
        DrawFrame(mShow, 5.0, 0.0);
        EXPECT_TRUE(log.LinesOf("glUseProgram").empty()) << value;
        EXPECT_TRUE(log.LinesOf("glUniform1f").empty()) << value;
    }
}

TEST_F(Frame, NoiseCoversEverythingBelowIt)
{
    Set(IMAGE_LEFT, 0);
    Set(FADE_FG_NOISE, 0.5f);
    const tPixel pixel = Draw().At(250, 150);
    EXPECT_NEAR(pixel[0], 50, 1);
    EXPECT_NEAR(pixel[1], 128, 1);
}

// The wobbles of the photos, as the angle, place and zoom of their sprites.
class Wobble : public Frame
{
protected:
    // The arguments of `call` in the drawing of the one photo that is on.
    std::string Drawn(const char *call, double seconds)
    {
        const test::cOpenGLLog log;
        DrawFrame(mShow, 5.0, seconds);
        return log.LinesOf(call)[0].substr(std::string(call).size() + 1);
    }
    static std::string Text(float number)
    {
        std::ostringstream text;
        text << std::setprecision(9) << number;
        return text.str();
    }
};

TEST_F(Wobble, LeftPhotoSwingsAboutFiveDegrees)
{
    Set(IMAGE_LEFT, 0);
    EXPECT_EQ(Drawn("glTranslatef", 2.0), "250 150 0"); // 150 + 100, 100 + 50
    const float angle = float(std::sin(double(0.7f) * 2.0) * 7.0 + 5.0);
    EXPECT_EQ(Drawn("glRotatef", 2.0), Text(angle) + " 0 0 1");
    EXPECT_EQ(Drawn("glScalef", 2.0), "1 1 1");
    EXPECT_EQ(Drawn("glColor4f", 2.0), "1 1 1 1");
    // By now a factor of 0.7 in double precision would have moved it.
    const float late = float(std::sin(double(0.7f) * 202.0) * 7.0 + 5.0);
    EXPECT_EQ(Drawn("glRotatef", 202.0), Text(late) + " 0 0 1");
}

TEST_F(Wobble, RightPhotoStandsByItsOwnWidth)
{
    Set(IMAGE_RIGHT, 0);
    EXPECT_EQ(Drawn("glTranslatef", 2.0), "1080 160 0"); // 1280 - 200 - 100 + 100
    const float angle = float(std::cos(2.0) * -7.0 + 5.0);
    EXPECT_EQ(Drawn("glRotatef", 2.0), Text(angle) + " 0 0 1");
}

TEST_F(Wobble, CentrePhotoSwingsAndZooms)
{
    Set(IMAGE_CENTER, 0);
    Set(IMAGE_CENTER_ALPHA, 0.25f);
    EXPECT_EQ(Drawn("glTranslatef", 2.0), "640 360 0");
    const double swing = std::sin(-4.0) + (std::sin(0.5) + std::cos(2.0));
    EXPECT_EQ(Drawn("glRotatef", 2.0), Text(float(swing * 25.0)) + " 0 0 1");
    const std::string zoom = Text(float(std::cos(2.0) * 0.5 + 1.0));
    EXPECT_EQ(Drawn("glScalef", 2.0), zoom + " " + zoom + " 1");
    EXPECT_EQ(Drawn("glColor4f", 2.0), "1 1 1 0.25");
}

TEST_F(Frame, LyricLiesWhereItsTracksSay)
{
    Set(LYRICS_NUM, 33);
    Set(LYRICS_FADE, 1);
    Set(LYRICS_X, 300);
    Set(LYRICS_Y, 400);
    const test::cPicture picture = Draw(3.0);
    EXPECT_EQ(picture.At(300, 400), (tPixel{0, 133, 0, 255}));
    EXPECT_EQ(picture.At(349, 419), (tPixel{0, 133, 0, 255}));
    EXPECT_EQ(picture.At(350, 419), black);
}

TEST_F(Frame, ObjectIsChosenAndPlacedByItsTracks)
{
    Set(OBJECT_Z, -6);
    Set(OBJECT_NUM, 0);
    EXPECT_EQ(Draw().At(640, 360), (tPixel{255, 255, 0, 255}));
    Set(OBJECT_NUM, 1);
    EXPECT_EQ(Draw().At(640, 360), (tPixel{0, 255, 255, 255}));
    Set(OBJECT_X, 100);
    EXPECT_EQ(Draw().At(640, 360), black);
}

// Nothing is drawn from memory behind a table.
TEST_F(Frame, IndexPastItsTableStopsTheShow)
{
    for (const auto &[track, end] :
         {std::pair(IMAGE_LEFT, kPhotoCount), std::pair(IMAGE_RIGHT, kPhotoCount),
          std::pair(IMAGE_CENTER, kPhotoCount), std::pair(LYRICS_NUM, kLyricCount)}) {
        Set(track, float(end));
        EXPECT_DEATH(Draw(), "ID is out of range: ") << TrackName(track);
        Set(track, -1);
    }
    Set(OBJECT_NUM, 2);
    EXPECT_DEATH(Draw(), "\\(object\\), function RenderObject");
}

TEST_F(Frame, LogoIsCentredAndFadesByItsTrack)
{
    Set(IMAGE_ZEMLOGO, 0.5f);
    const test::cPicture picture = Draw();
    EXPECT_NEAR(picture.At(590, 335)[2], 128, 1);
    EXPECT_NEAR(picture.At(689, 384)[2], 128, 1);
    EXPECT_EQ(picture.At(589, 335), black);
}

// White lies over the pictures but under the vignette; black over all.
TEST_F(Frame, FadesLieInTheirPlaces)
{
    Set(FADE_BG_WHITE, 1.0f);
    EXPECT_EQ(Draw().At(640, 360), (tPixel{255, 255, 255, 255}));
    EXPECT_EQ(Draw().At(640, 10), (tPixel{9, 9, 9, 255}));
    Set(FADE_FG_BLACK, 1.0f);
    EXPECT_EQ(Draw().At(640, 10), black);
    Set(FADE_FG_BLACK, 0.5f);
    EXPECT_NEAR(Draw().At(640, 360)[0], 128, 1);
}

TEST_F(Frame, TunnelIsDrawnForAnyIndex)
{
    for (float index : {0.0f, 7.0f, 1000.0f, -0.5f}) {
        Set(TUNNEL_TEXTURE, index);
        EXPECT_EQ(DrawnTextures()[0], Bind(mShow.mAssets.mTunnelTexture)) << index;
    }
}

// The last layer leaves texturing off, and depth testing stays off for the next frame.
TEST_F(Frame, LeavesItsStateToTheNextFrame)
{
    Draw();
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
}

TEST_F(Frame, IsTheSameEachTimeItIsDrawn)
{
    for (int i = 0; i < TRACK_COUNT; i++)
        Set(eTrack(i), 0.75f);
    Set(TUNNEL_POS, 3);
    EXPECT_EQ(Draw(7.5), Draw(7.5));
}
} // namespace
