#include <gmock/gmock.h>

#include "PlatformSimulated/SimulatedFileSystem.h"
#include "Quillbox/managers/DecorationManager.h"
#include "Quillbox/managers/ImageManager.h"
#include "Studio.h"

namespace qb::pictures {
namespace {

constexpr Size iconSize{128, 128};
const QColor lightGround(226, 229, 235), darkGround(30, 34, 42);

class DecoratedImages : public ::testing::Test {
 protected:
  Image named(const std::string& name) { return studio.graphics().imageNamed(name); }
  Image decorated(const std::optional<Color>& tint, const Image& badge) {
    return manager.decoratedImageOfImage(named("ApplicationIcon"), iconSize, tint, badge);
  }
  /// The image in a square of `edge` points with some room around it.
  QImage shown(const Image& image, double edge, double scale, const QColor& ground) {
    const double room = 4;
    return studio.drawn({edge + 2 * room, edge + 2 * room}, scale, ground, [&](Canvas& canvas) {
      canvas.drawImage(image, Rect::make(room, room, edge, edge));
    });
  }

  Studio studio;
  SimulatedRunLoopHost clock;
  SimulatedFileSystem files{clock};
  ImageManager manager{studio.graphics(), files};
};

TEST_F(DecoratedImages, ABadgeStandsInTheLowerRightQuarter) {
  const Image image = decorated({}, named("BadgeShapeStar"));
  EXPECT_EQ(differenceFromKept(shown(image, 128, 1, lightGround), "badge-128"), "");
  EXPECT_EQ(differenceFromKept(shown(image, 128, 2, darkGround), "badge-128@2"), "");
  EXPECT_EQ(differenceFromKept(shown(image, 42, 1, darkGround), "badge-42"), "");
}

TEST_F(DecoratedImages, ASmallBadgeStandsAtTheLowerEdgeButNotAtTheRightOne) {
  const Image square = studio.graphics().imageWithSize({32, 32}, [](Canvas& canvas) {
    canvas.fill(Rect::make(0, 0, 32, 32), Color::colorWithCalibratedRed(0.8, 0, 0, 1));
  });
  const QImage picture = shown(decorated({}, square), 128, 1, lightGround);
  EXPECT_EQ(picture.pixelColor(4 + 64, 4 + 96), QColor(204, 0, 0));
  EXPECT_EQ(picture.pixelColor(4 + 95, 4 + 127), QColor(204, 0, 0));
  EXPECT_NE(picture.pixelColor(4 + 63, 4 + 96), QColor(204, 0, 0));
  EXPECT_NE(picture.pixelColor(4 + 96, 4 + 96), QColor(204, 0, 0));
  EXPECT_EQ(differenceFromKept(picture, "badge-of-32"), "");
}

TEST_F(DecoratedImages, ATallBadgeReachesUpToTheTop) {
  const Image tall = studio.graphics().imageWithSize({128, 256}, [](Canvas& canvas) {
    canvas.fill(Path::roundedRect(Rect::make(0, 0, 128, 256), 40),
                Color::colorWithCalibratedRed(0.8, 0, 0, 1));
  });
  EXPECT_EQ(differenceFromKept(shown(decorated({}, tall), 128, 1, lightGround), "badge-tall"), "");
}

TEST_F(DecoratedImages, TintsColourTheIconAndNothingAroundIt) {
  for (const auto& [name, color] : DecorationManager::tints()) {
    const QImage picture = shown(decorated(color, {}), 64, 1, lightGround);
    EXPECT_EQ(picture.pixelColor(4, 4), lightGround) << name;
    EXPECT_EQ(differenceFromKept(picture, "tint-" + name), "");
  }
}

TEST_F(DecoratedImages, ABadgeIsNotTinted) {
  const Color red = DecorationManager::tints().front().second;
  const Image image = decorated(red, named("BadgeMarkCheck"));
  EXPECT_EQ(differenceFromKept(shown(image, 64, 1, darkGround), "tint-and-badge"), "");
  EXPECT_EQ(differenceFromKept(shown(image, 64, 2, lightGround), "tint-and-badge@2"), "");
}

TEST_F(DecoratedImages, CompositionsAndFlipsAreDrawnTheRightWayUp) {
  const Image both =
      manager.compositedImageOfImage(named("FileIcon"), named("BadgeArrowUp"), {40, 20});
  EXPECT_EQ(differenceFromKept(shown(both, 128, 1, lightGround), "composition"), "");
  const Image flipped = manager.flippedImage(both, true, false);
  EXPECT_EQ(differenceFromKept(shown(flipped, 128, 1, lightGround), "composition-flipped"), "");
}

TEST_F(DecoratedImages, TheShadowOfAnIconIsSoftAndBelowIt) {
  const QImage picture = studio.drawn({100, 100}, 2, lightGround, [&](Canvas& canvas) {
    ImageManager::setIconShadow(canvas);
    canvas.drawImage(named("FileIcon"), Rect::make(10, 10, 80, 80));
  });
  EXPECT_EQ(differenceFromKept(picture, "icon-shadow"), "");
}

}  // namespace
}  // namespace qb::pictures
