#include <gtest/gtest.h>

#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using Strings = std::vector<std::string>;

TEST(WindowPeerTest, ThePeerStartsWithTheWindowsState) {
  RecordingPeerFactory factory;
  Window window(factory, Rect::make(1, 2, 300, 400));
  EXPECT_EQ(
      factory.record.calls,
      (Strings{"setFrame 1 2 300 400", "setLevel 0", "setCollectionBehavior 0", "setStyleMask 1",
               "setHasShadow 1", "setOpaque 1", "setBackgroundColor 1 1 1 1"}));
}

TEST(WindowPeerTest, ThePeerHearsOfChangesOnly) {
  RecordingPeerFactory factory;
  Window window(factory, Rect::make(1, 2, 300, 400));
  factory.record.calls.clear();
  for (int twice = 0; twice < 2; ++twice) {
    window.setFrame(Rect::make(0, 0, 30, 40));
    window.setLevel(25);
    window.setCollectionBehavior(17);
    window.setStyleMask(0);
    window.setHasShadow(false);
    window.setOpaque(false);
    window.setBackgroundColor(Color::clear());
    window.setBackgroundBlurRadius(20);
  }
  window.setTitle("Panel");
  EXPECT_EQ(
      factory.record.calls,
      (Strings{"setFrame 0 0 30 40", "setLevel 25", "setCollectionBehavior 17", "setStyleMask 0",
               "setHasShadow 0", "setOpaque 0", "setBackgroundColor 0 0 0 0",
               "setBackgroundBlurRadius 20", "setTitle Panel"}));
}

TEST(WindowPeerTest, TheContentViewFollowsTheWindowsSize) {
  RecordingPeerFactory factory;
  Window window(factory, Rect::make(10, 20, 300, 400));
  EXPECT_EQ(window.contentView()->frame(), Rect::make(0, 0, 300, 400));
  EXPECT_FALSE(window.contentView()->isFlipped());
  EXPECT_EQ(window.contentView()->window(), &window);
  window.setFrame(Rect::make(50, 60, 70, 80));
  EXPECT_EQ(window.contentView()->frame(), Rect::make(0, 0, 70, 80));
  factory.record.dirty.clear();
  window.setFrame(Rect::make(0, 0, 70, 80));
  EXPECT_TRUE(factory.record.dirty.empty()) << "a mere move repaints nothing";
}

class KeyWindowTest : public testing::Test {
 protected:
  RecordingPeerFactory factory;
};

TEST_F(KeyWindowTest, AWindowThatCanBecomesKey) {
  Window window(factory, {});
  factory.record.calls.clear();
  window.makeKeyAndOrderFront();
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(window.isKeyWindow());
  EXPECT_EQ(factory.record.calls, Strings{"makeKeyAndOrderFront"});
}

TEST_F(KeyWindowTest, AWindowWithoutTitleIsShownButNotKey) {
  Window window(factory, {});
  window.setStyleMask(0);
  factory.record.calls.clear();
  window.makeKeyAndOrderFront();
  EXPECT_TRUE(window.isVisible());
  EXPECT_FALSE(window.isKeyWindow());
  EXPECT_FALSE(window.canBecomeMainWindow());
  EXPECT_EQ(factory.record.calls, Strings{"orderFront"});
}

TEST_F(KeyWindowTest, ABorderlessWindowBecomesKeyAllTheSame) {
  BorderlessWindow window(factory, {});
  EXPECT_EQ(window.styleMask(), 0U);
  EXPECT_TRUE(window.canBecomeMainWindow());
  window.makeKeyAndOrderFront();
  EXPECT_TRUE(window.isKeyWindow());
}

TEST_F(KeyWindowTest, OrderingFrontDoesNotMakeKey) {
  Window window(factory, {});
  window.orderFront();
  EXPECT_TRUE(window.isVisible());
  EXPECT_FALSE(window.isKeyWindow());
}

TEST_F(KeyWindowTest, OrderingOutEndsBothAndIsSentOnce) {
  Window window(factory, {});
  window.makeKeyAndOrderFront();
  factory.record.calls.clear();
  window.orderOut();
  window.orderOut();
  EXPECT_FALSE(window.isVisible());
  EXPECT_FALSE(window.isKeyWindow());
  EXPECT_EQ(factory.record.calls, Strings{"orderOut"});
}

TEST_F(KeyWindowTest, TheWindowThatWasKeyBeforeIsKeyAgain) {
  Window panel(factory, {});
  panel.makeKeyAndOrderFront();
  {
    Window dialog(factory, {});
    dialog.makeKeyAndOrderFront();
    EXPECT_FALSE(panel.isKeyWindow());
    dialog.orderOut();
    EXPECT_TRUE(panel.isKeyWindow());
    dialog.makeKeyAndOrderFront();
    EXPECT_FALSE(panel.isKeyWindow());
  }
  EXPECT_TRUE(panel.isKeyWindow());
}

class WindowEventTest : public testing::Test {
 protected:
  WindowEventTest() {
    window->contentView()->addSubview(left);
    window->contentView()->addSubview(right);
  }
  ~WindowEventTest() override { Window::setEventFilter({}); }

  std::shared_ptr<ListeningView> listening(const Rect& frame, const char* name) {
    return std::make_shared<ListeningView>(frame, name, heard);
  }
  void send(EventType type, Point location = {}) {
    Event event;
    event.type = type;
    event.location = location;
    window->deliver(event);
  }
  void destroyWindow() {
    left.reset();
    right.reset();
    window.reset();
  }

  Strings heard;
  RecordingPeerFactory factory;
  std::unique_ptr<Window> window = std::make_unique<Window>(factory, Rect::make(0, 0, 100, 100));
  std::shared_ptr<ListeningView> left = listening(Rect::make(0, 0, 50, 100), "left");
  std::shared_ptr<ListeningView> right = listening(Rect::make(50, 0, 50, 100), "right");
  const Point onLeft{10, 10}, onRight{60, 10}, outside{500, 500};
};

TEST_F(WindowEventTest, PressesAndScrollsGoToTheViewUnderThePointer) {
  send(EventTypeLeftMouseDown, onLeft);
  send(EventTypeRightMouseDown, onRight);
  send(EventTypeScrollWheel, onRight);
  send(EventTypeScrollWheel, outside);
  EXPECT_EQ(heard, (Strings{"left: mouseDown", "right: rightMouseDown", "right: scrollWheel"}));
}

TEST_F(WindowEventTest, DragsAndTheReleaseGoWhereThePressWentEvenOutside) {
  send(EventTypeLeftMouseDown, onLeft);
  send(EventTypeLeftMouseDragged, onRight);
  send(EventTypeLeftMouseUp, outside);
  EXPECT_EQ(heard, (Strings{"left: mouseDown", "left: mouseDragged", "left: mouseUp"}));
}

TEST_F(WindowEventTest, TheTwoButtonsAreFollowedApart) {
  send(EventTypeLeftMouseDown, onLeft);
  send(EventTypeRightMouseDown, onRight);
  send(EventTypeLeftMouseUp, onRight);
  send(EventTypeRightMouseUp, onLeft);
  EXPECT_EQ(heard, (Strings{"left: mouseDown", "right: rightMouseDown", "left: mouseUp",
                            "right: rightMouseUp"}));
}

TEST_F(WindowEventTest, AReleaseOrDragWithoutAPressGoesNowhere) {
  send(EventTypeLeftMouseDown, onLeft);
  send(EventTypeLeftMouseUp, onLeft);
  heard.clear();
  send(EventTypeLeftMouseUp, onLeft);
  send(EventTypeLeftMouseDragged, onLeft);
  send(EventTypeRightMouseUp, onLeft);
  EXPECT_EQ(heard, Strings{});
}

TEST_F(WindowEventTest, AReleaseAfterTheWindowWasOutGoesNowhere) {
  window->orderFront();
  send(EventTypeLeftMouseDown, onLeft);
  window->orderOut();
  window->orderFront();
  heard.clear();
  send(EventTypeLeftMouseUp, onLeft);
  EXPECT_EQ(heard, Strings{});
}

TEST_F(WindowEventTest, AReleaseForAViewThatLeftGoesNowhere) {
  const auto inner = listening(Rect::make(0, 0, 50, 50), "inner");
  left->addSubview(inner);
  send(EventTypeLeftMouseDown, onLeft);
  left->removeFromSuperview();
  heard.clear();
  send(EventTypeLeftMouseUp, onLeft);
  EXPECT_EQ(heard, Strings{});
}

TEST_F(WindowEventTest, WhatAViewDoesNotTakeItsSuperviewGets) {
  left->addSubview(makeView(Rect::make(0, 0, 50, 50)));
  send(EventTypeLeftMouseDown, onLeft);
  send(EventTypeLeftMouseDragged, onLeft);
  send(EventTypeLeftMouseUp, onLeft);
  send(EventTypeRightMouseDown, onLeft);
  send(EventTypeRightMouseUp, onLeft);
  send(EventTypeScrollWheel, onLeft);
  EXPECT_EQ(heard, (Strings{"left: mouseDown", "left: mouseDragged", "left: mouseUp",
                            "left: rightMouseDown", "left: rightMouseUp", "left: scrollWheel"}));
}

TEST_F(WindowEventTest, KeysGoToTheFirstResponderAndUpFromThere) {
  const auto inner = makeView(Rect::make(0, 0, 10, 10));
  left->addSubview(inner);
  EXPECT_FALSE(window->makeFirstResponder(inner.get())) << "it declines";
  EXPECT_FALSE(window->makeFirstResponder(left.get()));
  send(EventTypeKeyDown, onLeft);
  EXPECT_EQ(heard, Strings{}) << "no first responder: the content view, which does nothing";

  left->takesKeys = true;
  EXPECT_TRUE(window->makeFirstResponder(left.get()));
  EXPECT_EQ(window->firstResponder(), left.get());
  send(EventTypeKeyDown, onRight);
  EXPECT_EQ(heard, Strings{"left: keyDown"});

  EXPECT_TRUE(window->makeFirstResponder(nullptr));
  EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(WindowEventTest, AStrangeViewIsNoFirstResponder) {
  const auto stranger = listening({}, "stranger");
  stranger->takesKeys = true;
  EXPECT_FALSE(window->makeFirstResponder(stranger.get()));
}

TEST_F(WindowEventTest, AFirstResponderThatLeavesIsNoneAnyMore) {
  const auto inner = listening(Rect::make(0, 0, 10, 10), "inner");
  inner->takesKeys = true;
  left->addSubview(inner);
  ASSERT_TRUE(window->makeFirstResponder(inner.get()));
  right->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), inner.get());
  left->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), nullptr);
}

TEST_F(WindowEventTest, TheFilterSeesEachEventFirstAndCanKeepIt) {
  std::vector<EventType> seen;
  bool passes = false;
  Window::setEventFilter([&](Window& which, const Event& event) {
    EXPECT_EQ(&which, window.get());
    seen.push_back(event.type);
    return passes;
  });
  send(EventTypeScrollWheel, onLeft);
  send(EventTypeFlagsChanged);
  EXPECT_EQ(heard, Strings{});
  passes = true;
  send(EventTypeScrollWheel, onLeft);
  EXPECT_EQ(heard, Strings{"left: scrollWheel"});
  EXPECT_EQ(seen, (std::vector<EventType>{EventTypeScrollWheel, EventTypeFlagsChanged,
                                          EventTypeScrollWheel}));
  Window::setEventFilter({});
  send(EventTypeScrollWheel, onLeft);
  EXPECT_EQ(seen.size(), 3U);
  EXPECT_EQ(heard.size(), 2U);
}

TEST_F(WindowEventTest, TheFilterMayReplaceItself) {
  Window::setEventFilter([](Window&, const Event&) {
    Window::setEventFilter({});
    return false;
  });
  send(EventTypeScrollWheel, onLeft);
  send(EventTypeScrollWheel, onLeft);
  EXPECT_EQ(heard, Strings{"left: scrollWheel"});
}

TEST_F(WindowEventTest, AKeptPressOrReleaseEndsThePressBefore) {
  for (const EventType kept : {EventTypeLeftMouseDown, EventTypeLeftMouseUp}) {
    send(EventTypeLeftMouseDown, onLeft);
    Window::setEventFilter([](Window&, const Event&) { return false; });
    send(kept, onRight);
    Window::setEventFilter({});
    heard.clear();
    send(EventTypeLeftMouseUp, onLeft);
    EXPECT_EQ(heard, Strings{});
  }
}

TEST_F(WindowEventTest, AViewMayRemoveItselfWhileItHandlesAnEvent) {
  std::weak_ptr<View> watched = left;
  ListeningView& view = *left;
  view.onEvent = [&view, this] {
    left.reset();
    view.removeFromSuperview();
  };
  send(EventTypeLeftMouseDown, onLeft);
  EXPECT_TRUE(watched.expired());
  send(EventTypeLeftMouseUp, onLeft);
  EXPECT_EQ(heard, Strings{"left: mouseDown"});
}

TEST_F(WindowEventTest, ASuperviewMayRemoveItselfWhileItHandlesAnEvent) {
  left->addSubview(makeView(Rect::make(0, 0, 50, 50)));
  ListeningView& view = *left;
  view.onEvent = [&view, this] {
    left.reset();
    view.removeFromSuperview();
  };
  send(EventTypeScrollWheel, onLeft);
  EXPECT_EQ(heard, Strings{"left: scrollWheel"});
}

TEST_F(WindowEventTest, TheWindowMayGoWhileAViewHandlesAnEvent) {
  left->onEvent = [this] { destroyWindow(); };
  send(EventTypeLeftMouseDown, onLeft);
  EXPECT_EQ(heard, Strings{"left: mouseDown"});
  EXPECT_EQ(window, nullptr);
}

TEST_F(WindowEventTest, TheWindowMayGoWhileTheFilterLooks) {
  for (const bool passes : {true, false}) {
    window = std::make_unique<Window>(factory, Rect::make(0, 0, 100, 100));
    Window::setEventFilter([this, passes](Window&, const Event&) {
      destroyWindow();
      return passes;
    });
    send(EventTypeLeftMouseDown, onLeft);
    EXPECT_EQ(window, nullptr);
  }
}

}  // namespace
}  // namespace qb::test
