#include "Quillbox/managers/ImageManager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "support/PrintGeometry.h"
#include "support/TestPictures.h"

namespace qb::test {
namespace {

const Color red = Color::colorWithCalibratedRed(1, 0.5, 0.5, 0.33);

class ImageManagerTest : public testing::Test {
 protected:
  SimulatedPlatform platform;
  ImageManager manager{platform.graphics(), platform.fileSystem()};
  const Image base = imageOfSize(50, 60);
};

TEST_F(ImageManagerTest, AnswersAtOnceAndBringsTheTrueIconLater) {
  std::string later;
  const Image now = manager.iconForFile(
      "/apps/Editor.desktop", [&later](const Image& icon) { later = simulatedImageName(icon); });
  EXPECT_EQ(simulatedImageName(now), "generic icon");
  EXPECT_EQ(later, "");
  platform.runPending();
  EXPECT_EQ(later, "icon:/apps/Editor.desktop");
}

TEST_F(ImageManagerTest, AMissingFileHasAPictureOfItsOwn) {
  EXPECT_EQ(simulatedImageName(manager.iconForMissingFile()), "UnknownFile");
}

// Decorated images.

TEST_F(ImageManagerTest, WithoutDecorationsTheImageStaysAsItIsAtItsOwnSize) {
  EXPECT_EQ(manager.decoratedImageOfImage(base, {128, 128}, {}, {}), base);
}

TEST_F(ImageManagerTest, ATintCoversTheOpaquePartsOfTheWholeImage) {
  const Image tinted = manager.decoratedImageOfImage(base, {128, 128}, red, {});
  EXPECT_EQ(tinted.size(), (Size{128, 128}));
  const auto drawn = simulatedImageOperations(tinted);
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_EQ(drawn[0].image, base);
  EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 128, 128));
  EXPECT_EQ(drawn[1].kind, DrawOperation::Kind::FillRect);
  EXPECT_EQ(drawn[1].rect, Rect::make(0, 0, 128, 128));
  EXPECT_EQ(drawn[1].color, red);
  EXPECT_EQ(drawn[1].operation, CompositingOperation::SourceAtop);
}

TEST_F(ImageManagerTest, TheBadgeComesLastOverTintAndImage) {
  const Image badge = imageOfSize(64, 64);
  const auto drawn =
      simulatedImageOperations(manager.decoratedImageOfImage(base, {128, 128}, red, badge));
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_EQ(drawn[2].image, badge);
  EXPECT_EQ(drawn[2].operation, CompositingOperation::SourceOver);
  EXPECT_EQ(drawn[2].fraction, 1);
}

struct BadgeCase {
  Size badge, image;
  Rect place;
};

// The left edge is fixed, and the lower one is the image's.
TEST_F(ImageManagerTest, BadgesStandAndShrinkLikeThis) {
  const std::vector<BadgeCase> cases = {
      {{64, 64}, {128, 128}, Rect::make(64, 64, 64, 64)},
      {{32, 32}, {128, 128}, Rect::make(64, 96, 32, 32)},
      {{64, 64}, {156, 156}, Rect::make(92, 92, 64, 64)},
      {{128, 128}, {128, 128}, Rect::make(64, 64, 64, 64)},
      {{32, 128}, {128, 128}, Rect::make(64, 64, 16, 64)},
      {{128, 32}, {128, 128}, Rect::make(64, 112, 64, 16)},
      // Both sides are too long: the one that needs less decides.
      {{128, 256}, {128, 128}, Rect::make(64, 0, 64, 128)},
      {{256, 128}, {128, 128}, Rect::make(64, 64, 128, 64)},
      {{65, 64}, {128, 128}, Rect::make(64, 128 - 64.0 / 65 * 64, 64, 64.0 / 65 * 64)},
      {{16, 16}, {48, 48}, Rect::make(-16, 32, 16, 16)}};
  for (const BadgeCase& one : cases) {
    const Image badge = imageOfSize(one.badge.width, one.badge.height);
    const auto drawn =
        simulatedImageOperations(manager.decoratedImageOfImage(base, one.image, red, badge));
    // What is outside the picture as a whole is not even drawn.
    if (one.place.maxX() <= 0) {
      EXPECT_EQ(drawn.size(), 2U);
      continue;
    }
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_EQ(drawn[2].rect, one.place) << one.badge.width << " x " << one.badge.height;
  }
}

// Other images made from images.

TEST_F(ImageManagerTest, ACompositionPutsTheSecondInFrontAtItsSize) {
  const Image front = imageOfSize(20, 10);
  const Image both = manager.compositedImageOfImage(base, front, {12, 30});
  EXPECT_EQ(both.size(), base.size());
  const auto drawn = simulatedImageOperations(both);
  ASSERT_EQ(drawn.size(), 2U);
  EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 50, 60));
  EXPECT_EQ(drawn[1].image, front);
  EXPECT_EQ(drawn[1].rect, Rect::make(12, 20, 20, 10)) << "its lower edge is 30 above the lowest";
}

TEST_F(ImageManagerTest, AFlippedImageFillsTheSameSize) {
  for (const bool vertically : {false, true}) {
    for (const bool horizontally : {false, true}) {
      const Image flipped = manager.flippedImage(base, vertically, horizontally);
      EXPECT_EQ(flipped.size(), base.size());
      const auto drawn = simulatedImageOperations(flipped);
      ASSERT_EQ(drawn.size(), 1U);
      EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 50, 60));
      EXPECT_EQ(drawn[0].flippedVertically, vertically);
      EXPECT_EQ(drawn[0].flippedHorizontally, horizontally);
    }
  }
}

struct ScaleCase {
  Size image, maximum, scaled;
};

TEST_F(ImageManagerTest, AnImageIsShrunkUntilItFitsAndNeverEnlarged) {
  const std::vector<ScaleCase> cases = {
      {{100, 50}, {50, 50}, {50, 25}},     {{50, 100}, {50, 50}, {25, 50}},
      {{200, 400}, {100, 100}, {50, 100}}, {{16, 16}, {50, 50}, {16, 16}},
      {{10, 100}, {50, 25}, {2.5, 25}},    {{0, 0}, {50, 50}, {0, 0}},
      {{64, 64}, {64, 64}, {64, 64}}};
  for (const ScaleCase& one : cases) {
    for (const bool upScalingAllowed : {false, true}) {
      Image image = imageOfSize(one.image.width, one.image.height);
      ImageManager::scaleImage(image, one.maximum, upScalingAllowed);
      EXPECT_EQ(image.size(), one.scaled) << one.image.width << " x " << one.image.height;
    }
  }
}

TEST_F(ImageManagerTest, TheFactorOfScalingIsOfSinglePrecision) {
  Image image = imageOfSize(30, 30);
  ImageManager::scaleImage(image, {10, 10}, false);
  const double once = 30.0 * static_cast<double>(static_cast<float>(10.0 / 30.0));
  ASSERT_GT(once, 10) << "rounded up, so that the height is scaled again";
  EXPECT_EQ(image.size().width, once * static_cast<double>(static_cast<float>(10.0 / once)));
}

TEST_F(ImageManagerTest, TheShadowOfIconsFallsStraightDown) {
  RecordingCanvas canvas(Rect::make(0, 0, 100, 100));
  canvas.save();
  ImageManager::setIconShadow(canvas);
  canvas.drawImage(base, Rect::make(0, 0, 50, 60), CompositingOperation::SourceOver, 1);
  canvas.restore();
  canvas.drawImage(base, Rect::make(0, 0, 50, 60), CompositingOperation::SourceOver, 1);
  ASSERT_EQ(canvas.operations().size(), 2U);
  EXPECT_EQ(canvas.operations()[0].shadow, (Shadow{Color::black().withAlpha(0.33), {0, 4}, 3}));
  EXPECT_EQ(canvas.operations()[1].shadow, Shadow{});
}

}  // namespace
}  // namespace qb::test
