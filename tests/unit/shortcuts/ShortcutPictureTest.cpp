#include "Quillbox/activation/shortcuts/ShortcutPicture.h"

#include <gmock/gmock.h>

#include <cmath>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "support/PrintGeometry.h"

namespace qb::test {
namespace {

using Kind = DrawOperation::Kind;

class ShortcutPictureTest : public testing::Test {
 protected:
  std::vector<DrawOperation> draw(const std::vector<std::string>& keyCaps, Size size) {
    const Image picture = pictureOfKeys(keyCaps, size, platform.graphics());
    EXPECT_EQ(picture.size(), size);
    return simulatedImageOperations(picture);
  }
  /// To millionths.
  static Rect rounded(const Rect& rect) {
    const auto round = [](double value) { return std::round(value * 1e6) / 1e6; };
    return Rect::make(round(rect.x()), round(rect.y()), round(rect.width()), round(rect.height()));
  }
  /// What is written, and where.
  static std::vector<std::pair<std::string, Rect>> textsOf(
      const std::vector<DrawOperation>& operations) {
    std::vector<std::pair<std::string, Rect>> texts;
    for (const DrawOperation& operation : operations) {
      if (operation.kind == Kind::Text) texts.emplace_back(operation.text, rounded(operation.rect));
    }
    return texts;
  }

  SimulatedPlatform platform;
};

TEST_F(ShortcutPictureTest, KeysStandSideBySideInTheMiddle) {
  const auto drawn = draw({"Ctrl", "Alt", "T"}, {110, 24});
  EXPECT_EQ(textsOf(drawn),
            (std::vector<std::pair<std::string, Rect>>{{"Ctrl", Rect::make(9, 4.8, 36, 14.4)},
                                                       {"Alt", Rect::make(49, 4.8, 30, 14.4)},
                                                       {"T", Rect::make(83, 4.8, 18, 14.4)}}));
}

TEST_F(ShortcutPictureTest, EachKeyIsALightCapUnderDarkText) {
  const auto drawn = draw({"F5"}, {110, 24});
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_EQ(drawn[0].kind, Kind::FillPath);
  EXPECT_EQ(drawn[0].color, Color::white());
  EXPECT_EQ(drawn[1].kind, Kind::StrokePath);
  EXPECT_EQ(drawn[1].path, drawn[0].path);
  EXPECT_EQ(drawn[2].kind, Kind::Text);
  EXPECT_LT(drawn[2].color.red(), 0.3);
  EXPECT_EQ(drawn[2].alignment, TextAlignmentCenter);
}

TEST_F(ShortcutPictureTest, ManyKeysAreMadeToFit) {
  const auto texts = textsOf(draw({"Ctrl", "Shift", "Alt", "Super", "F12"}, {110, 24}));
  ASSERT_EQ(texts.size(), 5U);
  EXPECT_NEAR(texts.front().second.x(), 0, 1e-6);
  EXPECT_NEAR(texts.back().second.maxX(), 110, 1e-6);
  EXPECT_NEAR(texts.front().second.center().y, 12, 1e-6);
}

}  // namespace
}  // namespace qb::test
