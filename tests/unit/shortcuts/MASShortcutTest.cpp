#include "Quillbox/activation/shortcuts/MASShortcut.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "Platform/KeyCodes.h"
#include "PlatformSimulated/SimulatedPlatform.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb::test {
namespace {

using testing::ElementsAre;

constexpr std::uint16_t keyCodeT = 17, keyCodeF5 = 96;
constexpr EventFlags command = EventFlagCommand, control = EventFlagControl,
                     option = EventFlagOption, shift = EventFlagShift;

class MASShortcutTest : public testing::Test {
 protected:
  ~MASShortcutTest() override { MASShortcut::setAllowsAnyHotkeyWithOptionModifier(false); }
  std::string nameOfKey(std::uint16_t keyCode) {
    return MASShortcut(keyCode, 0).keyCodeString(platform.keyboard());
  }
  SimulatedPlatform platform;
};

TEST_F(MASShortcutTest, ModifiersAreThoseOfHotKeys) {
  const struct {
    EventFlags flags;
    std::uint32_t carbonFlags;
  } cases[] = {
      {0, 0},
      {command, 0x100},
      {shift, 0x200},
      {option, 0x800},
      {control, 0x1000},
      {command | shift | option | control, 0x1B00},
      {EventFlagCapsLock | option, 0x800},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(MASShortcut(keyCodeT, each.flags).carbonFlags(), each.carbonFlags) << each.flags;
  }
}

TEST_F(MASShortcutTest, FlagsOfTheDeviceAreDropped) {
  const MASShortcut shortcut(keyCodeT, control | EventFlagLeftControl);
  EXPECT_EQ(shortcut.modifierFlags(), control);
  EXPECT_EQ(shortcut.keyCode(), keyCodeT);
}

TEST_F(MASShortcutTest, KeyAndModifiersMakeAShortcutAndLocksDoNot) {
  EXPECT_EQ(MASShortcut(keyCodeT, control), MASShortcut(keyCodeT, control | EventFlagCapsLock));
  EXPECT_NE(MASShortcut(keyCodeT, control), MASShortcut(keyCodeT, control | shift));
  EXPECT_NE(MASShortcut(keyCodeT, control), MASShortcut(keyCodeF5, control));
}

TEST_F(MASShortcutTest, FunctionKeysAreValidWhateverTheModifiers) {
  for (const std::uint16_t keyCode : {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                      103, 111, 105, 107, 113, 106, 64, 79,  80,  90}) {
    for (const EventFlags flags : {EventFlags{0}, shift, option, command | control}) {
      EXPECT_TRUE(MASShortcut(keyCode, flags).isValid()) << keyCode << " with " << flags;
    }
  }
}

TEST_F(MASShortcutTest, OtherKeysNeedCommandOrControl) {
  const struct {
    std::uint16_t keyCode;
    EventFlags flags;
    bool valid, validWithAnyOption;
  } cases[] = {
      {keyCodeT, 0, false, false},
      {KeyCodeSpace, 0, false, false},
      {KeyCodeEscape, 0, false, false},
      {keyCodeT, EventFlagCapsLock, false, false},
      {keyCodeT, shift, false, false},
      {KeyCodeSpace, shift, false, false},
      {keyCodeT, command, true, true},
      {keyCodeT, control, true, true},
      {keyCodeT, command | shift, true, true},
      {keyCodeT, control | option, true, true},
      {keyCodeT, option, false, true},
      {keyCodeT, option | shift, false, true},
      {KeyCodeReturn, option, false, true},
      {KeyCodeSpace, option, true, true},
      {KeyCodeEscape, option, true, true},
      {KeyCodeSpace, option | shift, true, true},
  };
  for (const auto& each : cases) {
    const MASShortcut shortcut(each.keyCode, each.flags);
    MASShortcut::setAllowsAnyHotkeyWithOptionModifier(false);
    EXPECT_EQ(shortcut.isValid(), each.valid) << each.keyCode << " with " << each.flags;
    MASShortcut::setAllowsAnyHotkeyWithOptionModifier(true);
    EXPECT_EQ(shortcut.isValid(), each.validWithAnyOption) << each.keyCode << " " << each.flags;
  }
}

TEST_F(MASShortcutTest, OptionAloneIsNotEnoughAtFirst) {
  EXPECT_FALSE(MASShortcut::allowsAnyHotkeyWithOptionModifier());
}

TEST_F(MASShortcutTest, CommandWAndCommandQBypass) {
  EXPECT_TRUE(MASShortcut(KeyCodeW, command).shouldBypass());
  EXPECT_TRUE(MASShortcut(KeyCodeQ, command).shouldBypass());
  EXPECT_TRUE(MASShortcut(KeyCodeQ, command | EventFlagCapsLock).shouldBypass());
  EXPECT_FALSE(MASShortcut(KeyCodeW, command | shift).shouldBypass());
  EXPECT_FALSE(MASShortcut(KeyCodeQ, control).shouldBypass());
  EXPECT_FALSE(MASShortcut(KeyCodeW, 0).shouldBypass());
  EXPECT_FALSE(MASShortcut(KeyCodeH, command).shouldBypass());
}

TEST_F(MASShortcutTest, WhatAnotherProgramHasIsTaken) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  std::string error;
  EXPECT_TRUE(MASShortcut(keyCodeT, control).isTakenError(platform.hotKeys(), {}, &error));
  EXPECT_EQ(error, "Another program or the desktop uses it already.");
  EXPECT_TRUE(MASShortcut(keyCodeT, control).isTakenError(platform.hotKeys(), {}, nullptr));
}

TEST_F(MASShortcutTest, AnotherKeyOrOtherModifiersAreFree) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  std::string error;
  for (const MASShortcut shortcut : {MASShortcut(keyCodeT, control | shift),
                                     MASShortcut(keyCodeT, command), MASShortcut(3, control)}) {
    EXPECT_FALSE(shortcut.isTakenError(platform.hotKeys(), {}, &error));
  }
  EXPECT_EQ(error, "");
}

TEST_F(MASShortcutTest, WhatThisProgramHasForItselfIsTaken) {
  std::string error;
  const std::vector<MASShortcut> own{{KeyCodeH, command}, {KeyCodeTab, option}};
  EXPECT_TRUE(MASShortcut(KeyCodeTab, option).isTakenError(platform.hotKeys(), own, &error));
  EXPECT_EQ(error, "Quillbox itself uses it.");
  EXPECT_FALSE(MASShortcut(KeyCodeTab, control).isTakenError(platform.hotKeys(), own, nullptr));
}

TEST_F(MASShortcutTest, CommandWAndCommandQMayBeTakenFromThisProgramOnly) {
  const std::vector<MASShortcut> own{{KeyCodeW, command}, {KeyCodeQ, command}};
  EXPECT_FALSE(MASShortcut(KeyCodeW, command).isTakenError(platform.hotKeys(), own, nullptr));
  EXPECT_FALSE(MASShortcut(KeyCodeQ, command).isTakenError(platform.hotKeys(), own, nullptr));
  platform.hotKeys().setOwnedByAnotherProgram(KeyCodeQ, HotKeyModifierCommand);
  EXPECT_TRUE(MASShortcut(KeyCodeQ, command).isTakenError(platform.hotKeys(), own, nullptr));
}

TEST_F(MASShortcutTest, TheGlyphsOfTheModifiersStandInOneOrder) {
  const struct {
    EventFlags flags;
    const char* glyphs;
  } cases[] = {
      {0, ""},
      {control, "⌃"},
      {option, "⌥"},
      {shift, "⇧"},
      {command, "⌘"},
      {command | shift | option | control, "⌃⌥⇧⌘"},
      {command | shift, "⇧⌘"},
      {EventFlagCapsLock, ""},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(MASShortcut(keyCodeT, each.flags).modifierFlagsString(), each.glyphs);
  }
}

TEST_F(MASShortcutTest, KeysHaveNames) {
  const struct {
    std::uint16_t keyCode;
    const char* name;
  } cases[] = {
      {0, "A"},         {17, "T"},         {29, "0"},          {50, "`"},
      {36, "Return"},   {48, "Tab"},       {49, "Space"},      {51, "Backspace"},
      {53, "Esc"},      {57, "Caps Lock"}, {65, "Keypad ."},   {67, "Keypad *"},
      {69, "Keypad +"}, {71, "Num Lock"},  {72, "Volume Up"},  {73, "Volume Down"},
      {74, "Mute"},     {75, "Keypad /"},  {76, "Enter"},      {78, "Keypad -"},
      {81, "Keypad ="}, {82, "Keypad 0"},  {83, "Keypad 1"},   {84, "Keypad 2"},
      {85, "Keypad 3"}, {86, "Keypad 4"},  {87, "Keypad 5"},   {88, "Keypad 6"},
      {89, "Keypad 7"}, {91, "Keypad 8"},  {92, "Keypad 9"},   {95, "Keypad ,"},
      {110, "Menu"},    {114, "Insert"},   {115, "Home"},      {116, "Page Up"},
      {117, "Delete"},  {119, "End"},      {121, "Page Down"}, {123, "←"},
      {124, "→"},       {125, "↓"},        {126, "↑"},         {10, "Key 10"},
  };
  for (const auto& each : cases) EXPECT_EQ(nameOfKey(each.keyCode), each.name) << each.keyCode;
  const std::uint16_t functionKeys[] = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                        103, 111, 105, 107, 113, 106, 64, 79,  80,  90};
  for (std::size_t i = 0; i < std::size(functionKeys); ++i) {
    EXPECT_EQ(nameOfKey(functionKeys[i]), "F" + std::to_string(i + 1));
  }
}

TEST_F(MASShortcutTest, NamesFollowTheLayout) {
  platform.keyboard().setLegend(41, "Ö");
  platform.keyboard().setLegend(KeyCodeSpace, "no name of a named key");
  EXPECT_EQ(nameOfKey(41), "Ö");
  EXPECT_EQ(nameOfKey(KeyCodeSpace), "Space");
}

TEST_F(MASShortcutTest, ItsDescriptionIsGlyphsAndName) {
  const MASShortcut shortcut(keyCodeT, control | option);
  EXPECT_EQ(shortcut.description(platform.keyboard()), "⌃⌥T");
  EXPECT_EQ(MASShortcut(keyCodeF5, 0).description(platform.keyboard()), "F5");
}

TEST_F(MASShortcutTest, KeyCapsAreWordsOfThisDesktop) {
  EXPECT_THAT(
      MASShortcut(KeyCodeSpace, control | option | shift | command).keyCaps(platform.keyboard()),
      ElementsAre("Ctrl", "Alt", "Shift", "Super", "Space"));
  EXPECT_THAT(MASShortcut(keyCodeF5, 0).keyCaps(platform.keyboard()), ElementsAre("F5"));
}

TEST_F(MASShortcutTest, ItIsKeptAsAnArchive) {
  const MASShortcut shortcut(keyCodeT, control | option);
  const auto data = shortcut.archivedData(platform.archiver());
  EXPECT_EQ(platform.archiver().unarchiveObjectWithData(data),
            PropertyList::dictionary({{"keyCode", 17}, {"modifierFlags", 0xC0000}}));
  EXPECT_EQ(MASShortcut::shortcutWithData(data, platform.archiver()), shortcut);
}

TEST_F(MASShortcutTest, AnythingElseIsNoShortcut) {
  const auto isShortcut = [this](const PropertyList& archived) {
    return MASShortcut::shortcutWithData(platform.archiver().archivedDataWithRootObject(archived),
                                         platform.archiver())
        .has_value();
  };
  EXPECT_TRUE(isShortcut(PropertyList::dictionary({{"keyCode", 0}, {"modifierFlags", 0}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"keyCode", 17}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"modifierFlags", 0}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"keyCode", "17"}, {"modifierFlags", 0}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"keyCode", -1}, {"modifierFlags", 0}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"keyCode", 65536}, {"modifierFlags", 0}})));
  EXPECT_FALSE(isShortcut(PropertyList::dictionary({{"keyCode", 1}, {"modifierFlags", -1}})));
  EXPECT_FALSE(isShortcut("text"));
  const Archiver& archiver = platform.archiver();
  EXPECT_FALSE(MASShortcut::shortcutWithData(PropertyList::Data{1, 2, 3}, archiver));
  EXPECT_FALSE(MASShortcut::shortcutWithData("no data", archiver));
  EXPECT_FALSE(MASShortcut::shortcutWithData({}, archiver));
}

}  // namespace
}  // namespace qb::test
