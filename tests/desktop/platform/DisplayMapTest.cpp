#include "PlatformDesktop/displays/DisplayMap.h"

#include <gmock/gmock.h>

namespace qb {
namespace {

DisplayMap twoDisplays(double scale) {
  return DisplayMap({{.pixels = {0, 0, 1920, 1080}, .scale = scale, .frame = {}},
                     {.pixels = {1920, 200, 1280, 720}, .scale = scale, .frame = {}}});
}

TEST(DisplayMap, ThePrimaryDisplayHasItsLowerLeftAtTheOrigin) {
  const DisplayMap map = twoDisplays(1);
  EXPECT_EQ(map.displays()[0].frame, Rect::make(0, 0, 1920, 1080));
}

TEST(DisplayMap, AnotherDisplayIsPlacedFromThere) {
  const DisplayMap map = twoDisplays(1);
  EXPECT_EQ(map.displays()[1].frame, Rect::make(1920, 160, 1280, 720));
}

TEST(DisplayMap, APrimaryDisplayThatIsNotAtTheCornerIsTheOriginAllTheSame) {
  const DisplayMap map({{.pixels = {1280, 0, 1920, 1080}, .scale = 1, .frame = {}},
                        {.pixels = {0, 0, 1280, 1024}, .scale = 1, .frame = {}}});
  EXPECT_EQ(map.displays()[0].frame, Rect::make(0, 0, 1920, 1080));
  EXPECT_EQ(map.displays()[1].frame, Rect::make(-1280, 56, 1280, 1024));
}

TEST(DisplayMap, FramesGoToPixelsFromTheTop) {
  const DisplayMap map = twoDisplays(1);
  EXPECT_EQ(map.pixelsForFrame(Rect::make(100, 50, 300, 200)), (PixelRect{100, 830, 300, 200}));
  EXPECT_EQ(map.pixelsForFrame(Rect::make(1920, 160, 1280, 720)),
            (PixelRect{1920, 200, 1280, 720}));
}

TEST(DisplayMap, APointIsAsManyPixelsAsTheScaleSays) {
  const DisplayMap map = twoDisplays(2);
  EXPECT_EQ(map.displays()[0].frame, Rect::make(0, 0, 960, 540));
  EXPECT_EQ(map.displays()[1].frame.x(), 960);
  EXPECT_EQ(map.pixelsForFrame(Rect::make(0, 0, 960, 540)), (PixelRect{0, 0, 1920, 1080}));
  EXPECT_EQ(map.scaleForFrame(Rect::make(0, 0, 960, 540)), 2);
}

TEST(DisplayMap, PixelsGoToPointsAndBack) {
  const DisplayMap map = twoDisplays(2);
  EXPECT_EQ(map.pointForPixel(200, 100), (Point{100, 490}));
  EXPECT_EQ(map.flipped({100, 490}), (Point{100, 50}));
  EXPECT_EQ(map.flipped(map.flipped({3, 4})), (Point{3, 4}));
}

TEST(DisplayMap, AFrameOverTwoDisplaysBelongsToTheOneWithItsGreaterPart) {
  const DisplayMap map = twoDisplays(1);
  EXPECT_EQ(map.displayForFrame(Rect::make(1900, 300, 200, 100)), &map.displays()[1]);
  EXPECT_EQ(map.displayForFrame(Rect::make(9000, 9000, 5, 5)), &map.displays()[0]);
}

TEST(DisplayMap, WithoutDisplaysNothingHasAPlace) {
  const DisplayMap map;
  EXPECT_EQ(map.displayForFrame(Rect::make(0, 0, 10, 10)), nullptr);
  EXPECT_EQ(map.pixelsForFrame(Rect::make(0, 0, 10, 10)), PixelRect{});
  EXPECT_EQ(map.scaleForFrame(Rect::make(0, 0, 10, 10)), 1);
}

}  // namespace
}  // namespace qb
