#include "Quillbox/activation/shortcuts/MASShortcutView.h"

#include <gmock/gmock.h>

#include "support/HotKeysFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MASShortcutViewTest : public HotKeysFixture {
 protected:
  MASShortcutViewTest() { view.setAssociatedUserDefaultsKey("item"); }
  void press(std::uint16_t keyCode, EventFlags flags = 0) {
    view.listen();
    taken = view.keyDown(keyCode, flags);
  }
  std::optional<MASShortcut> stored() { return storage().shortcutForKey("item"); }
  std::string hint() const { return view.look().hint; }
  /// What must be told of a refused combination, which leaves everything as it is.
  void expectRefused(const std::string& reason) {
    EXPECT_TRUE(taken);
    EXPECT_EQ(hint(), reason);
    EXPECT_TRUE(view.look().warns);
    EXPECT_TRUE(view.isListening());
    EXPECT_FALSE(stored());
    EXPECT_EQ(platform.dialogs().numberOfBeeps(), 1);
  }

  MASShortcutView view{{340, 62}, *quillbox};
  bool taken = false;
};

TEST_F(MASShortcutViewTest, ItShowsWhatIsStoredForItsKey) {
  EXPECT_FALSE(view.shortcutValue());
  EXPECT_EQ(view.look(), (DialogKeyRecorder::Look{.keyCaps = {},
                                                  .text = "Click to set a hot key",
                                                  .hint = "",
                                                  .isListening = false,
                                                  .warns = false,
                                                  .canClear = false}));
  store("item", keyCodeT, EventFlagControl | EventFlagOption);
  EXPECT_EQ(view.shortcutValue(), MASShortcut(keyCodeT, EventFlagControl | EventFlagOption));
  EXPECT_EQ(view.look(), (DialogKeyRecorder::Look{.keyCaps = {"Ctrl", "Alt", "T"},
                                                  .text = "",
                                                  .hint = "Click to change",
                                                  .isListening = false,
                                                  .warns = false,
                                                  .canClear = true}));
  view.setAssociatedUserDefaultsKey("other");
  EXPECT_FALSE(view.shortcutValue());
  view.setAssociatedUserDefaultsKey("");
  EXPECT_EQ(view.associatedUserDefaultsKey(), "");
}

TEST_F(MASShortcutViewTest, EveryChangeOfTheFileThatIsPostedIsShown) {
  int changes = 0;
  view.setObserver([&] { ++changes; });
  store("item", keyCodeT, EventFlagControl);
  EXPECT_EQ(changes, 1);
  storage().removeObjectForKey("item");
  EXPECT_EQ(changes, 2);
  EXPECT_FALSE(view.shortcutValue());
}

TEST_F(MASShortcutViewTest, WhatIsPressedIsStored) {
  press(keyCodeT, EventFlagControl | EventFlagOption | EventFlagCapsLock);
  EXPECT_TRUE(taken);
  EXPECT_EQ(stored(), MASShortcut(keyCodeT, EventFlagControl | EventFlagOption));
  EXPECT_EQ(stored()->modifierFlags(), EventFlagControl | EventFlagOption);
  EXPECT_FALSE(view.isListening());
  EXPECT_THAT(view.look().keyCaps, ElementsAre("Ctrl", "Alt", "T"));
  EXPECT_EQ(platform.dialogs().numberOfBeeps(), 0);
}

TEST_F(MASShortcutViewTest, AFunctionKeyNeedsNoModifier) {
  press(keyCodeF5);
  EXPECT_EQ(stored(), MASShortcut(keyCodeF5, 0));
}

TEST_F(MASShortcutViewTest, SpaceAndEscAreTakenWithOption) {
  press(KeyCodeEscape, EventFlagOption);
  EXPECT_EQ(stored(), MASShortcut(KeyCodeEscape, EventFlagOption));
  press(KeyCodeSpace, EventFlagOption);
  EXPECT_EQ(stored(), MASShortcut(KeyCodeSpace, EventFlagOption));
}

TEST_F(MASShortcutViewTest, AKeyForTypingIsRefused) {
  press(keyCodeT);
  expectRefused("Hold Ctrl or Super with it.");
}

TEST_F(MASShortcutViewTest, ShiftOrOptionAloneIsNotEnough) {
  press(keyCodeT, EventFlagShift);
  EXPECT_EQ(hint(), "Hold Ctrl or Super with it.");
  press(keyCodeT, EventFlagOption);
  EXPECT_EQ(hint(), "Hold Ctrl or Super with it.");
  EXPECT_FALSE(stored());
}

TEST_F(MASShortcutViewTest, AKeyWithoutACodeIsRefused) {
  press(0xFF, EventFlagControl);
  expectRefused("This key cannot be used.");
}

TEST_F(MASShortcutViewTest, WhatAnotherProgramHasIsRefused) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  press(keyCodeT, EventFlagControl);
  expectRefused("Another program or the desktop uses it already.");
}

TEST_F(MASShortcutViewTest, WhatThisProgramHasIsRefused) {
  const MASShortcut own[] = {{KeyCodeH, EventFlagCommand},
                             {KeyCodeTab, EventFlagCommand},
                             {KeyCodeTab, EventFlagCommand | EventFlagShift}};
  for (const MASShortcut& shortcut : own) {
    press(shortcut.keyCode(), shortcut.modifierFlags());
    EXPECT_EQ(hint(), "Quillbox itself uses it.");
    EXPECT_FALSE(stored());
  }
  press(KeyCodeTab, EventFlagCommand | EventFlagOption);
  EXPECT_TRUE(stored());
}

TEST_F(MASShortcutViewTest, AChordThatIsSwitchedOffIsFree) {
  settings().setApplicationActivatesOnCommandTab(false);
  press(KeyCodeTab, EventFlagCommand);
  EXPECT_EQ(stored(), MASShortcut(KeyCodeTab, EventFlagCommand));
  MASShortcut::setAllowsAnyHotkeyWithOptionModifier(true);
  press(KeyCodeTab, EventFlagOption);
  EXPECT_EQ(hint(), "Quillbox itself uses it.");
  settings().setApplicationActivatesOnOptionTab(false);
  press(KeyCodeTab, EventFlagOption);
  EXPECT_EQ(stored(), MASShortcut(KeyCodeTab, EventFlagOption));
  MASShortcut::setAllowsAnyHotkeyWithOptionModifier(false);
}

TEST_F(MASShortcutViewTest, WhatIsStoredForAnotherItemIsRefused) {
  store("another", keyCodeT, EventFlagControl);
  press(keyCodeT, EventFlagControl);
  expectRefused("That Hot Key is already in use.");
}

TEST_F(MASShortcutViewTest, ItsOwnCombinationIsNoConflict) {
  store("item", keyCodeT, EventFlagControl);
  // The desktop gives it to this program already.
  quillbox->maintainItemHotKeys();
  const int writes = platform.fileSystem().numberOfWrites(hotKeysFile);
  press(keyCodeT, EventFlagControl);
  EXPECT_FALSE(view.isListening());
  EXPECT_EQ(platform.fileSystem().numberOfWrites(hotKeysFile), writes);
}

TEST_F(MASShortcutViewTest, AfterARefusalItGoesOn) {
  press(keyCodeT);
  EXPECT_TRUE(view.keyDown(keyCodeT, EventFlagControl));
  EXPECT_TRUE(stored());
  EXPECT_FALSE(view.look().warns);
  EXPECT_EQ(hint(), "Click to change");
}

TEST_F(MASShortcutViewTest, EscKeepsThings) {
  store("item", keyCodeT, EventFlagControl);
  press(KeyCodeEscape);
  EXPECT_TRUE(taken);
  EXPECT_FALSE(view.isListening());
  EXPECT_TRUE(stored());
}

TEST_F(MASShortcutViewTest, BackspaceAndDeleteClear) {
  for (const std::uint16_t keyCode : {std::uint16_t{KeyCodeDelete}, std::uint16_t{117}}) {
    store("item", keyCodeT, EventFlagControl);
    press(keyCode);
    EXPECT_TRUE(taken);
    EXPECT_FALSE(view.isListening());
    EXPECT_FALSE(stored());
    EXPECT_EQ(view.look().text, "Click to set a hot key");
  }
}

TEST_F(MASShortcutViewTest, KeysOfTheDialogAreLeftToIt) {
  const struct {
    std::uint16_t keyCode;
    EventFlags flags;
  } cases[] = {
      {KeyCodeReturn, 0}, {KeyCodeEnter, 0}, {KeyCodeTab, 0}, {KeyCodeTab, EventFlagShift}};
  for (const auto& each : cases) {
    press(each.keyCode, each.flags);
    EXPECT_FALSE(taken) << each.keyCode;
    EXPECT_FALSE(view.isListening());
  }
  EXPECT_EQ(platform.dialogs().numberOfBeeps(), 0);
}

TEST_F(MASShortcutViewTest, AFullDiskIsTold) {
  platform.fileSystem().setWritesFail(true);
  press(keyCodeT, EventFlagControl);
  EXPECT_EQ(hint(), "The hot key could not be saved.");
  EXPECT_FALSE(view.shortcutValue());
  EXPECT_FALSE(view.isListening());
  platform.fileSystem().setWritesFail(false);
  store("item", keyCodeT, EventFlagControl);
  platform.fileSystem().setWritesFail(true);
  view.clear();
  EXPECT_EQ(hint(), "The hot key could not be cleared.");
  EXPECT_TRUE(view.look().canClear);
  view.listen();
  EXPECT_EQ(hint(), "Esc keeps the hot key, Backspace clears it");
}

TEST_F(MASShortcutViewTest, WhileItListensItShowsTheHeldModifiers) {
  std::vector<std::vector<std::string>> shown;
  view.listen();
  view.setObserver([&] { shown.push_back(view.look().keyCaps); });
  EXPECT_EQ(view.look().text, "Press the keys");
  EXPECT_EQ(hint(), "Esc cancels");
  hold({KeyCodeLeftControl});
  platform.runFor(0.1);
  hold({KeyCodeRightOption});
  platform.runFor(0.1);
  keyboard().release(KeyCodeLeftControl);
  keyboard().release(KeyCodeRightOption);
  platform.runFor(0.1);
  EXPECT_THAT(shown, ElementsAre(ElementsAre("Ctrl"), ElementsAre("Ctrl", "Alt"), IsEmpty()));
  view.stopListening();
  shown.clear();
  hold({KeyCodeLeftControl});
  platform.runFor(1);
  EXPECT_THAT(shown, IsEmpty());
}

TEST_F(MASShortcutViewTest, ItListensOnceAndClaimsTheHotKeys) {
  int changes = 0;
  view.setObserver([&] { ++changes; });
  view.listen();
  view.listen();
  EXPECT_EQ(changes, 1);
  EXPECT_TRUE(hotKeys().handler().recorderListens());
  view.stopListening();
  view.stopListening();
  EXPECT_EQ(changes, 2);
  EXPECT_FALSE(hotKeys().handler().recorderListens());
}

TEST_F(MASShortcutViewTest, WithItsEndItStopsListening) {
  auto other = std::make_unique<MASShortcutView>(Size{10, 10}, *quillbox);
  other->listen();
  other.reset();
  EXPECT_FALSE(hotKeys().handler().recorderListens());
  store("item", keyCodeT, EventFlagControl);
  platform.runFor(1);
}

}  // namespace
}  // namespace qb::test
