#include "PlatformDesktop/graphics/DesktopImage.h"

#include <gmock/gmock.h>

namespace qb {
namespace {

constexpr char bar[] =
    "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4' viewBox='0 0 8 4'>"
    "<rect width='4' height='4' fill='#f00'/></svg>";

TEST(SvgImageTest, IsNaturalAtTheSizeThatItStates) {
  const SvgImage image(bar);
  EXPECT_EQ(image.naturalSize(), (Size{8, 4}));
}

TEST(SvgImageTest, IsSharpInEverySize) {
  const SvgImage image(bar);
  for (const int factor : {1, 2, 5, 16}) {
    const QImage pixels = image.scaled(QSize(8, 4) * factor);
    ASSERT_EQ(pixels.size(), QSize(8, 4) * factor);
    EXPECT_EQ(pixels.pixelColor(4 * factor - 1, 0), QColor(Qt::red));
    EXPECT_EQ(pixels.pixelColor(4 * factor, 0).alpha(), 0);
  }
}

TEST(SvgImageTest, HasNoPixelsInNoSpace) { EXPECT_TRUE(SvgImage(bar).scaled({0, 4}).isNull()); }

TEST(DrawnImageTest, IsDrawnOnceForEachOfTheSizesInUse) {
  int drawings = 0;
  const DrawnImage image({10, 20}, [&drawings](Canvas& canvas) {
    ++drawings;
    canvas.fill(Rect::make(5, 10, 5, 10), Color::black());
  });
  EXPECT_EQ(drawings, 0);
  for (int round = 0; round < 2; ++round) {
    for (const int factor : {1, 2, 3}) {
      const QImage pixels = image.scaled(QSize(10, 20) * factor);
      EXPECT_EQ(pixels.pixelColor(5 * factor, 10 * factor).alpha(), 255);
      EXPECT_EQ(pixels.pixelColor(5 * factor - 1, 10 * factor).alpha(), 0);
    }
  }
  EXPECT_EQ(drawings, 3);
}

TEST(DrawnImageTest, IsStretchedWithTheSize) {
  const DrawnImage image(
      {10, 10}, [](Canvas& canvas) { canvas.fill(Rect::make(5, 5, 5, 5), Color::black()); });
  const QImage pixels = image.scaled({20, 40});
  EXPECT_EQ(pixels.pixelColor(10, 20).alpha(), 255);
  EXPECT_EQ(pixels.pixelColor(19, 39).alpha(), 255);
  EXPECT_EQ(pixels.pixelColor(10, 19).alpha(), 0);
}

}  // namespace
}  // namespace qb
