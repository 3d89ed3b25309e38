#include "Quillbox/activation/EventMonitors.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TestMonitor : public EventMonitorProtocol {
 public:
  TestMonitor(std::string name, std::vector<std::string>& seen)
      : name_(std::move(name)), seen_(seen) {}

  std::vector<TapRules::Chord> claimed;
  bool claimsPresses = false;

  bool monitorKeyEvent(const TappedEvent&, EventType type, std::uint16_t keyCode,
                       EventFlags flags) override {
    seen_.push_back(name_ + (type == EventTypeKeyDown ? " down " : " up ") +
                    std::to_string(keyCode) + " " + std::to_string(flags));
    return std::any_of(claimed.begin(), claimed.end(),
                       [keyCode](const auto& chord) { return chord.keyCode == keyCode; });
  }
  bool monitorMouseEvent(const TappedEvent& event) override {
    seen_.push_back(name_ + " press " + std::to_string(event.type));
    return claimsPresses;
  }
  std::vector<TapRules::Chord> claimedChords() const override { return claimed; }

 private:
  std::string name_;
  std::vector<std::string>& seen_;
};

class EventMonitorsTest : public ActivationFixture {
 protected:
  std::shared_ptr<TestMonitor> monitor(const std::string& name) {
    return std::make_shared<TestMonitor>(name, seen);
  }
  std::vector<std::string> seen;
};

TEST_F(EventMonitorsTest, AllKeyMonitorsAreAskedWhoeverClaims) {
  const auto first = monitor("first"), second = monitor("second");
  first->claimed = {{KeyCodeReturn, 0, 0}};
  quillbox->addKeyEventMonitor(first);
  quillbox->addKeyEventMonitor(second);
  keyboard().type(KeyCodeReturn);
  EXPECT_THAT(
      seen, ElementsAre("first down 36 0", "second down 36 0", "first up 36 0", "second up 36 0"));
  EXPECT_THAT(keyboard().frontApplicationReceived(), IsEmpty());
}

TEST_F(EventMonitorsTest, UnclaimedKeysPass) {
  const auto only = monitor("only");
  only->claimed = {{KeyCodeReturn, 0, 0}};
  quillbox->addKeyEventMonitor(only);
  keyboard().type(KeyCodeS);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeS));
  quillbox->removeKeyEventMonitor(only);
  keyboard().type(KeyCodeReturn);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeS, KeyCodeReturn));
}

TEST_F(EventMonitorsTest, MouseMonitorsStopAtTheFirstClaim) {
  const auto first = monitor("first"), second = monitor("second"), third = monitor("third");
  second->claimsPresses = true;
  for (const auto& each : {first, second, third}) quillbox->addMouseEventMonitor(each);
  pointer().press();
  EXPECT_THAT(seen, ElementsAre("first press 1", "second press 1"));
  EXPECT_FALSE(platform.eventTap().answers().back().passedOn);
}

TEST_F(EventMonitorsTest, MouseMonitorsAreAskedDuringUserInteractionToo) {
  const auto only = monitor("only");
  quillbox->addMouseEventMonitor(only);
  quillbox->beginUserInteraction();
  pointer().press(1);
  EXPECT_THAT(seen, ElementsAre("only press 3"));
}

TEST_F(EventMonitorsTest, ClaimedPressDoesNotDismiss) {
  const auto only = monitor("only");
  only->claimsPresses = true;
  quillbox->addMouseEventMonitor(only);
  open(ActivationMethodCommandDoubleTap);
  pointer().moveToFlipped({720, 100});
  pointer().press();
  platform.runFor(0.2);
  EXPECT_TRUE(isActive());
}

TEST_F(EventMonitorsTest, AddingAgainMovesToTheEndAndNeverHoldsTwice) {
  const auto first = monitor("first"), second = monitor("second");
  quillbox->addMouseEventMonitor(first);
  quillbox->addMouseEventMonitor(second);
  quillbox->addMouseEventMonitor(first);
  pointer().press();
  EXPECT_THAT(seen, ElementsAre("second press 1", "first press 1"));
}

TEST_F(EventMonitorsTest, MonitorsAreNotKeptAlive) {
  auto gone = monitor("gone");
  quillbox->addMouseEventMonitor(gone);
  quillbox->addKeyEventMonitor(gone);
  gone.reset();
  pointer().press();
  keyboard().press(KeyCodeS);
  EXPECT_THAT(seen, IsEmpty());
}

TEST_F(EventMonitorsTest, ClaimsOfAMonitorThatHasGoneEndWithTheNextKey) {
  const TapRules before = platform.eventTap().rules();
  auto gone = monitor("gone");
  gone->claimed = {{KeyCodeReturn, 0, 0}};
  quillbox->addKeyEventMonitor(gone);
  EXPECT_NE(platform.eventTap().rules(), before);
  gone.reset();
  keyboard().type(KeyCodeS);
  EXPECT_EQ(platform.eventTap().rules(), before);
  keyboard().type(KeyCodeReturn);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeS, KeyCodeReturn));
}

TEST_F(EventMonitorsTest, RemovedOnesAndNullAreIgnored) {
  const auto only = monitor("only");
  quillbox->addMouseEventMonitor(nullptr);
  quillbox->addKeyEventMonitor(nullptr);
  quillbox->addMouseEventMonitor(only);
  quillbox->removeMouseEventMonitor(only);
  quillbox->removeMouseEventMonitor(only);
  pointer().press();
  keyboard().press(KeyCodeS);
  EXPECT_THAT(seen, IsEmpty());
}

TEST_F(EventMonitorsTest, KeyMonitorsSeeTabBeforeItIsTaken) {
  const auto only = monitor("only");
  quillbox->addKeyEventMonitor(only);
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_THAT(seen, ElementsAre("only down 48 1048576"));
  EXPECT_TRUE(isActive());
}

}  // namespace
}  // namespace qb::test
