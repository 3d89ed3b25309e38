#include <vector>

#include "ContractTest.h"
#include "Platform/Displays.h"

namespace qb {
namespace {

constexpr EventFlags keyFlags =
    EventFlagCommand | EventFlagOption | EventFlagShift | EventFlagControl;

class EventTapContract : public ContractTest {
 protected:
  EventTap& tap() { return platform_.eventTap(); }

  void serve() {
    for (const RunLoopMode mode :
         {RunLoopMode::Default, RunLoopMode::EventTracking, RunLoopMode::Graphics,
          RunLoopMode::ModalPanel, RunLoopMode::EventOnly}) {
      tap().addToRunLoop(mode);
    }
  }
  /// A tap that answers keys by `rules` and all else by `mouseAnswer`, and writes down what it saw.
  void createTap(const TapRules& rules, bool mouseAnswer = true) {
    rules_ = rules;
    ASSERT_TRUE(tap().create([this, mouseAnswer](const TappedEvent& event) {
      seen_.push_back(event);
      const bool isKey = event.type == EventTypeKeyDown || event.type == EventTypeKeyUp;
      return isKey ? !rules_.swallows(event.type, event.keyCode, event.flags) : mouseAnswer;
    }));
    serve();
    tap().setRules(rules_);
  }
  void setRules(const TapRules& rules) {
    rules_ = rules;
    tap().setRules(rules);
  }
  int count(EventType type, std::uint16_t keyCode = 0) const {
    int number = 0;
    for (const TappedEvent& event : seen_) {
      number += event.type == type && event.keyCode == keyCode ? 1 : 0;
    }
    return number;
  }

  const TapRules optionTab_{{{KeyCodeTab, EventFlagOption, EventFlagCommand | EventFlagControl}},
                            false};
  TapRules rules_;
  std::vector<TappedEvent> seen_;
};

TEST_F(EventTapContract, CreationEnablesAndReleaseEnds) {
  EXPECT_FALSE(tap().exists());
  EXPECT_FALSE(tap().isEnabled());
  createTap({});
  EXPECT_TRUE(tap().exists());
  EXPECT_TRUE(tap().isEnabled());
  tap().enable(false);
  EXPECT_FALSE(tap().isEnabled());
  tap().enable(true);
  EXPECT_TRUE(tap().isEnabled());
  tap().release();
  EXPECT_FALSE(tap().exists());
  EXPECT_FALSE(tap().isEnabled());
  tap().release();
  EXPECT_FALSE(tap().exists());
}

TEST_F(EventTapContract, TheSourceStandsInTheModesItWasAddedTo) {
  createTap({});
  EXPECT_TRUE(tap().runLoopContains(RunLoopMode::EventTracking));
  tap().removeFromRunLoop(RunLoopMode::EventTracking);
  EXPECT_FALSE(tap().runLoopContains(RunLoopMode::EventTracking));
  EXPECT_TRUE(tap().runLoopContains(RunLoopMode::Default));
}

TEST_F(EventTapContract, KeysOutsideTheRulesAreSeenAndReachTheClient) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  typeKey(KeyCodeTab);
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(waitUntil([&] { return count(EventTypeKeyUp, markerKey) == 1; }));
  EXPECT_EQ(count(EventTypeKeyDown, KeyCodeTab), 1);
  EXPECT_EQ(count(EventTypeKeyUp, KeyCodeTab), 1);
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyDowns, 1);
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyUps, 1);
}

TEST_F(EventTapContract, AChordIsSeenAndDoesNotReachTheClient) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(waitUntil([&] { return count(EventTypeKeyUp, markerKey) == 1; }));
  EXPECT_EQ(count(EventTypeKeyDown, KeyCodeTab), 1);
  EXPECT_EQ(count(EventTypeKeyUp, KeyCodeTab), 1);
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyDowns, 0);
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyUps, 0);
  EXPECT_EQ(seen_.front().flags & keyFlags, EventFlagOption);
}

TEST_F(EventTapContract, AForbiddenModifierLetsAChordPass) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  typeKey(KeyCodeTab, {KeyCodeLeftOption, KeyCodeLeftControl});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
}

TEST_F(EventTapContract, AModifierThatIsNeitherRequiredNorForbiddenDoesNotMatter) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  typeKey(KeyCodeTab, {KeyCodeLeftOption, KeyCodeLeftShift});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 0);
}

TEST_F(EventTapContract, RulesReplaceEachOther) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  setRules({});
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
  setRules(optionTab_);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
}

TEST_F(EventTapContract, EveryKeyDownKeepsTheKeyboardFromTheClientUntilTheRulesSayOtherwise) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap({{}, true});
  typeKey(KeyCodeA);
  typeKey(KeyCodeTab, {KeyCodeLeftCommand});
  EXPECT_TRUE(waitUntil([&] { return count(EventTypeKeyUp, KeyCodeTab) == 1; }));
  EXPECT_EQ(count(EventTypeKeyDown, KeyCodeA), 1);
  setRules({});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeA), 0);
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 0);
}

TEST_F(EventTapContract, ADisabledTapSeesAndTakesNothing) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  tap().enable(false);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
  EXPECT_TRUE(seen_.empty());
}

TEST_F(EventTapContract, AReleasedTapTakesNothing) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  tap().release();
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
  EXPECT_TRUE(seen_.empty());
}

TEST_F(EventTapContract, ASecondCreationReplacesTheFirstAndItsRules) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap(optionTab_);
  int seenBySecond = 0;
  ASSERT_TRUE(tap().create([&](const TappedEvent&) {
    ++seenBySecond;
    return true;
  }));
  serve();
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(waitUntil([&] { return seenBySecond == 4; }));
  EXPECT_TRUE(seen_.empty());
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
}

TEST_F(EventTapContract, AMouseDownIsSeenFromBothOriginsAndReachesTheClientWhateverTheAnswer) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap({}, false);
  const Point point = desktop_->clientWindowFrame(client).center();
  desktop_->movePointer(point);
  desktop_->pressButton(0);
  desktop_->releaseButton(0);
  EXPECT_TRUE(waitUntil([&] { return desktop_->pressesReceived(client) == 1; }));
  ASSERT_TRUE(waitUntil([&] { return count(EventTypeLeftMouseDown) == 1; }));
  EXPECT_EQ(seen_.size(), 1U) << "releases and moves do not pass the tap";
  EXPECT_EQ(seen_.front().unflippedLocation, point);
  const double height = platform_.displays().screens().front().frame.height();
  EXPECT_EQ(seen_.front().location, (Point{point.x, height - point.y}));
}

TEST_F(EventTapContract, ScrollsAndRightPressesAreSeen) {
  const ProcessSerialNumber client = desktop_->startClient();
  createTap({});
  desktop_->movePointer(desktop_->clientWindowFrame(client).center());
  desktop_->scrollUp();
  desktop_->pressButton(1);
  desktop_->releaseButton(1);
  EXPECT_TRUE(waitUntil(
      [&] { return count(EventTypeScrollWheel) > 0 && count(EventTypeRightMouseDown) == 1; }));
}

TEST_F(EventTapContract, APressThatIsAnsweredNotToPassIsKeptFromAnOwnWindow) {
  createTap({}, false);
  ContractWindowClient windowClient;
  const auto window = platform_.windowServer().createWindowPeer(windowClient);
  window->setFrame(Rect::make(100, 100, 300, 200));
  window->setLevel(platform_.windowServer().windowLevelForKey(WindowLevelKeyScreenSaver));
  window->makeKeyAndOrderFront();
  desktop_->movePointer({150, 150});
  ASSERT_TRUE(waitForFront(platform_.processes().getCurrentProcess()));
  desktop_->pressButton(0);
  desktop_->releaseButton(0);
  ASSERT_TRUE(waitUntil([&] { return count(EventTypeLeftMouseDown) == 1; }));
  typeKey(markerKey);
  ASSERT_TRUE(waitUntil([&] { return windowClient.count(EventTypeKeyUp) == 1; }));
  EXPECT_EQ(windowClient.count(EventTypeLeftMouseDown), 0);
}

TEST_F(EventTapContract, TheGlobalMonitorSeesKeyDownsTakenOrNotButNoModifiers) {
  const ProcessSerialNumber client = desktop_->startClient();
  int keyDownsSeen = 0;
  Subscription monitor = tap().addGlobalKeyDownMonitor([&] { ++keyDownsSeen; });
  createTap(optionTab_);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  typeKey(KeyCodeA, {KeyCodeLeftShift});
  EXPECT_TRUE(waitUntil([&] { return keyDownsSeen >= 2; }));
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(waitUntil([&] { return keyDownsSeen >= 3; }));
  EXPECT_EQ(keyDownsSeen, 3);
  monitor.cancel();
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDownsSeen, 3);
}

TEST_F(EventTapContract, TheGlobalMonitorNeedsNoTap) {
  desktop_->startClient();
  int keyDownsSeen = 0;
  const Subscription monitor = tap().addGlobalKeyDownMonitor([&] { ++keyDownsSeen; });
  typeKey(KeyCodeA);
  EXPECT_TRUE(waitUntil([&] { return keyDownsSeen == 1; }));
}

}  // namespace
}  // namespace qb
