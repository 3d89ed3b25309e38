#include "ContractTest.h"
#include "Platform/Accessibility.h"
#include "Platform/Displays.h"
#include "Platform/Keyboard.h"
#include "Platform/Pointer.h"

namespace qb {
namespace {

class KeyboardContract : public ContractTest {
 protected:
  Keyboard& keyboard() { return platform_.keyboard(); }
};

TEST_F(KeyboardContract, GetKeysTellsWhatIsDownNow) {
  EXPECT_EQ(keyboard().getKeys(), KeyMap{});
  desktop_->pressKey(KeyCodeLeftCommand);
  EXPECT_TRUE(waitUntil([&] { return keyboard().getKeys().isDown(KeyCodeLeftCommand); }));
  EXPECT_FALSE(keyboard().getKeys().isDown(KeyCodeRightCommand));
  EXPECT_FALSE(keyboard().getKeys().isDown(KeyCodeLeftOption));
  desktop_->releaseKey(KeyCodeLeftCommand);
  EXPECT_TRUE(waitUntil([&] { return keyboard().getKeys() == KeyMap{}; }));
}

TEST_F(KeyboardContract, EveryNamedKeyHasItsPlaceInTheMap) {
  // Caps Lock has a state of its own and is left out.
  for (const std::uint16_t keyCode : {KeyCodeA,
                                      KeyCodeS,
                                      KeyCodeD,
                                      KeyCodeH,
                                      KeyCodeZ,
                                      KeyCodeX,
                                      KeyCodeC,
                                      KeyCodeV,
                                      KeyCodeQ,
                                      KeyCodeW,
                                      KeyCodeO,
                                      KeyCodeReturn,
                                      KeyCodeTab,
                                      KeyCodeSpace,
                                      KeyCodeBackquote,
                                      KeyCodeDelete,
                                      KeyCodeEscape,
                                      KeyCodeLeftCommand,
                                      KeyCodeLeftShift,
                                      KeyCodeLeftOption,
                                      KeyCodeLeftControl,
                                      KeyCodeRightShift,
                                      KeyCodeRightOption,
                                      KeyCodeRightControl,
                                      KeyCodeRightCommand,
                                      KeyCodeEnter,
                                      KeyCodeLeft,
                                      KeyCodeRight,
                                      KeyCodeDown,
                                      KeyCodeUp}) {
    KeyMap expected;
    expected.set(keyCode, true);
    desktop_->pressKey(keyCode);
    EXPECT_TRUE(waitUntil([&] { return keyboard().getKeys() == expected; })) << keyCode;
    desktop_->releaseKey(keyCode);
    EXPECT_TRUE(waitUntil([&] { return keyboard().getKeys() == KeyMap{}; })) << keyCode;
  }
}

TEST_F(KeyboardContract, ModifierFlagsAreThoseOfTheKeysThatAreDown) {
  const struct {
    std::uint16_t keyCode;
    EventFlags flag;
  } cases[] = {
      {KeyCodeLeftCommand, EventFlagCommand}, {KeyCodeRightCommand, EventFlagCommand},
      {KeyCodeLeftOption, EventFlagOption},   {KeyCodeRightOption, EventFlagOption},
      {KeyCodeLeftShift, EventFlagShift},     {KeyCodeRightShift, EventFlagShift},
      {KeyCodeLeftControl, EventFlagControl}, {KeyCodeRightControl, EventFlagControl},
  };
  constexpr EventFlags all = EventFlagCommand | EventFlagOption | EventFlagShift | EventFlagControl;
  for (const auto& each : cases) {
    const std::uint16_t keyCode = each.keyCode;
    const EventFlags flag = each.flag;
    desktop_->pressKey(keyCode);
    EXPECT_TRUE(waitUntil([&] { return (keyboard().modifierFlags() & all) == flag; })) << keyCode;
    desktop_->releaseKey(keyCode);
    EXPECT_TRUE(waitUntil([&] { return (keyboard().modifierFlags() & all) == 0; })) << keyCode;
  }
}

TEST_F(KeyboardContract, PressesAndReleasesAreSignalled) {
  std::uint64_t before = keyboard().keysChanged().generation();
  const auto isSignalled = [&] { return keyboard().keysChanged().generation() != before; };
  desktop_->pressKey(KeyCodeLeftCommand);
  EXPECT_TRUE(waitUntil(isSignalled));
  before = keyboard().keysChanged().generation();
  desktop_->releaseKey(KeyCodeLeftCommand);
  EXPECT_TRUE(waitUntil(isSignalled));
}

TEST_F(KeyboardContract, LegendsAreThoseOfTheLayout) {
  const struct {
    std::uint16_t keyCode;
    const char* legend;
  } cases[] = {{KeyCodeA, "A"}, {KeyCodeQ, "Q"}, {KeyCodeBackquote, "`"},
               {29, "0"},       {41, ";"},       {44, "/"}};
  for (const auto& each : cases) {
    EXPECT_EQ(platform_.keyboard().legendOfKey(each.keyCode), each.legend);
  }
}

TEST_F(KeyboardContract, KeysWithoutACharacterHaveNoLegend) {
  for (const int keyCode : {KeyCodeSpace, KeyCodeReturn, KeyCodeTab, KeyCodeDelete, KeyCodeEscape,
                            KeyCodeLeft, KeyCodeLeftControl}) {
    EXPECT_EQ(platform_.keyboard().legendOfKey(static_cast<std::uint16_t>(keyCode)), "") << keyCode;
  }
  EXPECT_EQ(platform_.keyboard().legendOfKey(0xff), "");
}

class PointerContract : public ContractTest {};

TEST_F(PointerContract, TheLocationIsFromTheLowerLeft) {
  for (const Point point : {Point{300, 200}, Point{10, 700}, Point{0, 1}}) {
    desktop_->movePointer(point);
    EXPECT_TRUE(waitUntil([&] { return platform_.pointer().mouseLocation() == point; }))
        << point.x << ", " << point.y;
  }
}

TEST_F(PointerContract, PressedButtonsAreBits) {
  const ProcessSerialNumber client = desktop_->startClient();
  desktop_->movePointer(desktop_->clientWindowFrame(client).center());
  EXPECT_EQ(platform_.pointer().pressedMouseButtons(), 0U);
  desktop_->pressButton(0);
  EXPECT_TRUE(waitUntil([&] { return platform_.pointer().pressedMouseButtons() == 1U; }));
  desktop_->pressButton(1);
  EXPECT_TRUE(waitUntil([&] { return platform_.pointer().pressedMouseButtons() == 3U; }));
  desktop_->releaseButton(0);
  EXPECT_TRUE(waitUntil([&] { return platform_.pointer().pressedMouseButtons() == 2U; }));
  desktop_->releaseButton(1);
  EXPECT_TRUE(waitUntil([&] { return platform_.pointer().pressedMouseButtons() == 0U; }));
}

class DisplaysContract : public ContractTest {};

TEST_F(DisplaysContract, OneScreenHasTheOrigin) {
  const auto screens = platform_.displays().screens();
  ASSERT_FALSE(screens.empty());
  int atOrigin = 0;
  for (const Screen& screen : screens) {
    atOrigin += screen.frame.origin == Point{} ? 1 : 0;
    EXPECT_FALSE(screen.frame.isEmpty());
    EXPECT_TRUE(contains(screen.frame, screen.visibleFrame));
    EXPECT_GT(screen.backingScaleFactor, 0);
  }
  EXPECT_EQ(atOrigin, 1);
}

class AccessibilityContract : public ContractTest {};

TEST_F(AccessibilityContract, ATapCanBeHadExactlyWhenTheProcessIsTrusted) {
  EXPECT_EQ(platform_.eventTap().create([](const TappedEvent&) { return true; }),
            platform_.accessibility().isProcessTrusted());
}

}  // namespace
}  // namespace qb
