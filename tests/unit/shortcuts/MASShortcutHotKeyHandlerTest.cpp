#include "Quillbox/activation/shortcuts/MASShortcutHotKeyHandler.h"

#include <gmock/gmock.h>

#include "Quillbox/activation/Environment.h"
#include "Quillbox/activation/KeyHandler.h"
#include "support/HotKeysFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MASShortcutHotKeyHandlerTest : public HotKeysFixture {
 protected:
  MASShortcutHotKeyHandlerTest() {
    store(provider->item(0).uniqueID(), keyCodeT, EventFlagControl);
    quillbox->maintainItemHotKeys();
  }
  MASShortcutHotKeyHandler& handler() { return hotKeys().handler(); }
  const std::vector<SimulatedDialogs::ShownAlert>& alerts() {
    return platform.dialogs().shownAlerts();
  }
};

TEST_F(MASShortcutHotKeyHandlerTest, CallsTheHandlerWithTheIdentifier) {
  std::vector<std::string> called;
  hotKeys().registered().registerGlobalShortcutWithUserDefaultsKey(
      provider->item(0).uniqueID(),
      [&](const std::string& identifier) { called.push_back(identifier); });
  typeControl(keyCodeT);
  EXPECT_THAT(called, ElementsAre(provider->item(0).uniqueID()));
}

TEST_F(MASShortcutHotKeyHandlerTest, IgnoresOtherSignaturesAndUnknownIds) {
  handler().handle({{fourCharacterCode("QBb1"), 1}, false});
  handler().handle({{MASRegisteredHotKeys::signature, 0}, false});
  handler().handle({{MASRegisteredHotKeys::signature, 2}, false});
  EXPECT_THAT(itemLog(), IsEmpty());
  handler().handle({{MASRegisteredHotKeys::signature, 1}, false});
  EXPECT_THAT(itemLog(), SizeIs(1));
}

TEST_F(MASShortcutHotKeyHandlerTest, AnEntryWithoutAHandlerDoesNothing) {
  hotKeys().registered().registerGlobalShortcutWithUserDefaultsKey(provider->item(0).uniqueID(),
                                                                   nullptr);
  typeControl(keyCodeT);
  const Subscription disabled = handler().disableMASShortcutHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(MASShortcutHotKeyHandlerTest, WhileDisabledItTellsThatTheKeyIsTaken) {
  std::vector<std::int64_t> levels;
  platform.dialogs().answerAlert([&](AlertOnScreen& alert) {
    levels.push_back(appDelegate->userInteractionLevel());
    alert.pressReturn();
  });
  const Subscription disabled = handler().disableMASShortcutHotKeys();
  EXPECT_FALSE(handler().areMASShortcutHotKeysEnabled());
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), IsEmpty());
  EXPECT_EQ(platform.dialogs().numberOfBeeps(), 1);
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts().front().messageText, "Hot Key Taken");
  EXPECT_EQ(alerts().front().informativeText, "That Hot Key is already in use.");
  EXPECT_THAT(alerts().front().buttons, ElementsAre("OK"));
  EXPECT_THAT(levels, ElementsAre(1));
}

TEST_F(MASShortcutHotKeyHandlerTest, AHeldKeyIsToldOfOnce) {
  platform.dialogs().answerAlert([&](AlertOnScreen& alert) {
    keyboard().repeat(keyCodeT);
    alert.pressReturn();
  });
  const Subscription disabled = handler().disableMASShortcutHotKeys();
  hold({KeyCodeLeftControl, keyCodeT});
  keyboard().repeat(keyCodeT);
  EXPECT_THAT(alerts(), SizeIs(1));
}

TEST_F(MASShortcutHotKeyHandlerTest, DisablingNestsAndEnds) {
  Subscription outer = handler().disableMASShortcutHotKeys();
  { const Subscription inner = handler().disableMASShortcutHotKeys(); }
  EXPECT_FALSE(handler().areMASShortcutHotKeysEnabled());
  outer.cancel();
  EXPECT_TRUE(handler().areMASShortcutHotKeysEnabled());
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
}

class NotingTarget : public KeyHandlerTarget {
 public:
  void performKeyAction(const std::string& action, const PropertyList&) override {
    performed.push_back(action);
  }
  std::vector<std::string> performed;
};

TEST_F(MASShortcutHotKeyHandlerTest, ItsIdAlsoReachesAKeyHandlerOfThatKeyCode) {
  const auto target = std::make_shared<NotingTarget>();
  // The id of the hot key is 1, which is a key code, too.
  quillbox->installKeyCodeHandler(1, target, "act");
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
  EXPECT_THAT(target->performed, ElementsAre("act"));
  EXPECT_FALSE(isActive());
}

TEST_F(MASShortcutHotKeyHandlerTest, WhileARecorderListensOtherHotKeysAreLeftToIt) {
  const Subscription listens = handler().noteRecorderListens();
  EXPECT_TRUE(handler().recorderListens());
  keyboard().type(KeyCodeTab, {KeyCodeLeftOption});
  keyboard().type(KeyCodeH, {KeyCodeLeftCommand});
  platform.runPending();
  EXPECT_FALSE(isActive());
  EXPECT_FALSE(platform.processes().isHidden(editor));
}

}  // namespace
}  // namespace qb::test
