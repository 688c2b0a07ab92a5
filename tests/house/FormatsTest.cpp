#include "engine/3DObject.h"
#include "engine/BitmapFont.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"
#include "sync/data.h"
#include "tests/house/Markdown.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{
const char *const page = VYR_SOURCE_DIR "/docs/formats.md";

std::string Example(const std::string &language, size_t number)
{
    for (const house::cBlock &block : house::CodeBlocks(page))
        if (block.mLanguage == language && number-- == 0)
            return block.mText;
    ADD_FAILURE() << "docs/formats.md has no such example: " << language;
    return "";
}

// Two digits a byte; what is no pair of digits begins the line's remark.
std::string Bytes(const std::string &dump)
{
    std::string bytes;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        for (std::string word; words >> word && word.size() == 2 &&
                               word.find_first_not_of("0123456789ABCDEF") == std::string::npos;)
            bytes.push_back(char(std::stoi(word, nullptr, 16)));
    }
    return bytes;
}

TEST(FormatsPage, TrackExampleIsWhatItSays)
{
    const test::cTemporaryFolder folder;
    test::WriteFile("sync_tunnel:pos.track", Bytes(Example("hex", 0)));
    sync_device *device = sync_create_device("sync");
    const sync_track *track = sync_get_track(device, "tunnel:pos");
    EXPECT_EQ(track->num_keys, 2);
    EXPECT_EQ(sync_get_val(track, 16.0), 0.75f);
    EXPECT_EQ(sync_get_val(track, 32.0), 1.5f);
    sync_destroy_device(device);
}

class FormatsPageWithTextures : public testing::Test
{
protected:
    using Holder = vyr::tSingleton<vyr::cTextureManager>;

    FormatsPageWithTextures() { Holder::CreateSingleton(); }
    ~FormatsPageWithTextures() override { Holder::DestroySingleton(); }

    test::cTemporaryFolder mFolder;
};

// The image does not exist here, so that no OpenGL is needed: the surface stays without texture.
TEST_F(FormatsPageWithTextures, ObjectExampleIsWhatItSays)
{
    test::WriteFile("triangle.lwo", Bytes(Example("hex", 1)));
    const std::unique_ptr<vyr::c3DObject> object(vyr::c3DObject::CreateFromLWO2("triangle.lwo"));
    ASSERT_NE(object, nullptr);
    ASSERT_EQ(object->mVertices.size(), 3u);
    EXPECT_EQ(object->mVertices[1].mPosition.x, 2.0f);
    EXPECT_EQ(object->mVertices[2].mPosition.y, 2.0f);
    EXPECT_EQ(object->mVertices[1].mTexCoord[0], 1.0f);
    EXPECT_EQ(object->mVertices[2].mTexCoord[1], 1.0f);
    ASSERT_EQ(object->mPolygons.size(), 1u);
    EXPECT_EQ(object->mPolygons[0].mIndices, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(object->mPolygons[0].mNormal.z, 1.0f); // it faces the viewer
    ASSERT_EQ(object->mSurfaces.size(), 1u);
    EXPECT_EQ(object->mSurfaces[0].mName, "Lamp");
    EXPECT_EQ(object->mSurfaces[0].mColor.g, 0.5f);
    EXPECT_EQ(object->mPolygons[0].mSurface, &object->mSurfaces[0]);
    ASSERT_EQ(object->mClips.size(), 1u);
    EXPECT_EQ(object->mClips[0].mClipIndex, 1);
}

TEST_F(FormatsPageWithTextures, FontExampleIsWhatItSays)
{
    test::WriteFile("letters.fnt", Example("xml", 0));
    vyr::cBitmapFont font("letters.fnt");
    EXPECT_EQ(font.GetPixelSize(), 20);
    EXPECT_EQ(font.GetStringWidth("VA"), 18);
    EXPECT_EQ(font.GetStringWidth("AV"), 20);
}
} // namespace
