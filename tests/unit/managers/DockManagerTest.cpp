#include "Quillbox/managers/DockManager.h"

#include <gtest/gtest.h>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

DockManager::FrameAndOrientation dockOf(const std::vector<Screen>& screens) {
  SimulatedPlatform platform;
  platform.displays().setScreens(screens);
  return DockManager(platform.displays()).dockFrameAndOrientation();
}

DockManager::FrameAndOrientation dockOf(const Rect& visibleFrame) {
  return dockOf({{Rect::make(0, 0, 1440, 900), visibleFrame, 1}});
}

TEST(DockManagerTest, WorksOutThePlaceFromWhatTheScreenLeavesFree) {
  const struct {
    const char* name;
    Rect visible;
    DockManager::FrameAndOrientation expected;
  } cases[] = {
      {"bottom",
       Rect::make(0, 70, 1440, 808),
       {Rect::make(0, 808, 1440, 92), DockOrientationBottom}},
      {"hidden", Rect::make(0, 0, 1440, 900), {Rect::make(0, 900, 1440, 0), DockOrientationBottom}},
      {"left", Rect::make(64, 0, 1376, 878), {Rect::make(0, 0, 64, 900), DockOrientationLeft}},
      {"right", Rect::make(0, 0, 1380, 878), {Rect::make(1380, 0, 60, 900), DockOrientationRight}},
      {"wider than the screen", Rect::make(0, 0, 1500, 900), {Rect{}, DockOrientationNone}},
  };
  for (const auto& each : cases) EXPECT_EQ(dockOf(each.visible), each.expected) << each.name;
}

TEST(DockManagerTest, LooksAtTheScreenAtTheOrigin) {
  const Screen other{Rect::make(1440, 0, 800, 600), Rect::make(1500, 0, 740, 600), 1};
  const Screen primary{Rect::make(0, 0, 1440, 900), Rect::make(64, 0, 1376, 900), 1};
  EXPECT_EQ(dockOf({other, primary}).orientation, DockOrientationLeft);
  EXPECT_EQ(dockOf({other, primary}).frame, Rect::make(0, 0, 64, 900));
}

TEST(DockManagerTest, NoScreenGivesAnEmptyFrame) {
  EXPECT_EQ(dockOf(std::vector<Screen>{}).frame, Rect{});
}

}  // namespace
}  // namespace qb::test
