#include "Quillbox/rows/DragButton.h"

#include "support/QuillboxFixture.h"
#include "support/TestEvents.h"

namespace qb::test {
namespace {

class DragButtonTest : public QuillboxFixture, public DragButtonTarget {
 protected:
  void mouseDownInButton(const Event& event) override { presses.push_back(event); }
  void mouseUpForButton(const Event& event) override { releases.push_back(event); }

  std::vector<Event> presses, releases;
  const Event press = mouseEvent(EventTypeLeftMouseDown, {3, 4});
  const Event release = mouseEvent(EventTypeLeftMouseUp, {5, 6});
  std::shared_ptr<DragButton> button = std::make_shared<DragButton>(Image(), Size{24, 24}, *this);
};

TEST_F(DragButtonTest, TellsItsTargetOfThePressAndTheRelease) {
  platform.pointer().press();
  button->mouseDown(press);
  EXPECT_TRUE(button->isPressed());
  EXPECT_EQ(presses, (std::vector<Event>{press}));
  EXPECT_TRUE(releases.empty());
  button->mouseUp(release);
  EXPECT_FALSE(button->isPressed());
  EXPECT_EQ(releases, (std::vector<Event>{release}));
  platform.pointer().release();
  platform.runFor(1);
  EXPECT_EQ(releases.size(), 1U);
}

TEST_F(DragButtonTest, ItStaysPressedWhereverThePointerGoes) {
  platform.pointer().press();
  button->mouseDown(press);
  button->mouseDragged(mouseEvent(EventTypeLeftMouseDragged, {900, 900}));
  platform.runFor(5);
  EXPECT_TRUE(button->isPressed());
  EXPECT_TRUE(releases.empty());
}

TEST_F(DragButtonTest, ALostReleaseIsFoundOutWithinATenthOfASecond) {
  platform.pointer().press();
  button->mouseDown(press);
  platform.runFor(0.25);
  platform.pointer().release();
  platform.runFor(0.04);
  EXPECT_TRUE(releases.empty());
  platform.runFor(0.02);
  // It stands for the release, but the event is that of the press.
  EXPECT_EQ(releases, (std::vector<Event>{press}));
  EXPECT_FALSE(button->isPressed());
  platform.runFor(1);
  EXPECT_EQ(releases.size(), 1U);
}

TEST_F(DragButtonTest, AButtonThatGoesWatchesNoMore) {
  platform.pointer().press();
  button->mouseDown(press);
  button.reset();
  platform.pointer().release();
  platform.runFor(1);
  EXPECT_TRUE(releases.empty());
}

}  // namespace
}  // namespace qb::test
