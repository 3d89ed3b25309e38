#include "Quillbox/activation/QuillboxApplication.h"

#include "support/ActivationFixture.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// A window of this process, with a view that listens.
class QuillboxApplicationTest : public ActivationFixture {
 protected:
  void SetUp() override {
    view = std::make_shared<ListeningView>(Rect::make(0, 0, 200, 200), "view", heard);
    view->takesKeys = true;
    window.contentView()->addSubview(view);
    window.makeFirstResponder(view.get());
  }
  void send(EventType type, std::uint16_t keyCode = 0, double deltaY = 0) {
    Event event;
    event.type = type;
    event.keyCode = keyCode;
    event.deltaY = deltaY;
    event.location = {50, 50};
    window.sendEvent(event);
  }

  BorderlessWindow window{platform.windowServer(), Rect::make(0, 0, 200, 200)};
  std::vector<std::string> heard;
  std::shared_ptr<ListeningView> view;
};

TEST_F(QuillboxApplicationTest, HandledKeyGoesNoFurther) {
  open(ActivationMethodCommandTab);
  send(EventTypeKeyDown, KeyCodeRight);
  EXPECT_EQ(selectedName(), "item1");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(QuillboxApplicationTest, DuringUserInteractionKeysGoToTheWindow) {
  open(ActivationMethodCommandTab);
  quillbox->beginUserInteraction();
  send(EventTypeKeyDown, KeyCodeRight);
  EXPECT_EQ(selectedName(), "item0");
  EXPECT_THAT(heard, ElementsAre("view: keyDown"));
}

TEST_F(QuillboxApplicationTest, ScrollGoesToTheHostView) {
  host().createTabRowAtIndex(1, TestProvider::withItems(3), true);
  open(ActivationMethodCommandTab);
  send(EventTypeScrollWheel, 0, 20);
  EXPECT_EQ(host().activeTabRow()->index(), 1U);
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(QuillboxApplicationTest, DuringUserInteractionScrollGoesToTheWindow) {
  host().createTabRowAtIndex(1, TestProvider::withItems(3), true);
  open(ActivationMethodCommandTab);
  quillbox->beginUserInteraction();
  send(EventTypeScrollWheel, 0, 20);
  EXPECT_EQ(host().activeTabRow()->index(), 0U);
  EXPECT_THAT(heard, ElementsAre("view: scrollWheel"));
}

TEST_F(QuillboxApplicationTest, PressesCancelTheDismissalAndGoOn) {
  open(ActivationMethodCommandDoubleTap);
  for (const EventType type : {EventTypeLeftMouseDown, EventTypeRightMouseDown}) {
    TappedEvent press;
    press.type = type;
    const Rect frame = row().convertRectToView(row().bounds(), nullptr);
    press.unflippedLocation = frame.center();
    press.location = platform.displays().flipped(frame.center());
    ASSERT_TRUE(appDelegate->tappedEventOccured(press));
    send(type);
    platform.runFor(0.2);
    EXPECT_TRUE(isActive());
  }
  EXPECT_THAT(heard, ElementsAre("view: mouseDown", "view: rightMouseDown"));
}

TEST_F(QuillboxApplicationTest, ReleaseAnywhereEndsAPressOnTheRowAndGoesOn) {
  open(ActivationMethodCommandTab);
  provider->item(0).setDragability(DragabilityMovesOutOfRow);
  Event press;
  press.type = EventTypeLeftMouseDown;
  EventCaptureView anyView;
  row().mouseDownInEventCaptureView(press, anyView);
  const auto pointAt = [this](std::size_t index) {
    row().mouseMovedWithinViewFromLocation({}, provider->item(index).view()->frame().center());
  };
  pointAt(2);
  EXPECT_EQ(selectedName(), "item0");
  send(EventTypeLeftMouseDown);
  send(EventTypeLeftMouseUp);
  pointAt(2);
  EXPECT_EQ(selectedName(), "item2");
  EXPECT_THAT(heard, ElementsAre("view: mouseDown", "view: mouseUp"));
}

TEST_F(QuillboxApplicationTest, OtherEventsGoOn) {
  send(EventTypeRightMouseDown);
  send(EventTypeRightMouseUp);
  EXPECT_THAT(heard, ElementsAre("view: rightMouseDown", "view: rightMouseUp"));
}

}  // namespace
}  // namespace qb::test
