#include "PlatformDesktop/input/KeyboardHold.h"

#include <gtest/gtest.h>

#include "PlatformDesktop/input/GrabSpan.h"

namespace qb::test {
namespace {

constexpr std::uint16_t super = 0x40;
constexpr std::uint16_t alt = 0x08;

class Hold : public ::testing::Test {
 protected:
  KeyboardHold hold_;
};

TEST_F(Hold, IsNotWantedFromTheStart) { EXPECT_FALSE(hold_.isWanted(100)); }

TEST_F(Hold, LastsWhileTheModifierOfAChordIsDown) {
  hold_.pressed(1, super, 100);
  hold_.setModifiersDown(super);
  hold_.handled(1, 100.001);
  EXPECT_TRUE(hold_.isWanted(200));
  EXPECT_EQ(hold_.nextDeadline(), std::nullopt);
  hold_.setModifiersDown(alt);
  EXPECT_FALSE(hold_.isWanted(200));
}

TEST_F(Hold, LastsUntilThePressIsHandledAndItsRulesMayHaveCome) {
  hold_.pressed(1, 0, 100);
  EXPECT_TRUE(hold_.isWanted(101.9));
  hold_.handled(1, 101.9);
  EXPECT_TRUE(hold_.isWanted(101.95));
  EXPECT_EQ(hold_.nextDeadline(), 101.9 + KeyboardHold::settleTime);
  EXPECT_FALSE(hold_.isWanted(102));
}

TEST_F(Hold, GivesUpOnAMainThreadThatHangs) {
  hold_.pressed(1, 0, 100);
  EXPECT_EQ(hold_.nextDeadline(), 100 + KeyboardHold::longestWait);
  EXPECT_FALSE(hold_.isWanted(102));
}

TEST_F(Hold, WaitsForTheLastOfSeveralPresses) {
  hold_.pressed(1, 0, 100);
  hold_.pressed(2, 0, 100.1);
  hold_.handled(1, 100.2);
  EXPECT_TRUE(hold_.isWanted(101));
  hold_.handled(2, 101);
  EXPECT_FALSE(hold_.isWanted(101.2));
}

TEST_F(Hold, StandsWithTheRulesForEveryKey) {
  hold_.setEveryKeyDown(true);
  EXPECT_TRUE(hold_.isWanted(1e9));
  hold_.setEveryKeyDown(false);
  EXPECT_FALSE(hold_.isWanted(1e9));
}

TEST_F(Hold, EndOfTheRulesEndsWhatWasHandledBefore) {
  hold_.pressed(1, super, 100);
  hold_.setModifiersDown(super);
  hold_.handled(1, 100);
  hold_.setEveryKeyDown(true);
  hold_.setEveryKeyDown(false);
  EXPECT_FALSE(hold_.isWanted(100.01));
}

TEST_F(Hold, EndOfTheRulesKeepsAPressThatIsStillToBeHandled) {
  hold_.setEveryKeyDown(true);
  hold_.pressed(1, super, 100);
  hold_.setEveryKeyDown(false);
  EXPECT_TRUE(hold_.isWanted(100.01));
}

TEST_F(Hold, HotKeyDoesNotEndTheHoldOfAChord) {
  hold_.pressed(1, super, 100);
  hold_.setModifiersDown(super);
  hold_.pressed(2, 0, 100);
  hold_.handled(2, 100);
  EXPECT_TRUE(hold_.isWanted(110));
}

TEST(GrabSpan, OwnsFromItsBeginOn) {
  GrabSpan span;
  EXPECT_FALSE(span.contains(10));
  span.begin(10);
  EXPECT_FALSE(span.contains(9));
  EXPECT_TRUE(span.contains(10));
  EXPECT_TRUE(span.isOpen());
}

TEST(GrabSpan, OwnsEventsOlderThanItsEnd) {
  GrabSpan span;
  span.begin(10);
  span.end(20);
  EXPECT_FALSE(span.isOpen());
  EXPECT_TRUE(span.contains(19));
  EXPECT_FALSE(span.contains(20));
}

TEST(GrabSpan, HoldsAcrossTheWrapOfTheNumbers) {
  GrabSpan span;
  span.begin(0xfffffff0);
  EXPECT_TRUE(span.contains(5));
  span.end(8);
  EXPECT_TRUE(span.contains(7));
  EXPECT_FALSE(span.contains(8));
  // The end has been passed: numbers half a round later are not before it.
  EXPECT_FALSE(span.contains(8 + 0x90000000));
}

}  // namespace
}  // namespace qb::test
