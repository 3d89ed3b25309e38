#include "Quillbox/activation/KeyHandlers.h"

#include "Quillbox/activation/Environment.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TestTarget : public KeyHandlerTarget {
 public:
  void performKeyAction(const std::string& action, const PropertyList& information) override {
    performed.push_back(
        action + (information.boolForKey(kKeyIsApplicationInvocationKey) ? " invocation" : ""));
    if (onPerform) onPerform();
  }
  std::vector<std::string> performed;
  std::function<void()> onPerform;
};

class KeyHandlersTest : public ActivationFixture {
 protected:
  static constexpr std::uint16_t key = 17;
  bool isRegistered(std::uint32_t modifiers) {
    return platform.hotKeys().isRegistered(key, modifiers);
  }
  std::shared_ptr<TestTarget> target = std::make_shared<TestTarget>();
};

TEST_F(KeyHandlersTest, HotKeyCarriesTheModifierOfTheActivationMethod) {
  const struct {
    std::int32_t method;
    std::uint32_t modifiers;
  } cases[] = {
      {ActivationMethodCommandDoubleTap, 0},
      {ActivationMethodCommandTab, 0x100},
      {ActivationMethodOptionTab, 0x800},
      {ActivationMethodCorner, 0},
  };
  for (const auto& each : cases) {
    open(each.method);
    quillbox->installKeyCodeHandler(key, target, "act");
    const auto registered = platform.hotKeys().registered();
    EXPECT_THAT(registered,
                testing::Contains(SimulatedHotKeys::Entry{key, each.modifiers, {17, 17}}));
    quillbox->removeKeyCodeHandler(key, target);
    EXPECT_FALSE(isRegistered(each.modifiers)) << each.method;
    close();
  }
}

TEST_F(KeyHandlersTest, KeyEventReachesTheHandlerAndThenTheRow) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  provider->log.clear();
  tap(key);
  EXPECT_THAT(target->performed, ElementsAre("act"));
  EXPECT_THAT(provider->log, ElementsAre("keyDown 17"));
}

TEST_F(KeyHandlersTest, HotKeyReachesTheHandlerWithoutATap) {
  removeTap();
  open(ActivationMethodOptionTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  hold({KeyCodeLeftOption, key});
  EXPECT_THAT(target->performed, ElementsAre("act"));
}

TEST_F(KeyHandlersTest, HotKeySaysWhetherThePanelWasDown) {
  removeTap();
  open(ActivationMethodOptionTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  close();
  hold({KeyCodeLeftOption, key});
  EXPECT_THAT(target->performed, ElementsAre("act invocation"));
  EXPECT_FALSE(isActive());
}

TEST_F(KeyHandlersTest, HotKeyOfCommandTabStandsStillWithoutOptionTab) {
  removeTap();
  settings().setApplicationActivatesOnOptionTab(false);
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  hold({KeyCodeLeftCommand, key});
  EXPECT_THAT(target->performed, IsEmpty());
}

TEST_F(KeyHandlersTest, EveryoneWhoWantsTheKeyIsCalled) {
  const auto other = std::make_shared<TestTarget>();
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "first");
  quillbox->installKeyCodeHandler(key, other, "second");
  quillbox->installKeyCodeHandler(key + 1, other, "another key");
  tap(key);
  EXPECT_THAT(target->performed, ElementsAre("first"));
  EXPECT_THAT(other->performed, ElementsAre("second"));
}

TEST_F(KeyHandlersTest, TargetThatHasGoneIsNotCalled) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  const std::weak_ptr<TestTarget> watch = target;
  target.reset();
  EXPECT_TRUE(watch.expired());
  tap(key);
}

TEST_F(KeyHandlersTest, TargetThatGoesGivesItsKeysBackAtOnce) {
  open(ActivationMethodCommandDoubleTap);
  quillbox->installKeyCodeHandler(key, target, "act");
  ASSERT_TRUE(isRegistered(0));
  target.reset();
  EXPECT_FALSE(isRegistered(0));
  close();
  keyboard().type(key);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(key));
}

TEST_F(KeyHandlersTest, TargetMayGoWhileItsHandlerLeaves) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  quillbox->removeKeyCodeHandler(key, target);
  target.reset();
  platform.runPending();
  EXPECT_FALSE(isRegistered(HotKeyModifierCommand));
}

TEST_F(KeyHandlersTest, WithoutATargetNoKeyIsTaken) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, nullptr, "act");
  quillbox->removeKeyCodeHandler(key, nullptr);
  EXPECT_FALSE(isRegistered(HotKeyModifierCommand));
}

TEST_F(KeyHandlersTest, RemovedHandlerLosesItsHotKeyAtOnceAndLeavesInTheNextPass) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  quillbox->removeKeyCodeHandler(key, target);
  EXPECT_FALSE(isRegistered(HotKeyModifierCommand));
  Event event;
  event.type = EventTypeKeyDown;
  event.keyCode = key;
  appDelegate->keyDown(event);
  EXPECT_THAT(target->performed, ElementsAre("act"));
  platform.runPending();
  appDelegate->keyDown(event);
  EXPECT_THAT(target->performed, ElementsAre("act"));
}

TEST_F(KeyHandlersTest, HandlerMayRemoveItself) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  target->onPerform = [this] { quillbox->removeKeyCodeHandler(key, target); };
  tap(key);
  tap(key);
  EXPECT_THAT(target->performed, ElementsAre("act"));
  target->onPerform = nullptr;
}

TEST_F(KeyHandlersTest, RemovedAndInstalledInOnePassItCanBeRemovedAgain) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, target, "act");
  quillbox->removeKeyCodeHandler(key, target);
  quillbox->installKeyCodeHandler(key, target, "act");
  quillbox->removeKeyCodeHandler(key, target);
  platform.runPending();
  tap(key);
  EXPECT_THAT(target->performed, IsEmpty());
  EXPECT_FALSE(isRegistered(HotKeyModifierCommand));
}

TEST_F(KeyHandlersTest, RemovingAnUnknownHandlerIsHarmless) {
  const auto other = std::make_shared<TestTarget>();
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(key, other, "act");
  quillbox->removeKeyCodeHandler(key, target);
  quillbox->removeKeyCodeHandler(key + 1, other);
  platform.runPending();
  tap(key);
  EXPECT_THAT(other->performed, ElementsAre("act"));
}

TEST_F(KeyHandlersTest, RefusedHotKeyLeavesTheFirstRegistrationInPlace) {
  open(ActivationMethodCommandTab);
  quillbox->installKeyCodeHandler(KeyCodeH, target, "act");
  quillbox->removeKeyCodeHandler(KeyCodeH, target);
  const auto registered = platform.hotKeys().registered();
  ASSERT_FALSE(registered.empty());
  EXPECT_THAT(registered, testing::Contains(SimulatedHotKeys::Entry{
                              KeyCodeH, 0x100, {fourCharacterCode("QB11"), 1012}}));
}

}  // namespace
}  // namespace qb::test
