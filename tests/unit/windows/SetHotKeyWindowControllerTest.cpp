#include "Quillbox/windows/SetHotKeyWindowController.h"

#include <gmock/gmock.h>

#include "support/HotKeysFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SetHotKeyWindowControllerTest : public HotKeysFixture {
 protected:
  SimulatedDialogs& dialogs() { return platform.dialogs(); }
  /// Runs the dialog with a user who does this and then presses Return.
  void run(std::function<void(AlertOnScreen&)> user) {
    dialogs().answerAlert([user = std::move(user)](AlertOnScreen& alert) {
      user(alert);
      alert.pressReturn();
    });
    SetHotKeyWindowController(*quillbox, "Please define the Hot Key for Notes:", "item").runModal();
  }
};

TEST_F(SetHotKeyWindowControllerTest, ItShowsPromptAndRecorder) {
  store("item", keyCodeT, EventFlagControl);
  run([](AlertOnScreen& alert) { EXPECT_TRUE(alert.recorder().isListening()); });
  ASSERT_THAT(dialogs().shownAlerts(), SizeIs(1));
  const auto& shown = dialogs().shownAlerts().front();
  EXPECT_EQ(shown.messageText, "Set Hot Key");
  EXPECT_EQ(shown.informativeText, "Please define the Hot Key for Notes:");
  EXPECT_THAT(shown.buttons, ElementsAre("OK"));
  EXPECT_EQ(shown.iconName, "QuillboxLogo");
  EXPECT_EQ(shown.accessoryView, "key recorder 340x62 'Ctrl+T'");
  EXPECT_EQ(shown.mode, RunLoopMode::ModalPanel);
}

TEST_F(SetHotKeyWindowControllerTest, WhatIsTypedIsRecordedAndWorksOnceMaintained) {
  provider->item(0).setUniqueID("item");
  run([this](AlertOnScreen& alert) {
    typeControl(keyCodeT);
    EXPECT_THAT(alert.recorder().look().keyCaps, ElementsAre("Ctrl", "T"));
  });
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
}

TEST_F(SetHotKeyWindowControllerTest, ItIsAUserInteractionWithoutHotKeys) {
  run([this](AlertOnScreen&) {
    EXPECT_EQ(appDelegate->userInteractionLevel(), 1);
    EXPECT_FALSE(hotKeys().handler().areMASShortcutHotKeysEnabled());
  });
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
  EXPECT_TRUE(hotKeys().handler().areMASShortcutHotKeysEnabled());
  EXPECT_FALSE(hotKeys().handler().recorderListens());
}

TEST_F(SetHotKeyWindowControllerTest, AnAbortedRunEndsAllOfIt) {
  dialogs().leaveAlertUp();
  platform.schedule(0.1, [this] { dialogs().abortModal(); });
  SetHotKeyWindowController(*quillbox, "prompt", "item").runModal();
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
  EXPECT_TRUE(hotKeys().handler().areMASShortcutHotKeysEnabled());
  EXPECT_FALSE(hotKeys().handler().recorderListens());
}

TEST_F(SetHotKeyWindowControllerTest, AHotKeyOfAnotherItemIsTaken) {
  store("another", keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  dialogs().answerAlert([this](AlertOnScreen& recorder) {
    typeControl(keyCodeT);
    EXPECT_TRUE(recorder.recorder().isListening());
    EXPECT_FALSE(storage().shortcutForKey("item"));
    recorder.pressReturn();
  });
  dialogs().answerAlert("OK");
  SetHotKeyWindowController(*quillbox, "prompt", "item").runModal();
  ASSERT_THAT(dialogs().shownAlerts(), SizeIs(2));
  EXPECT_EQ(dialogs().shownAlerts().back().messageText, "Hot Key Taken");
  EXPECT_EQ(dialogs().shownAlerts().back().informativeText, "That Hot Key is already in use.");
  EXPECT_EQ(dialogs().numberOfBeeps(), 1);
  EXPECT_THAT(itemLog(), IsEmpty());
}

TEST_F(SetHotKeyWindowControllerTest, ThisProgramsOwnKeysReachTheRecorderAndAreRefused) {
  run([this](AlertOnScreen& alert) {
    const struct {
      std::uint16_t keyCode;
      std::initializer_list<std::uint16_t> modifiers;
    } cases[] = {
        {KeyCodeH, {KeyCodeLeftCommand}},
        {KeyCodeTab, {KeyCodeLeftCommand}},
        {KeyCodeTab, {KeyCodeLeftCommand, KeyCodeLeftShift}},
    };
    for (const auto& each : cases) {
      alert.recorder().stopListening();
      alert.recorder().listen();
      keyboard().type(each.keyCode, each.modifiers);
      EXPECT_EQ(alert.recorder().look().hint, "Quillbox itself uses it.");
    }
    // Alt alone is not enough for a hot key to begin with.
    keyboard().type(KeyCodeTab, {KeyCodeLeftOption});
    EXPECT_EQ(alert.recorder().look().hint, "Hold Ctrl or Super with it.");
  });
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_FALSE(platform.processes().isHidden(editor));
  EXPECT_FALSE(storage().shortcutForKey("item"));
}

TEST_F(SetHotKeyWindowControllerTest, KeysOfTheNavigationReachItOverThePanel) {
  open(ActivationMethodCommandTab);
  run([this](AlertOnScreen& alert) {
    keyboard().type(KeyCodeSpace, {KeyCodeLeftCommand});
    EXPECT_THAT(alert.recorder().look().keyCaps, ElementsAre("Super", "Space"));
  });
  EXPECT_EQ(storage().shortcutForKey("item"), MASShortcut(KeyCodeSpace, EventFlagCommand));
}

TEST_F(SetHotKeyWindowControllerTest, WhatAnotherProgramHasReachesItToo) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  run([this](AlertOnScreen& alert) {
    typeControl(keyCodeT);
    EXPECT_EQ(alert.recorder().look().hint, "Another program or the desktop uses it already.");
  });
  EXPECT_FALSE(storage().shortcutForKey("item"));
}

TEST_F(SetHotKeyWindowControllerTest, ReturnClosesItWhileItListens) {
  dialogs().answerAlert([this](AlertOnScreen&) { keyboard().type(KeyCodeReturn); });
  SetHotKeyWindowController(*quillbox, "prompt", "item").runModal();
  EXPECT_EQ(dialogs().shownAlerts().front().response, AlertFirstButtonReturn);
}

}  // namespace
}  // namespace qb::test
