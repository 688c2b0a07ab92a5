#include "studio/Events.h"
#include "studio/Commands.h"

#include <gtest/gtest.h>

using studio::cEvent;
using studio::cEventQueue;
using studio::eCommand;

namespace
{
cEvent Key(int key, bool isDown = true)
{
    cEvent event;
    event.mKind = cEvent::KEY;
    event.mKey = event.mPlace = key;
    event.mIsDown = isDown;
    return event;
}

cEvent Button(bool isDown)
{
    cEvent event;
    event.mKind = cEvent::BUTTON;
    event.mIsDown = isDown;
    return event;
}

cEvent Move(double x)
{
    cEvent event;
    event.mX = x;
    return event;
}

// However slow a frame is, a key that was tapped in it is seen going down, and then up.
TEST(EventQueue, KeyPressedAndReleasedWithinAFrameIsSeenInTwo)
{
    cEventQueue queue;
    queue.Add(Key(' '));
    queue.Add(Key(' ', false));
    const auto first = queue.Take(), second = queue.Take();
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_TRUE(first[0].mIsDown);
    EXPECT_FALSE(second[0].mIsDown);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(EventQueue, MovesAreJoinedButNotAcrossAClick)
{
    cEventQueue queue;
    for (const cEvent &event : {Move(1), Move(2), Button(true), Move(3), Move(4), Button(false)})
        queue.Add(event);
    const auto press = queue.Take(), release = queue.Take();
    ASSERT_EQ(press.size(), 2u);
    EXPECT_EQ(press[0].mX, 2.0); // where it went down
    EXPECT_TRUE(press[1].mIsDown);
    ASSERT_EQ(release.size(), 2u);
    EXPECT_EQ(release[0].mX, 4.0); // where it went up
    EXPECT_FALSE(release[1].mIsDown);
}

TEST(EventQueue, NothingIsLostOrTurnedRound)
{
    cEventQueue queue;
    std::string typed, seen;
    for (char c = 'A'; c <= 'Z'; c++) {
        queue.Add(Key(c));
        queue.Add(Key(c, false));
        typed += c;
    }
    while (!queue.IsEmpty())
        for (const cEvent &event : queue.Take())
            if (event.mIsDown)
                seen += char(event.mKey);
    EXPECT_EQ(seen, typed);
}

// On a German keyboard Z is written where Y is in the United States.
TEST(Commands, LettersAreWhatIsWrittenOnTheKey)
{
    cEvent event = Key('Z');
    event.mPlace = 'Y';
    event.mModifiers.mCtrl = true;
    EXPECT_EQ(FindCommand(event), eCommand::Undo);
    event.mModifiers.mShift = true;
    EXPECT_EQ(FindCommand(event), eCommand::Redo);
    // On a French one Q stands at the place of A: without Ctrl it is Q all the same.
    cEvent french = Key('Q');
    french.mPlace = 'A';
    EXPECT_EQ(FindCommand(french), eCommand::Quantise);
    french.mKey = 'A';
    french.mPlace = 'Q';
    EXPECT_EQ(FindCommand(french), eCommand::None);
}

// There the upper row writes signs, and digits with Shift; the full stop needs Shift too.
TEST(Commands, DigitsAndSignsAreWhereTheyAreToo)
{
    cEvent event = Key('&');
    event.mPlace = '1';
    EXPECT_EQ(FindCommand(event), eCommand::Hold);
    event.mKey = ':';
    event.mPlace = '.';
    EXPECT_EQ(FindCommand(event), eCommand::NextKey);
}

TEST(Commands, NoTwoBindingsHaveOneKey)
{
    const auto all = studio::Bindings();
    for (size_t i = 0; i < all.size(); i++)
        for (size_t j = i + 1; j < all.size(); j++)
            EXPECT_FALSE(all[i].mKey == all[j].mKey && all[i].mModifiers == all[j].mModifiers)
                << all[i].mText << " and " << all[j].mText;
}
} // namespace
