#include "sound/Sound.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <string>

TEST(SoundErrors, CodesHaveTheInterfacesNumbers)
{
    EXPECT_EQ(FMOD_OK, 0);
    EXPECT_EQ(FMOD_ERR_CHANNEL_ALLOC, 10);
    EXPECT_EQ(FMOD_ERR_FILE_BAD, 19);
    EXPECT_EQ(FMOD_ERR_FILE_NOTFOUND, 23);
    EXPECT_EQ(FMOD_ERR_FORMAT, 25);
    EXPECT_EQ(FMOD_ERR_INITIALIZED, 32);
    EXPECT_EQ(FMOD_ERR_INVALID_HANDLE, 36);
    EXPECT_EQ(FMOD_ERR_INVALID_PARAM, 37);
    EXPECT_EQ(FMOD_ERR_NOTREADY, 54);
    EXPECT_EQ(FMOD_ERR_OUTPUT_INIT, 60);
    EXPECT_EQ(FMOD_ERR_TAGNOTFOUND, 76);
    EXPECT_EQ(FMOD_ERR_UNINITIALIZED, 79);
    EXPECT_EQ(FMOD_ERR_EVENT_FAILED, 83);
    EXPECT_EQ(FMOD_ERR_MUSIC_NOCALLBACK, 95);
}

TEST(SoundErrors, EveryCodeHasASentenceOfItsOwn)
{
    std::set<std::string> texts;
    for (int code = 0; code <= 95; code++) {
        const std::string text = FMOD_ErrorString(FMOD_RESULT(code));
        EXPECT_GT(text.size(), 5u) << code;
        EXPECT_EQ(text.back(), '.') << code;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 96u);
    EXPECT_EQ(texts.count("Unknown error."), 0u);
}

// The table is long: a line lost in the middle would shift all that follow.
TEST(SoundErrors, TextsBelongToTheirCodes)
{
    EXPECT_STREQ(FMOD_ErrorString(FMOD_OK), "No error.");
    EXPECT_STREQ(FMOD_ErrorString(FMOD_ERR_FILE_NOTFOUND), "There is no such file.");
    EXPECT_STREQ(FMOD_ErrorString(FMOD_ERR_MEMORY), "There is not enough memory.");
    EXPECT_STREQ(FMOD_ErrorString(FMOD_ERR_RECORD), "Recording failed.");
    EXPECT_STREQ(FMOD_ErrorString(FMOD_ERR_EVENT_NOTFOUND), "There is no such sound event.");
}

TEST(SoundErrors, OtherCodesAreUnknown)
{
    for (const int code : {96, 97, 1000, INT_MAX, -1, INT_MIN})
        EXPECT_STREQ(FMOD_ErrorString(FMOD_RESULT(code)), "Unknown error.") << code;
}
