#include "tests/support/LWO2Builder.h"

#include "engine/3DObject.h"
#include "tests/support/OffscreenTest.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
using vyr::c3DObject;
using namespace lwo2;

// Objects read from bytes; clips are looked up through the real texture manager.
class LWO2 : public test::cOffscreenTest
{
protected:
    LWO2() : cOffscreenTest(64, 36) {}

    std::unique_ptr<c3DObject> Read(const std::string &bytes)
    {
        test::WriteFile("object.lwo", bytes);
        return std::unique_ptr<c3DObject>(c3DObject::CreateFromLWO2("object.lwo"));
    }
    std::unique_ptr<c3DObject> ReadChunks(const std::string &chunks) { return Read(Form(chunks)); }

    // Null, with nothing left open.
    void ExpectRefused(const std::string &bytes, const char *why)
    {
        const int before = test::CountOpenFiles();
        EXPECT_EQ(Read(bytes), nullptr) << why;
        EXPECT_EQ(test::CountOpenFiles(), before) << why;
    }

    test::cTemporaryFolder mFolder;
};

// A chunk that can be told apart when it is read after another one: one more surface.
const std::string marker = Tags({"marker"});

TEST_F(LWO2, ReadsATriangle)
{
    const auto object = ReadChunks(TriangleChunks());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mVertices.size(), 3u);
    EXPECT_EQ(object->mVertices[1].mPosition.x, 1.0f);
    EXPECT_EQ(object->mVertices[1].mNormal.z, 1.0f); // normals are there after reading
    ASSERT_EQ(object->mPolygons.size(), 1u);
    EXPECT_EQ(object->mPolygons[0].mIndices, (std::vector<int>{0, 1, 2}));
    ASSERT_EQ(object->mSurfaces.size(), 1u);
    EXPECT_EQ(object->mSurfaces[0].mName, "skin");
    EXPECT_EQ(object->mPolygons[0].mSurface, &object->mSurfaces[0]);
    EXPECT_EQ(object->mSurfaces[0].mColor.r, 1.0f);
    EXPECT_EQ(object->mSurfaces[0].mColor.a, 1.0f);
    EXPECT_TRUE(object->mBackupVertices.empty());
}

TEST_F(LWO2, LeavesAReadFileOpen)
{
    const int before = test::CountOpenFiles();
    const auto object = ReadChunks(TriangleChunks());
    EXPECT_EQ(test::CountOpenFiles(), before + 1);
}

TEST_F(LWO2, RefusesWhatIsNoObject)
{
    ExpectRefused("", "empty");
    ExpectRefused("FOR", "short");
    ExpectRefused("RIFF" + U4(4) + "LWO2", "another container");
    ExpectRefused("FORM" + U4(4) + "LWOB", "another form");
    ExpectRefused("FORM" + U4(4), "no type");
    EXPECT_EQ(c3DObject::CreateFromLWO2("nowhere.lwo"), nullptr);
    EXPECT_EQ(c3DObject::CreateFromLWO2("."), nullptr);
    EXPECT_EQ(c3DObject::CreateFromLWO2(std::string(300, 'x')), nullptr);
}

TEST_F(LWO2, FormWithoutChunksIsAnEmptyObject)
{
    const auto object = ReadChunks("");
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->mVertices.empty());
}

TEST_F(LWO2, PointsOf36BytesAreThree)
{
    const auto object = ReadChunks(Points({{1, 2}, {3, 4}, {5, 6}}));
    ASSERT_EQ(object->mVertices.size(), 3u);
    EXPECT_EQ(object->mVertices[2].mPosition.y, 6.0f);
    EXPECT_EQ(object->mVertices[2].mNormal.z, 0.0f);
    EXPECT_EQ(object->mVertices[2].mTexCoord[0], 0.0f);
}

// 13 bytes: one point and the thirteenth byte, which is taken for the padding.
TEST_F(LWO2, PointsOfAnOddSizeSkipOneByte)
{
    const std::string points = "PNTS" + U4(13) + F4(1) + F4(2) + F4(3) + "x";
    const auto object = ReadChunks(points + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mVertices.size(), 1u);
    EXPECT_EQ(object->mSurfaces.size(), 1u);
}

TEST_F(LWO2, PolygonFlagsAreDropped)
{
    const std::string polygons = Chunk("POLS", "FACE" + U2(0xFC03) + U2(0) + U2(1) + U2(2));
    const auto object = ReadChunks(Points({{0, 0}, {1, 0}, {0, 1}}) + polygons);
    ASSERT_EQ(object->mPolygons.size(), 1u);
    EXPECT_EQ(object->mPolygons[0].mIndices.size(), 3u);
}

// Two bytes each, always: 0xFF00 0x0001 is the vertices 65280 and 1, not vertex 1 in its long form.
TEST_F(LWO2, PolygonIndicesHaveNoLongForm)
{
    const std::string body = "FACE" + U2(2) + U2(0xFF00) + U2(1);
    std::string points = "PNTS" + U4(65281 * 12) + std::string(65281 * 12, '\0');
    const auto object = ReadChunks(points + Chunk("POLS", body));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mPolygons[0].mIndices, (std::vector<int>{0xFF00, 1}));
}

// The caller takes "CURV" for a size and seeks past everything.
TEST_F(LWO2, PolygonsOfAnotherTypeEndTheFile)
{
    const auto object = ReadChunks(Points({{0, 0}}) + Chunk("POLS", "CURV" + U2(0)) + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mVertices.size(), 1u);
    EXPECT_TRUE(object->mPolygons.empty());
    EXPECT_TRUE(object->mSurfaces.empty());
}

TEST_F(LWO2, MapsReachTheFirstVertexAndTheFirstPolygon)
{
    const std::string mesh = Points({{0, 0}, {1, 0}, {0, 1}}) + Faces({{0, 1, 2}});
    const std::string head = "TXUV" + U2(2) + S0("uv");
    const auto mapped = ReadChunks(mesh + Chunk("VMAP", head + U2(0) + F4(0.25f) + F4(0.5f)));
    ASSERT_NE(mapped, nullptr);
    EXPECT_EQ(mapped->mVertices[0].mTexCoord[0], 0.25f);
    EXPECT_EQ(mapped->mVertices[0].mTexCoord[1], 0.5f);
    const auto split =
        ReadChunks(mesh + Chunk("VMAD", head + U2(0) + U2(0) + F4(0.25f) + F4(0.5f)));
    ASSERT_NE(split, nullptr);
    EXPECT_EQ(split->mPolygons[0].mIndices, (std::vector<int>{3, 1, 2}));
    EXPECT_EQ(split->mVertices[3].mTexCoord[1], 0.5f);
}

TEST_F(LWO2, VertexMapSetsTextureCoordinates)
{
    const std::string map = "TXUV" + U2(2) + S0("uv") + U2(1) + F4(0.25f) + F4(0.5f) + "\xFF" +
                            std::string("\0\0\2", 3) + F4(0.75f) + F4(1.0f);
    const auto object = ReadChunks(Points({{0, 0}, {1, 0}, {0, 1}}) + Chunk("VMAP", map));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mVertices[0].mTexCoord[0], 0.0f);
    EXPECT_EQ(object->mVertices[1].mTexCoord[1], 0.5f);
    EXPECT_EQ(object->mVertices[2].mTexCoord[0], 0.75f); // by an index in its long form
}

TEST_F(LWO2, OtherVertexMapsAreSkippedWhole)
{
    const std::string odd = "abcde";
    for (const char *tag : {"VMAP", "VMAD"}) {
        const std::string weights = Chunk(tag, "WGHT" + U2(1) + S0("w") + odd);
        const std::string deep = Chunk(tag, "TXUV" + U2(3) + S0("uvw") + odd);
        const auto object = ReadChunks(weights + deep + marker);
        ASSERT_NE(object, nullptr) << tag;
        EXPECT_EQ(object->mSurfaces.size(), 1u) << tag;
    }
}

TEST_F(LWO2, DiscontinuousMapSplitsTheVertexForItsPolygon)
{
    const std::string map = "TXUV" + U2(2) + S0("uv") + U2(1) + U2(2) + F4(0.25f) + F4(0.5f);
    const std::string faces = Faces({{0, 1, 2}, {1, 2, 0}, {2, 1, 1}});
    const auto object = ReadChunks(Points({{0, 0}, {1, 0}, {0, 1}}) + faces + Chunk("VMAD", map));
    ASSERT_NE(object, nullptr);
    ASSERT_EQ(object->mVertices.size(), 4u);
    EXPECT_EQ(object->mVertices[3].mPosition.x, 1.0f);
    EXPECT_EQ(object->mVertices[3].mTexCoord[1], 0.5f);
    EXPECT_EQ(object->mVertices[1].mTexCoord[1], 0.0f);
    EXPECT_EQ(object->mPolygons[0].mIndices, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(object->mPolygons[1].mIndices, (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(object->mPolygons[2].mIndices, (std::vector<int>{2, 3, 3}));
}

TEST_F(LWO2, OtherPolygonTagsAreSkippedWhole)
{
    const auto object = ReadChunks(Chunk("PTAG", "PART" + std::string("xyz")) + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces.size(), 1u);
}

TEST_F(LWO2, SurfaceWithoutColourIsOpaqueWhite)
{
    const auto object = ReadChunks(Tags({"a", "bb"}) + Chunk("TAGS", ""));
    ASSERT_EQ(object->mSurfaces.size(), 2u);
    EXPECT_EQ(object->mSurfaces[1].mName, "bb");
    EXPECT_EQ(object->mSurfaces[0].mColor.g, 1.0f);
    EXPECT_EQ(object->mSurfaces[0].mColor.a, 1.0f);
    EXPECT_EQ(object->mSurfaces[0].mTexture, -1);
}

TEST_F(LWO2, UnknownSurfaceChangesTheLastOne)
{
    const auto object =
        ReadChunks(Tags({"first", "last"}) + Surface("nobody", ColorPart(0.1f, 0.2f, 0.3f)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mColor.r, 1.0f);
    EXPECT_EQ(object->mSurfaces[1].mColor.r, 0.1f);
}

TEST_F(LWO2, OfSurfacesOfOneNameTheFirstIsMeant)
{
    const auto object = ReadChunks(Tags({"a", "b", "a"}) + Surface("a", ColorPart(0.5f, 0, 0)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mColor.r, 0.5f);
    EXPECT_EQ(object->mSurfaces[2].mColor.r, 1.0f);
}

TEST_F(LWO2, SurfacesNamedLaterAreFoundToo)
{
    const auto object =
        ReadChunks(Tags({"a"}) + Surface("b", ColorPart(0.1f, 0, 0)) + Tags({"b", "a"}) +
                   Surface("b", ColorPart(0.2f, 0, 0)) + Surface("c", ColorPart(0.3f, 0, 0)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mColor.r, 0.1f); // the last one, then
    EXPECT_EQ(object->mSurfaces[1].mColor.r, 0.2f);
    EXPECT_EQ(object->mSurfaces[2].mColor.r, 0.3f);
}

// Each costs no more than the first: bench-objects tells.
TEST_F(LWO2, ReadsThousandsOfChunks)
{
    std::string chunks = Points({{0, 0}, {1, 0}, {0, 1}});
    const int count = 3000;
    for (int i = 0; i < count; i++)
        chunks += Tags({"surface " + std::to_string(i)}) + Faces({{0, 1, 2}});
    for (int i = 0; i < count; i++)
        chunks += PolygonTags({{i, count - 1 - i}});
    for (int i = 0; i < count; i++)
        chunks += Surface("surface " + std::to_string(i), ColorPart(float(i), 0, 0));
    const auto object = ReadChunks(chunks);
    ASSERT_NE(object, nullptr);
    ASSERT_EQ(object->mPolygons.size(), size_t(count));
    for (int i = 0; i < count; i++)
        ASSERT_EQ(object->mPolygons[size_t(i)].mSurface->mColor.r, float(count - 1 - i));
}

TEST_F(LWO2, OtherSurfacePartsAreSkipped)
{
    const auto object = ReadChunks(
        Tags({"a"}) + Surface("a", SubChunk("DIFF", "odd") + ColorPart(0.5f, 0, 0)) + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mColor.r, 0.5f);
    EXPECT_EQ(object->mSurfaces.size(), 2u);
}

TEST_F(LWO2, ClipIsLoadedFromTheLastDataFolderInItsPath)
{
    test::WritePng("data/tex/wood.png", 2, 2, 4, std::vector<uint8_t>(16, 255));
    test::WritePng("Data/tex/wood.png", 3, 3, 4, std::vector<uint8_t>(36, 255));
    const auto object =
        ReadChunks(Clip(1, "C:/data/old/data/tex/wood.png") + Clip(2, "C:/proj/Data/tex/wood.png") +
                   Clip(3, "C:/proj/tex/wood.png") + Clip(4, "data/none.png"));
    ASSERT_EQ(object->mClips.size(), 4u);
    EXPECT_EQ(mTextures.GetTexture(object->mClips[0].mTexture).mName, "data/tex/wood.png");
    EXPECT_EQ(mTextures.GetTexture(object->mClips[1].mTexture).mName, "Data/tex/wood.png");
    EXPECT_EQ(object->mClips[1].mClipIndex, 2);
    EXPECT_EQ(object->mClips[2].mTexture, -1);
    EXPECT_EQ(object->mClips[3].mTexture, -1);
    EXPECT_EQ(mTextures.GetTexture(object->mClips[0].mTexture).mPixels, nullptr);
}

TEST_F(LWO2, SurfaceShowsTheFirstClipAndNoOther)
{
    test::WritePng("data/a.png", 1, 1, 4, {1, 2, 3, 4});
    test::WritePng("data/b.png", 1, 1, 4, {1, 2, 3, 4});
    const std::string surfaces = Surface("first", ImagePart(1)) + Surface("second", ImagePart(2));
    const auto object = ReadChunks(Tags({"first", "second"}) + Clip(1, "data/a.png") +
                                   Clip(2, "data/b.png") + surfaces);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mTexture, object->mClips[0].mTexture);
    EXPECT_NE(object->mSurfaces[0].mTexture, -1);
    EXPECT_EQ(object->mSurfaces[1].mTexture, -1); // the look-up stops at the first clip
}

TEST_F(LWO2, ImageWithoutAnyClipLeavesTheSurfaceUntextured)
{
    const auto object = ReadChunks(Tags({"a"}) + Surface("a", ImagePart(1)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mTexture, -1);
}

TEST_F(LWO2, UnknownChunkIsSkippedWithItsPadByte)
{
    const auto object = ReadChunks(Chunk("LAYR", std::string(25, 'x')) + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces.size(), 1u);
}

TEST_F(LWO2, NormalsHaveLengthOneOrNone)
{
    const auto object = ReadChunks(Points({{0, 0}, {9, 0}, {0, 7}, {5, 5}}) + Faces({{0, 1, 2}}));
    for (size_t i = 0; i < 3; i++)
        EXPECT_FLOAT_EQ(object->mVertices[i].mNormal.Magnitude(), 1.0f);
    EXPECT_EQ(object->mVertices[3].mNormal.Magnitude(), 0.0f);
}

TEST_F(LWO2, RefusesMalformedChunks)
{
    const std::string mesh = TriangleChunks();
    const std::string uv = F4(0) + F4(0);
    const std::pair<const char *, std::string> cases[] = {
        {"vertex out of range", Points({{0, 0}}) + Faces({{0, 1, 2}})},
        {"map of a missing vertex", mesh + Chunk("VMAP", "TXUV" + U2(2) + S0("") + U2(3) + uv)},
        {"map of a missing polygon",
         mesh + Chunk("VMAD", "TXUV" + U2(2) + S0("") + U2(0) + U2(1) + uv)},
        {"map that does not come out",
         mesh + Chunk("VMAP", "TXUV" + U2(2) + S0("") + U2(0) + F4(0))},
        {"map shorter than its name", mesh + Chunk("VMAP", "TXUV" + U2(2))},
        {"tag of a missing polygon", mesh + PolygonTags({{1, 0}})},
        {"tag of a missing surface", mesh + PolygonTags({{0, 1}})},
        {"tags that do not come out", mesh + Chunk("PTAG", "SURF" + U2(0) + "x")},
        {"surfaces after polygons point at them", mesh + Tags({"more"})},
        {"names that do not come out", "TAGS" + U4(3) + S0("abc")},
        {"surface of an empty list", Surface("a", ColorPart(1, 1, 1))},
        {"colour that does not come out", Tags({"a"}) + Surface("a", SubChunk("COLR", "abcd"))},
        {"image without its index", Tags({"a"}) + Surface("a", SubChunk("BLOK", "IMAG")) + marker},
        {"polygons that do not come out", Chunk("POLS", "FACE" + U2(1) + "x")},
        {"polygons of a type that leads backwards", "POLS" + U4(4) + "\xFF\xFF\xFF\xF0" + marker},
        {"negative size", "LAYR" + U4(0xFFFFFFF0) + marker},
        {"negative size of a known chunk", "TAGS" + U4(0x80000000) + marker},
    };
    for (const auto &[why, chunks] : cases)
        ExpectRefused(Form(chunks), why);
}

// Where the file ends between two chunks, those before are the object.
TEST_F(LWO2, FormThatStatesMoreThanItsFileHoldsIsReadToTheEnd)
{
    for (const uint32_t more : {1u, 7u, 8u, 1000u, 0x70000000u}) {
        const std::string chunks = TriangleChunks() + Chunk("LAYR", "four");
        const auto object = Read("FORM" + U4(uint32_t(chunks.size()) + 4 + more) + "LWO2" + chunks);
        ASSERT_NE(object, nullptr) << more;
        EXPECT_EQ(object->mVertices.size(), 3u);
        EXPECT_EQ(object->mVertices[1].mNormal.z, 1.0f);
        EXPECT_EQ(object->mSurfaces[0].mColor.g, 0.0f);
    }
}

TEST_F(LWO2, FormThatStatesMoreThanItsFileHoldsStillNeedsWholeChunks)
{
    const std::string head = "FORM" + U4(1000) + "LWO2" + TriangleChunks();
    const std::string marked = marker;
    for (size_t length = 1; length < marked.size(); length++)
        ExpectRefused(head + marked.substr(0, length), "known chunk");
    const std::string skipped = Chunk("LAYR", "four");
    for (size_t length = 1; length < skipped.size(); length++)
        ExpectRefused(head + skipped.substr(0, length), "skipped chunk");
}

TEST_F(LWO2, PartsOfAClipThatAreSkippedTakeTheirPaddingAlong)
{
    const std::string parts = SubChunk("XREF", "odd") + SubChunk("STIL", S0("a.png")) +
                              SubChunk("XREF", "") + SubChunk("XREF", "even");
    const auto object = ReadChunks(Chunk("CLIP", U4(7) + parts) + marker);
    ASSERT_NE(object, nullptr);
    ASSERT_EQ(object->mClips.size(), 1u);
    EXPECT_EQ(object->mClips[0].mClipIndex, 7);
    EXPECT_EQ(object->mSurfaces.size(), 1u);
}

// The number of the clip stands at the end of its block, in two bytes or in four.
TEST_F(LWO2, ImageAtTheEndOfItsBlockIsRead)
{
    test::WritePng("data/a.png", 1, 1, 4, {1, 2, 3, 4});
    const std::string start = Tags({"a"}) + Clip(0x10001, "data/a.png");
    const std::string number("\xFF\x01\x00\x01", 4);
    const auto object = ReadChunks(start + Surface("a", SubChunk("BLOK", "IMAG" + U2(4) + number)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces[0].mTexture, 0);
    ExpectRefused(Form(start + Surface("a", SubChunk("BLOK", "IMAG" + U2(4) + "\xFF\x01x"))),
                  "cut off");
}

TEST_F(LWO2, ChunkOfNothingIsSkipped)
{
    const auto object = ReadChunks("LAYR" + U4(0) + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces.size(), 1u);
}

TEST_F(LWO2, NoMoreNamesMayComeAfterThePolygonsHaveTheirs)
{
    const auto object = ReadChunks(TriangleChunks() + "TAGS" + U4(0) + Points({{1, 1}}));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mVertices.size(), 4u);
}

TEST_F(LWO2, PathOf199CharactersIsTheLongest)
{
    const std::string longest(199, 'n');
    test::WriteFile(longest, Form(""));
    test::WriteFile(longest + "n", Form(""));
    const std::unique_ptr<c3DObject> object(c3DObject::CreateFromLWO2(longest));
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(c3DObject::CreateFromLWO2(longest + "n"), nullptr);
}

TEST_F(LWO2, SurfaceOfNothingButItsNamesIsRead)
{
    const auto object = ReadChunks(Tags({"a"}) + Surface("a", "") + marker);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->mSurfaces.size(), 2u);
    EXPECT_EQ(object->mSurfaces[0].mTexture, -1);
}

TEST_F(LWO2, CutOffInAChunkIsRefused)
{
    const std::vector<std::string> chunks = {
        Tags({"skin"}),        Points({{0, 0}, {1, 0}, {0, 1}}),    Faces({{0, 1, 2}}),
        PolygonTags({{0, 0}}), Surface("skin", ColorPart(1, 0, 0)), Clip(1, "data/none.png")};
    std::string all;
    for (const std::string &chunk : chunks)
        all += chunk;
    const std::string whole = Form(all), header = whole.substr(0, 12);
    for (size_t length = 0; length < header.size(); length++)
        ExpectRefused(whole.substr(0, length), "header");
    size_t start = header.size();
    for (const std::string &chunk : chunks) {
        for (size_t length = start + 1; length < start + chunk.size(); length++)
            ExpectRefused(whole.substr(0, length), std::to_string(length).c_str());
        start += chunk.size();
    }
    EXPECT_NE(Read(whole), nullptr);
}

class OpenFile
{
public:
    explicit OpenFile(const std::string &bytes) : mFile(std::tmpfile())
    {
        std::fwrite(bytes.data(), 1, bytes.size(), mFile);
        std::rewind(mFile);
    }
    ~OpenFile() { std::fclose(mFile); }
    operator std::FILE *() const { return mFile; }

private:
    std::FILE *mFile;
};

TEST_F(LWO2, StringsCountTheirPadding)
{
    const OpenFile file(S0("abc") + S0("ab") + S0("") + "open");
    std::string text = "x";
    EXPECT_EQ(c3DObject::ReadString(text, file), 4);
    EXPECT_EQ(text, "xabc"); // appended
    EXPECT_EQ(c3DObject::ReadString(text, file), 4);
    EXPECT_EQ(c3DObject::ReadString(text, file), 2);
    EXPECT_EQ(text, "xabcab");
    EXPECT_EQ(c3DObject::ReadString(text, file), 0); // the file ends first
}

TEST_F(LWO2, UnknownTagIsLeftToTheCaller)
{
    const OpenFile file(U4(2) + "xy");
    c3DObject object;
    EXPECT_FALSE(c3DObject::HandleTag("BBOX", file, &object));
    EXPECT_EQ(std::ftell(file), 0);
    const OpenFile points(Points({{0, 0}}).substr(4));
    EXPECT_TRUE(c3DObject::HandleTag("PNTS", points, &object));
    EXPECT_EQ(object.mVertices.size(), 1u);
}
} // namespace
