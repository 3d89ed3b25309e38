#include "Quillbox/activation/ActivationCorners.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

class ActivationCornersTest : public ActivationFixture {
 protected:
  void SetUp() override { settings().setApplicationActivatesViaTopLeftCorner(true); }
  void moveTo(Point point) {
    pointer().moveTo(point);
    platform.runFor(0.25);
  }
};

TEST_F(ActivationCornersTest, EachCornerRaisesThePanelWithItsSettingOnly) {
  const struct {
    void (Settings::*set)(bool);
    Point corner;
  } cases[] = {
      {&Settings::setApplicationActivatesViaTopLeftCorner, {0, 900}},
      {&Settings::setApplicationActivatesViaTopRightCorner, {1440, 900}},
      {&Settings::setApplicationActivatesViaBottomLeftCorner, {0, 0}},
      {&Settings::setApplicationActivatesViaBottomRightCorner, {1440, 0}},
  };
  settings().setApplicationActivatesViaTopLeftCorner(false);
  settings().setApplicationActivatesViaLeftEdge(true);
  for (const auto& each : cases) {
    moveTo(each.corner);
    EXPECT_FALSE(isActive());
    moveTo({700, 450});
    (settings().*each.set)(true);
    moveTo(each.corner);
    EXPECT_TRUE(isActive());
    EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCorner);
    close();
    (settings().*each.set)(false);
    moveTo({700, 450});
    moveTo({700, 451});
  }
}

TEST_F(ActivationCornersTest, EdgesActivateNothing) {
  settings().setApplicationActivatesViaTopLeftCorner(false);
  settings().setApplicationActivatesViaLeftEdge(true);
  settings().setApplicationActivatesViaBottomEdge(true);
  settings().setApplicationActivatesViaRightEdge(true);
  for (const Point point : {Point{0, 450}, Point{700, 0}, Point{1440, 450}, Point{0, 0}}) {
    moveTo(point);
    EXPECT_FALSE(isActive());
  }
}

TEST_F(ActivationCornersTest, AfterADismissalThePointerMustLeaveByFivePointsOnBothAxes) {
  moveTo({0, 900});
  ASSERT_TRUE(isActive());
  close();
  moveTo({0, 900});
  EXPECT_FALSE(isActive());
  moveTo({0, 400});  // along the edge only
  moveTo({0, 900});
  EXPECT_FALSE(isActive());
  moveTo({4.5, 895.5});
  moveTo({0, 900});
  EXPECT_FALSE(isActive());
  moveTo({5, 895});
  moveTo({0, 900});
  EXPECT_TRUE(isActive());
}

TEST_F(ActivationCornersTest, PanelGoesOnlyAfterThePointerHasLeftAndReturned) {
  moveTo({0, 900});
  ASSERT_TRUE(isActive());
  platform.runFor(1);
  EXPECT_TRUE(isActive());
  moveTo({0, 500});
  moveTo({0, 900});
  EXPECT_TRUE(isActive());
  moveTo({6, 890});
  moveTo({0, 900});
  EXPECT_FALSE(isActive());
}

TEST_F(ActivationCornersTest, AnotherCornerDoesNotDismiss) {
  moveTo({0, 900});
  moveTo({700, 450});
  moveTo({1440, 900});
  EXPECT_TRUE(isActive());
}

TEST_F(ActivationCornersTest, NoScreenAtTheOriginHasCornersOfTheZeroRectangle) {
  moveTo({700, 450});
  platform.displays().setScreens({{Rect::make(10, 0, 1440, 900), {}, 1}});
  moveTo({0, 900});
  EXPECT_FALSE(isActive());
}

TEST_F(ActivationCornersTest, OfTwoCornersAtOnceTheLaterWins) {
  settings().setApplicationActivatesViaTopRightCorner(true);
  ActivationCorners corners;
  EXPECT_TRUE(corners.monitorMouseForCornerActivation({0, 0}, Rect{}, settings()));
  EXPECT_EQ(corners.activationCorner(), ActivationCornerTopRight);
  ActivationCorners all;
  settings().setApplicationActivatesViaBottomRightCorner(true);
  EXPECT_TRUE(all.monitorMouseForCornerActivation({0, 0}, Rect{}, settings()));
  EXPECT_EQ(all.activationCorner(), ActivationCornerBottomRight);
}

TEST(ActivationCornerArithmeticTest, InTheCornerAndAwayFromIt) {
  const Rect screen = Rect::make(0, 0, 1440, 900);
  const struct {
    std::int32_t corner;
    Point location;
    bool isIn, isAway;
  } cases[] = {
      {1, {0, 900}, true, false},      {1, {0.9, 899.1}, true, false},
      {1, {1, 900}, false, false},     {1, {0, 899}, false, false},
      {1, {4, 895}, false, false},     {1, {5, 896}, false, false},
      {1, {5, 895}, false, true},      {1, {0, 0}, false, false},
      {1, {-0.5, 900.5}, true, false}, {1, {-5, 905}, false, true},
      {2, {1440, 900}, true, false},   {2, {1435, 895}, false, true},
      {2, {1439, 900}, false, false},  {3, {0, 0}, true, false},
      {3, {5, 5}, false, true},        {3, {5, 4.9}, false, false},
      {4, {1440, 0}, true, false},     {4, {1435, 5}, false, true},
      {4, {0, 0}, false, false},       {0, {0, 0}, false, true},
      {5, {1440, 900}, false, true},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ActivationCorners::locationIsInCorner(each.location, each.corner, screen), each.isIn)
        << each.corner << " " << each.location.x << " " << each.location.y;
    EXPECT_EQ(ActivationCorners::locationIsAwayFromCorner(each.location, each.corner, screen),
              each.isAway)
        << each.corner << " " << each.location.x << " " << each.location.y;
  }
}

TEST(ActivationCornerArithmeticTest, TopIsTheHeightAloneWhateverTheScreensY) {
  const Rect screen = Rect::make(100, 50, 1440, 900);
  EXPECT_TRUE(ActivationCorners::locationIsInCorner({100, 900}, 1, screen));
  EXPECT_TRUE(ActivationCorners::locationIsInCorner({1540, 900}, 2, screen));
  EXPECT_TRUE(ActivationCorners::locationIsInCorner({100, 50}, 3, screen));
  EXPECT_TRUE(ActivationCorners::locationIsInCorner({1540, 50}, 4, screen));
}

}  // namespace
}  // namespace qb::test
