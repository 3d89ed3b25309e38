#include "InputDesk.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr HotKeyID forward{fourCharacterCode("QBb1"), 1007};
constexpr HotKeyID other{fourCharacterCode("QBb2"), 1008};

class HotKey : public InputDesk {
 protected:
  std::unique_ptr<HotKeys::Registration> registerAltTab(HotKeyID id = forward) {
    return input_->hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption, id);
  }
  void altTabTap() {
    client_.press(KeyCodeLeftOption);
    client_.tap(KeyCodeTab);
    client_.release(KeyCodeLeftOption);
  }
};

class HotKeyOfAnotherProgram : public HotKey {
 protected:
  HotKeyOfAnotherProgram() { restartWindowManager(WindowManagerKeys::AltTab); }
};

TEST_F(HotKey, ComesToTheHandlerWithoutATap) {
  const auto registration = registerAltTab();
  ASSERT_TRUE(registration);
  altTabTap();
  ASSERT_TRUE(waitFor([&] { return !input_.hotKeys.empty(); }));
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(input_.hotKeys, ElementsAre(forward));
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(HotKey, PassesTheTapFirst) {
  const auto registration = registerAltTab();
  input_.createTap({});
  altTabTap();
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_THAT(input_.hotKeys, ElementsAre(forward));
  EXPECT_THAT(describe(input_.tapped), ElementsAre("+48 option", "-48 option"));
}

TEST_F(HotKey, SwallowedByTheTapDoesNotComeToTheHandler) {
  const auto registration = input_->hotKeys().registerEventHotKey(
      KeyCodeTab, HotKeyModifierOption | HotKeyModifierShift, other);
  ASSERT_TRUE(registration);
  input_.createTap({{altShiftTab}});
  client_.press(KeyCodeLeftOption);
  client_.press(KeyCodeLeftShift);
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftShift);
  client_.release(KeyCodeLeftOption);
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_THAT(input_.tapped, SizeIs(2));
  EXPECT_THAT(input_.hotKeys, IsEmpty());
}

TEST_F(HotKey, LocksDoNotMatter) {
  const auto registration = registerAltTab();
  for (const std::uint16_t lock : {std::uint16_t{KeyCodeCapsLock}, KeyCodeNumLock}) {
    client_.tap(lock);
    altTabTap();
  }
  ASSERT_TRUE(waitFor([&] { return input_.hotKeys.size() == 2; }));
}

TEST_F(HotKey, RepeatsWhileHeld) {
  const auto registration = registerAltTab();
  client_.press(KeyCodeLeftOption);
  client_.press(KeyCodeTab);
  ASSERT_TRUE(waitFor([&] { return input_.hotKeys.size() >= 3; }));
  client_.release(KeyCodeTab);
  client_.release(KeyCodeLeftOption);
}

TEST_F(HotKey, LetsTheKeyboardGoUnderAHeldModifierWhenNothingComesOfIt) {
  const auto registration =
      input_->hotKeys().registerEventHotKey(KeyCodeH, HotKeyModifierCommand, forward);
  client_.press(KeyCodeLeftCommand);
  client_.tap(KeyCodeH);
  ASSERT_TRUE(keyboardComesBack());
  client_.tap(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() == 2; }));
  client_.release(KeyCodeLeftCommand);
}

TEST_F(HotKey, KeepsTheKeyboardWhenTheRulesFollow) {
  const auto registration = registerAltTab();
  input_.createTap({});
  input_->hotKeys().installEventHandler([&](const HotKeyPress& press) {
    input_.hotKeys.push_back(press.id);
    input_.setEveryKeyDown(true);
    return true;
  });
  client_.press(KeyCodeLeftOption);
  client_.tap(KeyCodeTab);
  client_.tap(KeyCodeTab);
  client_.tap(KeyCodeRight);
  client_.release(KeyCodeLeftOption);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 6; }));
  EXPECT_EQ(input_.hotKeys.front(), forward);
  input_.setEveryKeyDown(false);
  ASSERT_TRUE(keyboardComesBack());
  typeProbe();
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(HotKey, SecondRegistrationOfOneCombinationIsNone) {
  const auto first = registerAltTab(forward);
  EXPECT_FALSE(registerAltTab(other));
  altTabTap();
  ASSERT_TRUE(waitFor([&] { return !input_.hotKeys.empty(); }));
  EXPECT_THAT(input_.hotKeys, ElementsAre(forward));
}

TEST_F(HotKey, UnregisteredCombinationIsTheClientsAgain) {
  auto registration = registerAltTab();
  ASSERT_TRUE(registration);
  registration.reset();
  // The answer to a further request tells that the end of the first has been served.
  const auto another =
      input_->hotKeys().registerEventHotKey(KeyCodeH, HotKeyModifierCommand, other);
  ASSERT_TRUE(another);
  altTabTap();
  typeProbe();
  EXPECT_THAT(client_.keys, SizeIs(2));
  EXPECT_THAT(input_.hotKeys, IsEmpty());
}

TEST_F(HotKey, UnregisteredCombinationCanBeHadByOthers) {
  auto registration = registerAltTab();
  EXPECT_FALSE(client_.grabKey(KeyCodeTab, XCB_MOD_MASK_1));
  registration.reset();
  const auto another =
      input_->hotKeys().registerEventHotKey(KeyCodeH, HotKeyModifierCommand, other);
  XClient second(server_.display());
  EXPECT_TRUE(second.grabKey(KeyCodeTab, XCB_MOD_MASK_1));
}

TEST_F(HotKey, RegisteredWhileTheKeyboardIsOursBecomesRealAfterwards) {
  input_.createTap({});
  input_.setEveryKeyDown(true);
  const auto registration = registerAltTab();
  ASSERT_TRUE(registration);
  input_.setEveryKeyDown(false);
  ASSERT_TRUE(keyboardComesBack());
  altTabTap();
  ASSERT_TRUE(waitFor([&] { return !input_.hotKeys.empty(); }));
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(HotKey, RegistrationMayOutliveTheInput) {
  auto second = std::make_unique<InputUnderTest>(server_.display());
  auto registration =
      (*second)->hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption, forward);
  second.reset();
  registration.reset();
  EXPECT_TRUE(registerAltTab());
}

TEST_F(HotKeyOfAnotherProgram, IsRefusedAndLoggedWithTheCombination) {
  EXPECT_FALSE(registerAltTab());
  EXPECT_EQ(log_.count("Alt+Tab is held by another program"), 1);
  altTabTap();
  typeProbe();
  EXPECT_THAT(input_.hotKeys, IsEmpty());
}

TEST_F(HotKeyOfAnotherProgram, ChordIsLoggedAndLeftAlone) {
  input_.createTap({{superTab, altShiftTab}});
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_EQ(log_.count("Alt+Shift+Tab is held by another program"), 1);
  input_.tapped.clear();
  client_.press(KeyCodeLeftOption);
  client_.press(KeyCodeLeftShift);
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftShift);
  client_.release(KeyCodeLeftOption);
  typeProbe();
  EXPECT_THAT(input_.tapped, IsEmpty());
}

TEST_F(HotKeyOfAnotherProgram, IsLoggedOnceForHotKeyAndChord) {
  EXPECT_FALSE(input_->hotKeys().registerEventHotKey(
      KeyCodeTab, HotKeyModifierOption | HotKeyModifierShift, other));
  input_.createTap({{superTab, altShiftTab}});
  superTabTap();
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_EQ(log_.count("Alt+Shift+Tab is held by another program"), 1);
}

TEST_F(HotKeyOfAnotherProgram, ChordIsHadOnceTheOtherProgramHasGone) {
  input_.createTap({{superTab, altShiftTab}});
  restartWindowManager(WindowManagerKeys::None);
  EXPECT_TRUE(waitFor([&] {
    return chordIsTaken({KeyCodeLeftOption, KeyCodeLeftShift}, KeyCodeTab);
  }));
}

}  // namespace
}  // namespace qb::test
