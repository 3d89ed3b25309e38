#include "ContractTest.h"
#include "Platform/Workspace.h"

namespace qb {
namespace {

class WindowsContract : public ContractTest {
 protected:
  std::unique_ptr<WindowPeer> makeWindow(ContractWindowClient& client, const Rect& frame,
                                         WindowLevelKey level = WindowLevelKeyFloating) {
    auto window = platform_.windowServer().createWindowPeer(client);
    window->setStyleMask(0);
    window->setFrame(frame);
    window->setLevel(platform_.windowServer().windowLevelForKey(level));
    return window;
  }
  ProcessSerialNumber own() { return platform_.processes().getCurrentProcess(); }
  void click(Point point) {
    desktop_->movePointer(point);
    desktop_->pressButton(0);
    desktop_->releaseButton(0);
  }

  const Rect frame_ = Rect::make(100, 150, 300, 200);
  ContractWindowClient client_;
};

TEST_F(WindowsContract, TheScreenSaverStandsAboveFloatingWindows) {
  EXPECT_GT(platform_.windowServer().windowLevelForKey(WindowLevelKeyScreenSaver),
            platform_.windowServer().windowLevelForKey(WindowLevelKeyFloating));
}

TEST_F(WindowsContract, ThisProcessIsInFrontWhileAWindowOfItsOwnIsKey) {
  const ProcessSerialNumber program = desktop_->startClient();
  const auto window = makeWindow(client_, frame_);
  EXPECT_EQ(platform_.processes().getFrontProcess(), program);
  window->makeKeyAndOrderFront();
  EXPECT_TRUE(waitForFront(own()));
  window->orderOut();
  EXPECT_TRUE(waitForFront(program));
}

TEST_F(WindowsContract, TheMenuBarStaysWithTheClientMeanwhile) {
  const ProcessSerialNumber program = desktop_->startClient();
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  const auto owner = platform_.workspace().menuBarOwningApplication();
  ASSERT_TRUE(owner);
  EXPECT_EQ(owner->processNumber(), program);
}

TEST_F(WindowsContract, AWindowThatIsOnlyOrderedFrontTakesNoKeyboard) {
  const ProcessSerialNumber program = desktop_->startClient();
  const auto window = makeWindow(client_, frame_);
  window->orderFront();
  EXPECT_TRUE(typeMarker(program));
  EXPECT_EQ(platform_.processes().getFrontProcess(), program);
  EXPECT_EQ(client_.count(EventTypeKeyDown), 0);
}

TEST_F(WindowsContract, WhoIsBroughtForwardMeanwhileIsInFrontAfterwards) {
  const ProcessSerialNumber first = desktop_->startClient();
  desktop_->startClient();
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  platform_.processes().setFrontProcess(first);
  EXPECT_EQ(platform_.processes().getFrontProcess(), own());
  window->orderOut();
  EXPECT_TRUE(waitForFront(first));
}

TEST_F(WindowsContract, KeysGoToTheKeyWindow) {
  const ProcessSerialNumber program = desktop_->startClient();
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  typeKey(KeyCodeS, {KeyCodeLeftShift});
  ASSERT_TRUE(waitUntil([&] { return client_.last(EventTypeKeyUp) != nullptr; }));
  const Event* key = client_.last(EventTypeKeyDown);
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(key->keyCode, KeyCodeS);
  EXPECT_EQ(key->flags & EventFlagShift, EventFlagShift);
  window->orderOut();
  ASSERT_TRUE(waitForFront(program));
  ASSERT_TRUE(typeMarker(program));
  EXPECT_EQ(keyDowns(program, KeyCodeS), 0);
}

TEST_F(WindowsContract, MouseEventsComeInWindowCoordinatesFromTheLowerLeft) {
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  click({frame_.x() + 30, frame_.y() + 40});
  ASSERT_TRUE(waitUntil([&] { return client_.last(EventTypeLeftMouseUp) != nullptr; }));
  ASSERT_NE(client_.last(EventTypeLeftMouseDown), nullptr);
  EXPECT_EQ(client_.last(EventTypeLeftMouseDown)->location, (Point{30, 40}));
  EXPECT_EQ(client_.last(EventTypeLeftMouseUp)->location, (Point{30, 40}));
  EXPECT_EQ(client_.last(EventTypeLeftMouseDown)->clickCount, 1);
}

TEST_F(WindowsContract, RightPressesAndScrollsComeToo) {
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  desktop_->movePointer(frame_.center());
  desktop_->pressButton(1);
  desktop_->releaseButton(1);
  desktop_->scrollUp();
  ASSERT_TRUE(waitUntil([&] { return client_.last(EventTypeScrollWheel) != nullptr; }));
  EXPECT_EQ(client_.last(EventTypeScrollWheel)->deltaY, -13);
  EXPECT_EQ(client_.count(EventTypeRightMouseDown), 1);
  EXPECT_EQ(client_.count(EventTypeRightMouseUp), 1);
}

TEST_F(WindowsContract, ADragAndItsReleaseStayWithTheWindowPressed) {
  ContractWindowClient otherClient;
  const auto window = makeWindow(client_, frame_);
  const auto other = makeWindow(otherClient, Rect::make(500, 150, 300, 200));
  other->orderFront();
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  desktop_->movePointer(frame_.center());
  desktop_->pressButton(0);
  desktop_->movePointer({600, 200});
  desktop_->releaseButton(0);
  ASSERT_TRUE(waitUntil([&] { return client_.last(EventTypeLeftMouseUp) != nullptr; }));
  EXPECT_EQ(client_.last(EventTypeLeftMouseUp)->location, (Point{500, 50}));
  EXPECT_GT(client_.count(EventTypeLeftMouseDragged), 0);
  EXPECT_EQ(otherClient.count(EventTypeLeftMouseUp), 0);
}

TEST_F(WindowsContract, TheHigherLevelIsOnTopWhateverTheOrder) {
  ContractWindowClient highClient;
  const auto high = makeWindow(highClient, frame_, WindowLevelKeyScreenSaver);
  const auto low = makeWindow(client_, frame_, WindowLevelKeyFloating);
  high->makeKeyAndOrderFront();
  low->orderFront();
  ASSERT_TRUE(waitForFront(own()));
  click(frame_.center());
  EXPECT_TRUE(waitUntil([&] { return highClient.count(EventTypeLeftMouseUp) == 1; }));
  EXPECT_EQ(client_.count(EventTypeLeftMouseDown), 0);
}

TEST_F(WindowsContract, AWindowThatWasOrderedOutGetsNoPress) {
  const ProcessSerialNumber program = desktop_->startClient();
  const Rect where = desktop_->clientWindowFrame(program);
  const auto window = makeWindow(client_, where, WindowLevelKeyScreenSaver);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  window->orderOut();
  ASSERT_TRUE(waitForFront(program));
  click(where.center());
  EXPECT_TRUE(waitUntil([&] { return desktop_->pressesReceived(program) == 1; }));
  EXPECT_EQ(client_.count(EventTypeLeftMouseDown), 0);
}

TEST_F(WindowsContract, AShownWindowCoversTheClientsWindow) {
  const ProcessSerialNumber program = desktop_->startClient();
  const Rect where = desktop_->clientWindowFrame(program);
  const auto window = makeWindow(client_, where, WindowLevelKeyScreenSaver);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  click(where.center());
  EXPECT_TRUE(waitUntil([&] { return client_.count(EventTypeLeftMouseUp) == 1; }));
  EXPECT_EQ(desktop_->pressesReceived(program), 0);
}

TEST_F(WindowsContract, WhatAWindowAsksForIsPainted) {
  const auto window = makeWindow(client_, frame_);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitForFront(own()));
  window->setNeedsDisplay(Rect::make(0, 0, frame_.width(), frame_.height()));
  ASSERT_TRUE(waitUntil([&] { return !client_.painted.empty(); }));
  client_.painted.clear();
  const Rect part = Rect::make(10, 20, 30, 40);
  window->setNeedsDisplay(part);
  ASSERT_TRUE(waitUntil([&] { return !client_.painted.empty(); }));
  EXPECT_TRUE(contains(client_.painted.front(), part));
}

}  // namespace
}  // namespace qb
