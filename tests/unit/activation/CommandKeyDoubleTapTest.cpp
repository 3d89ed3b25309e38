#include "Quillbox/activation/CommandKeyDoubleTap.h"

#include <random>

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

/// With the setting on, and the clock on a tick of the monitor.
class CommandKeyDoubleTapTest : public ActivationFixture {
 protected:
  void SetUp() override { settings().setApplicationActivatesOnCommandKeyDoubleTap(true); }
  void tapCommand(TimeInterval held = 0.1) {
    keyboard().press(KeyCodeLeftCommand);
    platform.runFor(held);
    keyboard().release(KeyCodeLeftCommand);
  }
};

TEST_F(CommandKeyDoubleTapTest, TwoTapsRaiseThePanelAtTheTickAfterTheSecondRelease) {
  tapCommand();
  platform.runFor(0.2);
  tapCommand();
  EXPECT_FALSE(isActive());
  platform.runFor(0.05);
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCommandDoubleTap);
}

TEST_F(CommandKeyDoubleTapTest, DoesNothingWithItsSettingOff) {
  settings().setApplicationActivatesOnCommandKeyDoubleTap(false);
  tapCommand();
  platform.runFor(0.2);
  tapCommand();
  platform.runFor(1);
  EXPECT_FALSE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, TapsTooFarApartDoNotCountTogetherButTheSecondStartsAnew) {
  tapCommand();
  platform.runFor(0.5);
  tapCommand();  // 0.6 after the first release
  platform.runFor(0.05);
  EXPECT_FALSE(isActive());
  platform.runFor(0.25);
  tapCommand();  // 0.4 after the second release
  platform.runFor(0.05);
  EXPECT_TRUE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, LongPressResetsTheCount) {
  tapCommand();
  platform.runFor(0.1);
  tapCommand(0.7);
  platform.runFor(0.1);
  tapCommand();
  platform.runFor(0.2);
  EXPECT_FALSE(isActive());
  tapCommand();
  platform.runFor(0.05);
  EXPECT_TRUE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, KeyBetweenTheTapsSpoilsThem) {
  tapCommand();
  platform.runFor(0.1);
  keyboard().type(KeyCodeC);
  tapCommand();
  platform.runFor(0.1);
  EXPECT_FALSE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, WithoutTheGlobalMonitorAKeyBetweenGoesUnnoticed) {
  appDelegate->removeGlobalKeyEventMonitor();
  tapCommand();
  platform.runFor(0.1);
  keyboard().type(KeyCodeC);
  tapCommand();
  platform.runFor(0.1);
  EXPECT_TRUE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, RightHandKeyDoesNotCount) {
  for (int i = 0; i < 2; ++i) {
    keyboard().type(KeyCodeRightCommand);
    platform.runFor(0.1);
  }
  EXPECT_FALSE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, WorksWithoutAccess) {
  removeTap();
  tapCommand();
  platform.runFor(0.2);
  tapCommand();
  platform.runFor(0.05);
  EXPECT_TRUE(isActive());
}

TEST_F(CommandKeyDoubleTapTest, AnActivationForgetsTheFirstTap) {
  tapCommand();
  platform.runFor(0.05);
  open(ActivationMethodCorner);
  close();
  tapCommand();
  platform.runFor(0.05);
  EXPECT_FALSE(isActive());
}

// Looks by themselves, at moments that are exact.

TEST(CommandKeyDoubleTapLooksTest, LimitsAreHalfASecond) {
  const struct {
    const char* what;
    TimeInterval firstHeld, gap, secondHeld;
    bool expected;
  } cases[] = {
      {"quick", 0.1, 0.1, 0.1, true},
      {"first held half a second", 0.5, 0.1, 0.1, true},
      {"first held longer", 0.55, 0.1, 0.1, false},
      {"second held half a second", 0.1, 0.0, 0.45, true},
      {"releases half a second apart", 0.1, 0.4, 0.1, false},
      {"releases just within", 0.1, 0.35, 0.1, true},
      {"releases further apart", 0.1, 0.45, 0.1, false},
  };
  for (const auto& each : cases) {
    CommandKeyDoubleTap taps;
    const auto look = [&taps](bool down, Moment at) {
      return taps.monitorKeysForCommandKeyDoubleTapActivation(down, at);
    };
    Moment now = 1000.05;
    EXPECT_FALSE(look(true, now)) << each.what;
    EXPECT_FALSE(look(false, now += each.firstHeld)) << each.what;
    EXPECT_FALSE(look(true, now += each.gap)) << each.what;
    EXPECT_EQ(look(false, now += each.secondHeld), each.expected) << each.what;
  }
}

/// The ticks at which a double tap is seen, when ticks without a change are looked at or are not.
std::vector<int> doubleTapsSeen(unsigned seed, bool atEveryTick) {
  std::minstd_rand random(seed);
  CommandKeyDoubleTap taps;
  std::vector<int> seen;
  bool down = false;
  int untilChange = 1;
  for (int tick = 0; tick < 2000; ++tick) {
    const bool changes = --untilChange == 0;
    if (changes) {
      down = !down;
      untilChange = 1 + static_cast<int>(random() % 12);
    }
    if (!changes && !atEveryTick) continue;
    if (taps.monitorKeysForCommandKeyDoubleTapActivation(down, 1000 + tick * 0.05)) {
      seen.push_back(tick);
    }
  }
  return seen;
}

TEST(CommandKeyDoubleTapLooksTest, LooksAtAnUnchangedKeyMakeNoDifference) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const auto seen = doubleTapsSeen(seed, true);
    EXPECT_GT(seen.size(), 10U);
    EXPECT_EQ(doubleTapsSeen(seed, false), seen) << seed;
  }
}

}  // namespace
}  // namespace qb::test
