#include "QuillboxCommon/views/EventCaptureView.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PlatformSimulated/RecordingCanvas.h"
#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"
#include "support/VirtualHost.h"

namespace qb::test {
namespace {

using Strings = std::vector<std::string>;

class Listener : public EventCaptureViewDelegate {
 public:
  void scrollWheelInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("scrollWheel", view);
  }
  void mouseDownInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("mouseDown", view);
  }
  void mouseUpInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("mouseUp", view);
  }
  void rightMouseDownInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("rightMouseDown", view);
  }
  void rightMouseUpInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("rightMouseUp", view);
  }
  void keyDownInEventCaptureView(const Event&, EventCaptureView& view) override {
    hear("keyDown", view);
  }
  Strings heard;
  const EventCaptureView* from = nullptr;

 private:
  void hear(const char* event, const EventCaptureView& view) {
    heard.emplace_back(event);
    from = &view;
  }
};

void sendAll(EventCaptureView& view) {
  const Event event;
  view.scrollWheel(event);
  view.mouseDown(event);
  view.mouseUp(event);
  view.rightMouseDown(event);
  view.rightMouseUp(event);
  view.keyDown(event);
}

class EventCaptureViewTest : public testing::Test {
 protected:
  EventCaptureViewTest() { view->setDelegate(&listener); }
  bool hearsMouseUp(EventCaptureView& which) {
    listener.heard.clear();
    which.mouseUp({});
    return listener.heard == Strings{"mouseUp"};
  }

  VirtualHost host;
  RunLoop loop{host};
  Listener listener;
  std::shared_ptr<EventCaptureView> view =
      std::make_shared<EventCaptureView>(Rect::make(0, 0, 10, 10));
};

TEST_F(EventCaptureViewTest, AllButKeysPassUnlessSetOtherwise) {
  EXPECT_EQ(view->eventFlags(), 31U);
  sendAll(*view);
  EXPECT_EQ(listener.heard,
            (Strings{"scrollWheel", "mouseDown", "mouseUp", "rightMouseDown", "rightMouseUp"}));
  EXPECT_EQ(listener.from, view.get());
}

TEST_F(EventCaptureViewTest, EachFlagSelectsOneEvent) {
  struct Case {
    std::uint32_t flags;
    Strings heard;
  };
  const Case cases[] = {
      {0, {}},
      {1, {"scrollWheel"}},
      {2, {"mouseDown"}},
      {4, {"mouseUp"}},
      {8, {"rightMouseDown"}},
      {16, {"rightMouseUp"}},
      {32, {"keyDown"}},
      {2 | 16, {"mouseDown", "rightMouseUp"}},
  };
  for (const Case& one : cases) {
    listener.heard.clear();
    view->setEventFlags(one.flags);
    sendAll(*view);
    EXPECT_EQ(listener.heard, one.heard) << one.flags;
  }
}

TEST_F(EventCaptureViewTest, WhatIsNotSelectedGoesNowhereElse) {
  Strings heard;
  const auto row = std::make_shared<ListeningView>(Rect::make(0, 0, 50, 50), "row", heard);
  row->addSubview(view);
  view->setEventFlags(0);
  sendAll(*view);
  view->setEventFlags(63);
  view->setDelegate(nullptr);
  sendAll(*view);
  EXPECT_EQ(heard, Strings{});
}

TEST_F(EventCaptureViewTest, ItDrawsNothingAndAsksForNoRedraw) {
  RecordingPeerFactory factory;
  Window window(factory, Rect::make(0, 0, 100, 100));
  window.contentView()->addSubview(view);
  view->setFrame(Rect::make(20, 20, 30, 30));
  EXPECT_TRUE(factory.record.dirty.empty());
  RecordingCanvas canvas(Rect::make(0, 0, 100, 100));
  view->display(canvas);
  EXPECT_TRUE(canvas.operations().empty());
}

TEST_F(EventCaptureViewTest, AReleaseJustAfterAMenuClosedIsDropped) {
  EXPECT_TRUE(hearsMouseUp(*view));
  EventCaptureView::notePopUpMenuDidClose();
  EXPECT_FALSE(hearsMouseUp(*view));
  host.advance(0.49);
  EXPECT_FALSE(hearsMouseUp(*view));
  host.advance(0.011);
  EXPECT_TRUE(hearsMouseUp(*view));
}

TEST_F(EventCaptureViewTest, TheDropHoldsForAllViewsAndForReleasesOfTheLeftButtonOnly) {
  const auto other = std::make_shared<EventCaptureView>();
  other->setDelegate(&listener);
  EventCaptureView::notePopUpMenuDidClose();
  EXPECT_FALSE(hearsMouseUp(*other));
  sendAll(*view);
  EXPECT_EQ(listener.heard,
            (Strings{"scrollWheel", "mouseDown", "rightMouseDown", "rightMouseUp"}));
}

TEST_F(EventCaptureViewTest, TheDropCountsFromTheLastMenu) {
  EventCaptureView::notePopUpMenuDidClose();
  host.advance(0.4);
  EventCaptureView::notePopUpMenuDidClose();
  host.advance(0.4);
  EXPECT_FALSE(hearsMouseUp(*view));
  host.advance(0.11);
  EXPECT_TRUE(hearsMouseUp(*view));
}

TEST_F(EventCaptureViewTest, TheDropEndsByTheClockEvenWhileTheLoopIsBusy) {
  EventCaptureView::notePopUpMenuDidClose();
  host.stall(0.6);
  EXPECT_TRUE(hearsMouseUp(*view));
}

TEST(EventCaptureViewLoopTest, TheDropDoesNotOutlastItsLoop) {
  Listener listener;
  EventCaptureView view;
  view.setDelegate(&listener);
  {
    VirtualHost host;
    RunLoop loop(host);
    EventCaptureView::notePopUpMenuDidClose();
  }
  VirtualHost host;
  RunLoop loop(host);
  view.mouseUp({});
  EXPECT_EQ(listener.heard, Strings{"mouseUp"});
}

}  // namespace
}  // namespace qb::test
