#include "InputDesk.h"

namespace qb::test {
namespace {

class KeyboardState : public InputDesk {
 protected:
  bool isDown(unsigned keyCode) { return input_->keyboard().getKeys().isDown(keyCode); }
};

TEST_F(KeyboardState, TellsWhichKeysAreDown) {
  EXPECT_EQ(input_->keyboard().getKeys(), KeyMap());
  client_.press(KeyCodeLeftCommand);
  client_.press(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return isDown(KeyCodeA); }));
  KeyMap expected;
  expected.set(KeyCodeA, true);
  expected.set(KeyCodeLeftCommand, true);
  EXPECT_EQ(input_->keyboard().getKeys(), expected);
  client_.release(KeyCodeA);
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return input_->keyboard().getKeys() == KeyMap(); }));
}

TEST_F(KeyboardState, IsNeverAheadOfTheEvents) {
  input_.createTap({{superTab}});
  client_.press(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return isDown(KeyCodeLeftCommand); }));
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftCommand);
  client_.sync();
  // The server knows better, but the Tab has not been handed on.
  EXPECT_TRUE(isDown(KeyCodeLeftCommand));
  ASSERT_TRUE(input_.tapped.empty());
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 2 && !isDown(KeyCodeLeftCommand); }));
}

TEST_F(KeyboardState, SignalsEachChange) {
  auto& notice = input_->keyboard().keysChanged();
  auto before = notice.generation();
  client_.press(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return notice.generation() > before; }));
  before = notice.generation();
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return notice.generation() > before; }));
}

TEST_F(KeyboardState, IsRightWhileAnotherProgramHoldsTheKeyboard) {
  client_.press(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return isDown(KeyCodeLeftCommand); }));
  XClient menu(server_.display());
  menu.openBypassWindow(0, 0, 10, 10);
  ASSERT_TRUE(menu.grabKeyboard());
  auto before = input_->keyboard().keysChanged().generation();
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return input_->keyboard().keysChanged().generation() > before; }));
  EXPECT_FALSE(isDown(KeyCodeLeftCommand));
}

TEST_F(KeyboardState, IsRightWhileTheKeyboardIsOurs) {
  input_.createTap({{superTab}});
  client_.press(KeyCodeLeftCommand);
  client_.tap(KeyCodeTab);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 2; }));
  EXPECT_TRUE(isDown(KeyCodeLeftCommand));
  EXPECT_FALSE(isDown(KeyCodeTab));
  client_.release(KeyCodeLeftCommand);
  ASSERT_TRUE(waitFor([&] { return !isDown(KeyCodeLeftCommand); }));
}

TEST_F(KeyboardState, KnowsKeysThatWereDownBeforeItCame) {
  client_.press(KeyCodeA);
  client_.sync();
  InputUnderTest late(server_.display());
  EXPECT_TRUE(late->keyboard().getKeys().isDown(KeyCodeA));
  client_.release(KeyCodeA);
}

TEST_F(KeyboardState, TellsTheModifiers) {
  const struct {
    std::uint16_t keyCode;
    EventFlags flags;
  } table[] = {
      {KeyCodeLeftCommand, EventFlagCommand}, {KeyCodeRightCommand, EventFlagCommand},
      {KeyCodeLeftOption, EventFlagOption},   {KeyCodeRightOption, EventFlagOption},
      {KeyCodeLeftShift, EventFlagShift},     {KeyCodeRightShift, EventFlagShift},
      {KeyCodeLeftControl, EventFlagControl}, {KeyCodeRightControl, EventFlagControl},
  };
  for (const auto& row : table) {
    client_.press(row.keyCode);
    client_.sync();
    EXPECT_EQ(input_->keyboard().modifierFlags(), row.flags) << row.keyCode;
    client_.release(row.keyCode);
    client_.sync();
    EXPECT_EQ(input_->keyboard().modifierFlags(), 0u) << row.keyCode;
  }
}

TEST_F(KeyboardState, TellsWhichControlIsHeld) {
  const struct {
    std::vector<std::uint16_t> held;
    bool isLeft;
  } table[] = {
      {{KeyCodeLeftControl}, true},
      {{KeyCodeRightControl}, false},
      {{KeyCodeLeftControl, KeyCodeRightControl}, true},
      // An event told of it, and it is up by now.
      {{}, true},
  };
  for (const auto& row : table) {
    for (const std::uint16_t key : row.held) client_.press(key);
    client_.sync();
    EXPECT_EQ(input_->keyboard().controlIsTheLeftOne(), row.isLeft);
    for (const std::uint16_t key : row.held) client_.release(key);
    client_.sync();
  }
}

TEST_F(KeyboardState, TellsTheTimeOfTheUsersLastDeed) {
  client_.tap(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return input_->lastUserTime() != 0; }));
}

}  // namespace
}  // namespace qb::test
