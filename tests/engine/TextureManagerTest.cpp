#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include "engine/Singleton.h"

#include <epoxy/gl.h>

namespace
{
using test::tPixel;
using test::WritePng;
using vyr::cTextureManager;

using tBytes = std::vector<uint8_t>;

class Textures : public test::cOffscreenTest
{
protected:
    Textures() : cOffscreenTest(64, 36)
    {
        WritePng("a.png", 2, 1, 4, {255, 0, 0, 255, 0, 0, 255, 128});
        WritePng("b.png", 1, 1, 4, {1, 2, 3, 4});
    }

    int LevelParameter(int id, GLenum name)
    {
        GLint value = 0;
        glBindTexture(GL_TEXTURE_2D, mTextures.GetTexture(id).mHandle);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, name, &value);
        return value;
    }

    int Parameter(int id, GLenum name)
    {
        GLint value = 0;
        glBindTexture(GL_TEXTURE_2D, mTextures.GetTexture(id).mHandle);
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
        return value;
    }

    // The texture's pixels as OpenGL holds them, RGBA.
    tBytes Pixels(int id)
    {
        const int width = LevelParameter(id, GL_TEXTURE_WIDTH);
        const int height = LevelParameter(id, GL_TEXTURE_HEIGHT);
        tBytes pixels(size_t(4 * width * height));
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }

    test::cTemporaryFolder mFolder;
};

TEST_F(Textures, LoadsAnImageFile)
{
    const int id = mTextures.LoadTexture("a.png", false);
    ASSERT_EQ(id, 0);
    const cTextureManager::cTexture &texture = mTextures.GetTexture(id);
    EXPECT_TRUE(texture.mFromFile);
    EXPECT_EQ(texture.mName, "a.png");
    EXPECT_EQ(texture.mSize.x, 2.0f);
    EXPECT_EQ(texture.mSize.y, 1.0f);
    EXPECT_EQ(texture.mPixels, nullptr);
    EXPECT_EQ(texture.mComponents, 0);
    EXPECT_EQ(Pixels(id), (tBytes{255, 0, 0, 255, 0, 0, 255, 128}));
    EXPECT_EQ(Parameter(id, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    EXPECT_EQ(Parameter(id, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(Parameter(id, GL_TEXTURE_WRAP_S), GL_REPEAT);
    EXPECT_EQ(Parameter(id, GL_TEXTURE_WRAP_T), GL_REPEAT);
}

TEST_F(Textures, KeepsPixelsOnlyWhenAskedTheFirstTime)
{
    const int a = mTextures.LoadTexture("a.png", true);
    EXPECT_EQ(mTextures.GetTexture(a).mComponents, 4);
    EXPECT_EQ(mTextures.GetTexture(a).mPixels[4 + 3], 128);
    const int b = mTextures.LoadTexture("b.png", false);
    EXPECT_EQ(mTextures.LoadTexture("b.png", true), b);
    EXPECT_EQ(mTextures.GetTexture(b).mPixels, nullptr);
    mTextures.DestroyTexture(unsigned(a));
}

TEST_F(Textures, SamePathIsTheSameTexture)
{
    const int id = mTextures.LoadTexture("a.png", false);
    const unsigned int handle = mTextures.GetTexture(id).mHandle;
    EXPECT_EQ(mTextures.LoadTexture("a.png", false), id);
    EXPECT_EQ(mTextures.GetTexture(id).mHandle, handle);
    EXPECT_EQ(mTextures.LoadTexture("./a.png", false), 1);
    WritePng("A.png", 1, 1, 4, {1, 2, 3, 4});
    EXPECT_EQ(mTextures.LoadTexture("A.png", false), 2);
}

TEST_F(Textures, UnreadableFileTakesNoId)
{
    test::WriteFile("text.png", "no image");
    testing::internal::CaptureStdout();
    EXPECT_EQ(mTextures.LoadTexture("nowhere.png", false), -1);
    EXPECT_EQ(mTextures.LoadTexture("text.png", false), -1);
    EXPECT_EQ(mTextures.LoadTexture(".", false), -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(mTextures.LoadTexture("a.png", false), 0);
}

TEST_F(Textures, KeepTheirComponentCount)
{
    WritePng("rgb.png", 4, 1, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    const int id = mTextures.LoadTexture("rgb.png", true);
    EXPECT_EQ(mTextures.GetTexture(id).mComponents, 3);
    EXPECT_EQ(LevelParameter(id, GL_TEXTURE_ALPHA_SIZE), 0);
    EXPECT_EQ(Pixels(id), (tBytes{1, 2, 3, 255, 4, 5, 6, 255, 7, 8, 9, 255, 10, 11, 12, 255}));
    mTextures.DestroyTexture(unsigned(id));
}

// Rows of 3 bytes are read 4 apart: the second row begins one byte late, and nothing past the
// image's end is read (the sanitizers watch).
TEST_F(Textures, RowsOfOddLengthAreReadAtTheAlignmentOfOpenGL)
{
    WritePng("odd.png", 1, 2, 3, {10, 20, 30, 40, 50, 60});
    const int id = mTextures.LoadTexture("odd.png", false);
    EXPECT_EQ(Pixels(id), (tBytes{10, 20, 30, 255, 50, 60, 0, 255}));
}

// A grey image goes to OpenGL as three bytes a pixel, of which its luminance keeps the first.
TEST_F(Textures, GreyImagesAreReadAsRgb)
{
    WritePng("grey.png", 4, 1, 1, {10, 20, 30, 40});
    const int id = mTextures.LoadTexture("grey.png", false);
    EXPECT_EQ(LevelParameter(id, GL_TEXTURE_LUMINANCE_SIZE), 8);
    const tBytes pixels = Pixels(id);
    EXPECT_EQ(pixels[0], 10);
    EXPECT_EQ(pixels[4], 40); // the fourth byte, not the second
    WritePng("greyalpha.png", 2, 2, 2, {1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(mTextures.LoadTexture("greyalpha.png", false), 1);
}

// Some formats hold pictures of no rows: a texture of no size, and nothing is read.
TEST_F(Textures, PictureOfNoRowsIsATextureOfNoSize)
{
    test::WriteFile("flat.ppm", "P6\n5 0\n255\n");
    const int id = mTextures.LoadTexture("flat.ppm", true);
    ASSERT_GE(id, 0) << "the decoder refuses what it took once: is there another such picture?";
    EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 5.0f);
    EXPECT_EQ(mTextures.GetTexture(id).mSize.y, 0.0f);
    mTextures.DestroyTexture(unsigned(id));
}

TEST_F(Textures, RenderTargetsAreEmptyColourOrDepth)
{
    const int color = mTextures.CreateTexture("t", 8, 4, true, false);
    const int depth = mTextures.CreateTexture("t", 8, 4, true, true); // names may repeat
    ASSERT_EQ(depth, 1);
    EXPECT_EQ(LevelParameter(color, GL_TEXTURE_INTERNAL_FORMAT), GL_RGBA8);
    EXPECT_EQ(LevelParameter(depth, GL_TEXTURE_INTERNAL_FORMAT), GL_DEPTH_COMPONENT24);
    EXPECT_EQ(Parameter(color, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(Parameter(color, GL_TEXTURE_WRAP_S), GL_REPEAT); // OpenGL's default
    EXPECT_EQ(Parameter(depth, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
    EXPECT_EQ(Parameter(depth, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(Parameter(depth, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(mTextures.GetTexture(color).mSize.x, 8.0f);
    EXPECT_FALSE(mTextures.GetTexture(color).mFromFile);
    EXPECT_EQ(mTextures.LoadTexture("t", false), color);
}

TEST_F(Textures, UnallocatedTargetHasNoSize)
{
    const int id = mTextures.CreateTexture("t", 8, 4, false, false);
    EXPECT_EQ(mTextures.GetTexture(id).mSize.x, 0.0f);
    EXPECT_EQ(LevelParameter(id, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Textures, PixelsFromMemoryAreBlueGreenRedAlpha)
{
    unsigned char pixels[4] = {1, 2, 3, 4};
    const int id = mTextures.CreateTexture(pixels, 1, 1, 4);
    EXPECT_EQ(Pixels(id), (tBytes{3, 2, 1, 4}));
    EXPECT_EQ(mTextures.GetTexture(id).mName, "");
    EXPECT_EQ(mTextures.GetTexture(id).mSize.y, 1.0f);
    const int three = mTextures.CreateTexture(pixels, 1, 1, 3); // still four bytes of source
    EXPECT_EQ(Pixels(three), (tBytes{3, 2, 1, 255}));
}

// Deletes the OpenGL texture whose name is the id: here texture 1's own is the name 2.
TEST_F(Textures, DestroyingTakesTheIdForOpenGLsName)
{
    const int first = mTextures.LoadTexture("a.png", false);
    const int second = mTextures.LoadTexture("b.png", true);
    const unsigned int firstHandle = mTextures.GetTexture(first).mHandle;
    const unsigned int secondHandle = mTextures.GetTexture(second).mHandle;
    ASSERT_EQ(firstHandle, unsigned(second));
    mTextures.DestroyTexture(unsigned(second));
    EXPECT_FALSE(glIsTexture(firstHandle));
    EXPECT_TRUE(glIsTexture(secondHandle));
    EXPECT_EQ(mTextures.GetTexture(second).mPixels, nullptr);
    EXPECT_EQ(mTextures.GetTexture(second).mComponents, 0);
    EXPECT_EQ(mTextures.LoadTexture("b.png", true), second); // still known, still without pixels
    EXPECT_EQ(mTextures.GetTexture(second).mHandle, secondHandle);
    mTextures.DestroyTexture(4000); // no such record: nothing to free
}

TEST_F(Textures, ReloadingRenumbersFilesAndForgetsTheRest)
{
    mTextures.CreateTexture("target", 4, 4, true, false);
    mTextures.LoadTexture("a.png", false);
    mTextures.LoadTexture("b.png", false);
    mTextures.ReloadTextures();
    EXPECT_EQ(mTextures.GetTexture(0).mName, "a.png");
    EXPECT_EQ(mTextures.GetTexture(1).mName, "b.png");
    EXPECT_EQ(mTextures.LoadTexture("target", false), -1);
}

// Not even of a file whose pixels were kept before.
TEST_F(Textures, ReloadingKeepsNoPixels)
{
    const int id = mTextures.LoadTexture("a.png", true);
    unsigned char *kept = mTextures.GetTexture(id).mPixels;
    ASSERT_NE(kept, nullptr);
    mTextures.ReloadTextures();
    EXPECT_EQ(mTextures.GetTexture(0).mName, "a.png");
    EXPECT_EQ(mTextures.GetTexture(0).mPixels, nullptr);
    EXPECT_EQ(mTextures.GetTexture(0).mComponents, 0);
    std::free(kept); // forgotten, not freed
}

// The name of a render target is no path, even where a file is called the same.
TEST_F(Textures, ReloadingForgetsATargetThatIsNamedLikeAFile)
{
    mTextures.CreateTexture("a.png", 4, 4, true, false);
    mTextures.LoadTexture("b.png", false);
    mTextures.ReloadTextures();
    EXPECT_EQ(mTextures.GetTexture(0).mName, "b.png");
}

TEST_F(Textures, ReloadingAFileThatIsGoneMovesTheRestDown)
{
    mTextures.LoadTexture("a.png", false);
    mTextures.LoadTexture("b.png", false);
    std::filesystem::remove("a.png");
    mTextures.ReloadTextures();
    EXPECT_EQ(mTextures.GetTexture(0).mName, "b.png");
}

TEST_F(Textures, BindingModulatesAndDoesNotEnableTexturing)
{
    const int id = mTextures.LoadTexture("a.png", false);
    glDisable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glBindTexture(GL_TEXTURE_2D, 0);
    mTextures.BindTexture(id);
    GLint bound = 0, mode = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    EXPECT_EQ(unsigned(bound), mTextures.GetTexture(id).mHandle);
    EXPECT_EQ(mode, GL_MODULATE);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

// Nearest when magnified, linear when not: the two differ on purpose.
TEST_F(Textures, SurfaceAccessSetsItsFiltersAndNothingElse)
{
    const int id = mTextures.LoadTexture("a.png", false);
    cTextureManager::cTexture &texture = mTextures.GetTexture(id);
    texture.LockSurface();
    EXPECT_EQ(Parameter(id, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    texture.SetPixel(0, 0, 0xFFFFFFFF);
    EXPECT_EQ(texture.GetPixel(0, 0), 0u);
    texture.UnlockSurface();
    EXPECT_EQ(Parameter(id, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(Parameter(id, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(Pixels(id)[0], 255);
}

using TexturesDeath = Textures;

TEST_F(TexturesDeath, IdsOutOfRangeStopTheProgram)
{
    mTextures.LoadTexture("a.png", false);
    const std::string condition = "id >= 0 && id < int\\(mTextures.size\\(\\)\\) && ";
    for (int id : {-1, 1, 1000}) {
        EXPECT_DEATH(mTextures.BindTexture(id),
                     condition + "\"cTextureManager::BindTexture\\(\\): ID is out of range: \"\\), "
                                 "function BindTexture, file TextureManager, line 175");
        EXPECT_DEATH(mTextures.GetTexture(id),
                     condition + "\"cTextureManager::GetTexture\\(\\): ID is out of range: \"\\), "
                                 "function GetTexture, file TextureManager, line 183");
    }
}

// Without any context: making and destroying the manager, and loads that fail.
TEST(TexturesWithoutContext, MissingFileNeedsNoOpenGL)
{
    using Holder = vyr::tSingleton<cTextureManager>;
    Holder::CreateSingleton();
    EXPECT_EQ(Holder::GetSingleton().LoadTexture("nowhere.png", true), -1);
    Holder::DestroySingleton();
}
} // namespace
