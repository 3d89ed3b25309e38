#include "InputDesk.h"

namespace qb::test {
namespace {

using ::testing::IsEmpty;

class PointerState : public InputDesk {
 protected:
  /// Under the desktop's bare ground.
  static constexpr int x = 700, y = 40;

  bool tapHas(EventType type) {
    return waitFor([&] { return !input_.tapped.empty() && input_.tapped.back().type == type; });
  }
};

TEST_F(PointerState, IsMeasuredInPointsFromTheLowerLeftOfThePrimaryDisplay) {
  client_.movePointer(x, y);
  client_.sync();
  EXPECT_EQ(input_->pointer().mouseLocation(), (Point{700, 560}));
  input_.space = {Rect::make(100, 20, 600, 400), 2};
  EXPECT_EQ(input_->pointer().mouseLocation(), (Point{300, 190}));
}

TEST_F(PointerState, TellsTheButtonsThatAreDown) {
  const struct {
    std::uint8_t button;
    std::uint32_t bits;
  } table[] = {{1, 1}, {3, 2}, {2, 4}};
  client_.movePointer(x, y);
  for (const auto& row : table) {
    client_.button(row.button, true);
    client_.sync();
    EXPECT_EQ(input_->pointer().pressedMouseButtons(), row.bits);
    client_.button(row.button, false);
    client_.sync();
    EXPECT_EQ(input_->pointer().pressedMouseButtons(), 0u);
  }
}

TEST_F(PointerState, PressesAndWheelComeToTheTapWithTheirPlace) {
  input_.createTap({});
  input_.space = {Rect::make(0, 0, 800, 600), 2};
  client_.movePointer(x, y);
  const struct {
    std::uint8_t button;
    EventType type;
  } table[] = {{1, EventTypeLeftMouseDown}, {3, EventTypeRightMouseDown},
               {4, EventTypeScrollWheel},   {5, EventTypeScrollWheel},
               {6, EventTypeScrollWheel},   {7, EventTypeScrollWheel}};
  for (const auto& row : table) {
    input_.tapped.clear();
    client_.button(row.button, true);
    client_.button(row.button, false);
    ASSERT_TRUE(tapHas(row.type)) << int{row.button};
    ASSERT_EQ(input_.tapped.size(), 1u);
    EXPECT_EQ(input_.tapped[0].location, (Point{350, 20}));
    EXPECT_EQ(input_.tapped[0].unflippedLocation, (Point{350, 280}));
  }
}

TEST_F(PointerState, OtherButtonsAreNotTapped) {
  input_.createTap({});
  client_.movePointer(x, y);
  client_.button(2, true);
  client_.button(2, false);
  typeProbe();
  EXPECT_THAT(input_.tapped, IsEmpty());
}

TEST_F(PointerState, PressesOnOwnWindowsComeFromTheWindowsSide) {
  input_.createTap({});
  XClient panel(server_.display());
  panel.openBypassWindow(x - 10, y - 10, 20, 20);
  input_.ownWindows.push_back(panel.window());
  client_.movePointer(x, y);
  client_.button(1, true);
  client_.button(1, false);
  ASSERT_TRUE(waitFor([&] { return input_.windowsAskedFor == 1; }));
  client_.movePointer(x - 100, y);
  client_.button(3, true);
  client_.button(3, false);
  ASSERT_TRUE(tapHas(EventTypeRightMouseDown));
  EXPECT_EQ(input_.tapped.size(), 1u);

  TappedEvent press;
  press.type = EventTypeLeftMouseDown;
  EXPECT_TRUE(input_->eventTap().tapPointerEvent(press));
  EXPECT_EQ(input_.tapped.size(), 2u);
  input_->eventTap().enable(false);
  EXPECT_TRUE(input_->eventTap().tapPointerEvent(press));
  EXPECT_EQ(input_.tapped.size(), 2u);
}

TEST_F(PointerState, AnswerOfTheTapHoldsAPressBackFromAnOwnWindow) {
  ASSERT_TRUE(input_->eventTap().create(
      [](const TappedEvent& event) { return event.type != EventTypeLeftMouseDown; }));
  TappedEvent press;
  press.type = EventTypeLeftMouseDown;
  EXPECT_FALSE(input_->eventTap().tapPointerEvent(press));
  press.type = EventTypeScrollWheel;
  EXPECT_TRUE(input_->eventTap().tapPointerEvent(press));
}

}  // namespace
}  // namespace qb::test
