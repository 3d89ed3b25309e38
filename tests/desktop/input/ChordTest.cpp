#include "InputDesk.h"
#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Chord : public InputDesk {
 protected:
  Chord() { input_.createTap({{superTab, superShiftTab, altShiftTab}}); }

  static XClient::Key clientKey(bool down, std::uint16_t keyCode, std::uint16_t state = 0) {
    return {down, *KeyCodeTable::xCodeFromKeyCode(keyCode), state};
  }
};

TEST_F(Chord, OtherKeysPassUntouchedAndAreSeen) {
  client_.tap(KeyCodeA);
  typeProbe();
  EXPECT_THAT(client_.keys, ElementsAre(clientKey(true, KeyCodeA), clientKey(false, KeyCodeA)));
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+0", "-0"));
  EXPECT_EQ(client_.keyboardReturns, 0);
}

TEST_F(Chord, PressAndReleaseAreTaken) {
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command", "-48 command"));
}

TEST_F(Chord, ModifierReleasedFirstLeaksNoKeyRelease) {
  client_.press(KeyCodeLeftCommand);
  client_.press(KeyCodeTab);
  client_.release(KeyCodeLeftCommand);
  client_.release(KeyCodeTab);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command", "-48"));
}

TEST_F(Chord, NoModifierSticksAtTheClient) {
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  client_.tap(KeyCodeA);
  typeProbe();
  EXPECT_THAT(client_.keys, ElementsAre(clientKey(true, KeyCodeA), clientKey(false, KeyCodeA)));
}

TEST_F(Chord, ShiftVariantsAreChordsOfTheirOwn) {
  for (const auto modifier : {KeyCodeLeftCommand, KeyCodeLeftOption}) {
    client_.press(modifier);
    client_.press(KeyCodeLeftShift);
    client_.tap(KeyCodeTab);
    client_.release(KeyCodeLeftShift);
    client_.release(modifier);
    ASSERT_TRUE(keyboardComesBack());
  }
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command shift", "-48 command shift",
                                                   "+48 option shift", "-48 option shift"));
}

TEST_F(Chord, ForbiddenModifierLeavesTheKeyToTheClient) {
  client_.press(KeyCodeLeftControl);
  client_.press(KeyCodeLeftCommand);
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftCommand);
  client_.release(KeyCodeLeftControl);
  typeProbe();
  EXPECT_EQ(client_.keys.size(), 2u);
  EXPECT_EQ(client_.keyboardReturns, 0);
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 control command", "-48 control command"));
}

TEST_F(Chord, RightHandModifierServesToo) {
  client_.press(KeyCodeRightCommand);
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeRightCommand);
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command", "-48 command"));
}

TEST_F(Chord, KeyInTheGapBeforeTheAnswerReachesTheTapOnly) {
  client_.press(KeyCodeLeftCommand);
  client_.tap(KeyCodeTab);
  client_.tap(KeyCodeRight);
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_THAT(describe(input_.tapped),
              ElementsAre("+48 command", "-48 command", "+124 command", "-124 command"));
}

TEST_F(Chord, KeysAfterAQuickTapWaitForABusyMainThread) {
  superTabTap();
  client_.tap(KeyCodeRight);
  ASSERT_TRUE(waitUntil({&client_}, [&] { return client_.keyboardIsTaken; }));
  client_.sync();
  // Only now the main thread comes to look.
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 4; }));
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command", "-48 command", "+124", "-124"));
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, HangingMainThreadDoesNotKeepTheKeyboard) {
  superTabTap();
  ASSERT_TRUE(waitUntil({&client_}, [&] { return client_.keyboardReturns > 0; }));
}

TEST_F(Chord, RulesForEveryKeyKeepTheKeyboardAfterTheChord) {
  input_.onTapped = [&](const TappedEvent& event) {
    if (event.keyCode == KeyCodeTab) input_.setEveryKeyDown(true);
  };
  superTabTap();
  client_.tap(KeyCodeA);
  client_.tap(KeyCodeEscape);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 6; }));
  EXPECT_TRUE(client_.keyboardIsTaken);
  input_.setEveryKeyDown(false);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_THAT(describe(input_.tapped),
              ElementsAre("+48 command", "-48 command", "+0", "-0", "+53", "-53"));
}

TEST_F(Chord, RulesForEveryKeyTakeTheKeyboardWithoutAChord) {
  input_.setEveryKeyDown(true);
  ASSERT_TRUE(waitFor([&] { return client_.keyboardIsTaken; }));
  client_.tap(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 2; }));
  input_.setEveryKeyDown(false);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, KeyboardStaysUntilTheLastTakenKeyIsUp) {
  input_.setEveryKeyDown(true);
  ASSERT_TRUE(waitFor([&] { return client_.keyboardIsTaken; }));
  client_.press(KeyCodeEscape);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 1; }));
  input_.setEveryKeyDown(false);
  client_.release(KeyCodeEscape);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, EndOfTheRulesFreesTheKeyboardUnderAHeldModifier) {
  input_.onTapped = [&](const TappedEvent& event) {
    if (event.type == EventTypeKeyDown) input_.setEveryKeyDown(event.keyCode == KeyCodeTab);
  };
  client_.press(KeyCodeLeftCommand);
  client_.tap(KeyCodeTab);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 2; }));
  client_.tap(KeyCodeEscape);
  ASSERT_TRUE(keyboardComesBack());
  client_.release(KeyCodeLeftCommand);
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, HeldKeyRepeats) {
  client_.press(KeyCodeLeftCommand);
  client_.press(KeyCodeTab);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() >= 4; }));
  client_.release(KeyCodeTab);
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(keyboardComesBack());
  const auto texts = describe(input_.tapped);
  EXPECT_EQ(texts.front(), "+48 command");
  EXPECT_EQ(texts.back(), "-48 command");
  for (std::size_t i = 1; i + 1 < texts.size(); ++i) EXPECT_EQ(texts[i], "+48 command repeat");
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, LocksDoNotMatter) {
  client_.tap(KeyCodeCapsLock);
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  client_.tap(KeyCodeNumLock);
  superTabTap();
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 4; }));
  client_.tap(KeyCodeCapsLock);
  superTabTap();
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 6; }));
  EXPECT_THAT(describe(input_.tapped),
              ElementsAre("+48 command capslock", "-48 command capslock", "+48 command capslock",
                          "-48 command capslock", "+48 command", "-48 command"));
}

TEST_F(Chord, HundredOfHundred) {
  for (int i = 0; i < 100; ++i) superTabTap();
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 200; }));
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, HundredOfHundredWithTheKeyboardGivenBackEachTime) {
  for (int i = 1; i <= 100; ++i) {
    superTabTap();
    ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == static_cast<std::size_t>(2 * i); }));
    input_.setEveryKeyDown(true);
    input_.setEveryKeyDown(false);
    ASSERT_TRUE(keyboardComesBack());
  }
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Chord, WithoutRulesTheChordIsTheClients) {
  input_.setRules({});
  superTabTap();
  typeProbe();
  EXPECT_EQ(client_.keys.size(), 2u);
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 command", "-48 command"));
}

TEST_F(Chord, DisabledTapTakesAndSeesNothing) {
  input_->eventTap().enable(false);
  EXPECT_FALSE(input_->eventTap().isEnabled());
  superTabTap();
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() == 2; }));
  EXPECT_THAT(input_.tapped, IsEmpty());
  EXPECT_EQ(client_.keyboardReturns, 0);
  input_->eventTap().enable(true);
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_EQ(client_.keys.size(), 2u);
}

TEST_F(Chord, ReleasedTapTakesNothing) {
  input_->eventTap().release();
  input_->eventTap().release();
  EXPECT_FALSE(input_->eventTap().exists());
  superTabTap();
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() == 2; }));
}

TEST_F(Chord, EventsWaitInOrderForAModeOfTheTap) {
  input_->eventTap().removeFromRunLoop(RunLoopMode::EventTracking);
  input_.mode = RunLoopMode::EventTracking;
  const auto generation = input_->keyboard().keysChanged().generation();
  client_.tap(KeyCodeA);
  client_.tap(KeyCodeS);
  ASSERT_TRUE(waitFor([&] {
    return client_.keys.size() == 4 && input_->keyboard().keysChanged().generation() > generation;
  }));
  EXPECT_THAT(input_.tapped, IsEmpty());
  input_.mode = RunLoopMode::Default;
  input_->drain();
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 4; }));
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+0", "-0", "+1", "-1"));
}

TEST_F(Chord, CatchingUpHandsOnWhatTheServerKnowsOf) {
  // Left to itself the input thread comes too late at the first try.
  for (int i = 0; i < 100; ++i) {
    input_.tapped.clear();
    client_.tap(KeyCodeA);
    client_.sync();
    input_->catchUp();
    ASSERT_THAT(describe(input_.tapped), ElementsAre("+0", "-0")) << "try " << i;
  }
}

TEST_F(Chord, MonitorsHearOfKeysTakenOrNotButNotOfModifiers) {
  int heard = 0;
  auto subscription = input_->eventTap().addGlobalKeyDownMonitor([&] { ++heard; });
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  client_.tap(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() == 2; }));
  typeProbe();
  EXPECT_EQ(heard, 3);
  subscription.cancel();
  client_.tap(KeyCodeA);
  typeProbe();
  EXPECT_EQ(heard, 3);
}

TEST_F(Chord, NoAccessNoTap) {
  input_->eventTap().release();
  input_.allowed = false;
  EXPECT_FALSE(input_->accessibility().isProcessTrusted());
  EXPECT_FALSE(input_->eventTap().create([](const TappedEvent&) { return true; }));
  EXPECT_FALSE(input_->eventTap().exists());
}

}  // namespace
}  // namespace qb::test
