#include <gmock/gmock.h>

#include <set>

#include "PlatformDesktop/graphics/ProgramIcon.h"
#include "Studio.h"

namespace qb::pictures {
namespace {

struct NamedPicture {
  const char* name;
  Size size;
};

TEST(ResourcesTest, EveryPictureThatIsAskedForIsThereInItsSize) {
  const std::vector<NamedPicture> expected = {{"DeleteTabRowButton", {24, 24}},
                                              {"AddTabRowButton", {28, 28}},
                                              {"DragTabRowButton", {24, 24}},
                                              {"DeleteItemButton", {20, 20}},
                                              {"ConfigureItemButton", {20, 20}},
                                              {"DeleteElementButton", {20, 20}},
                                              {"TabRowProviderConfigureButton", {14, 14}},
                                              {"DownArrow", {12, 8}},
                                              {"RightArrow", {16, 16}},
                                              {"LeftIndicator", {12, 24}},
                                              {"RightIndicator", {12, 24}},
                                              {"DownloadingIcon", {16, 16}},
                                              {"Spinner", {16, 16}},
                                              {"BadgeZNone", {64, 64}},
                                              {"AddItemButton", {128, 128}},
                                              {"openinfinder", {128, 128}},
                                              {"UnknownFile", {128, 128}},
                                              {"UnknownClipboardItem", {128, 128}},
                                              {"TextClippingIcon", {128, 128}},
                                              {"FileIcon", {128, 128}},
                                              {"Folder", {128, 128}},
                                              {"ApplicationIcon", {128, 128}},
                                              {"SystemPreferencesIcon", {128, 128}},
                                              {"SavedSearchFolder", {128, 128}},
                                              {"MetaFolder", {128, 128}},
                                              {"AutoType", {128, 128}},
                                              {"Selection", {128, 128}},
                                              {"ClipboardIconEmpty", {128, 128}},
                                              {"DisplayConfigurationIcon", {128, 128}},
                                              {"QuillboxWebIcon", {128, 128}},
                                              {"OnePointOneReleaseWebIcon", {128, 128}},
                                              {"QuickStartGuideWebIcon", {128, 128}},
                                              {"CustomItemsWebIcon", {128, 128}},
                                              {"QuillboxLogo", {64, 64}},
                                              {"Quintro", {420, 170}},
                                              {"AssistiveDevicesMavericks", {420, 190}},
                                              {"AssistiveDevicesMountainLion", {420, 120}}};
  Studio studio;
  for (const NamedPicture& one : expected) {
    const Image image = studio.graphics().imageNamed(one.name);
    ASSERT_TRUE(image) << one.name;
    EXPECT_EQ(image.size(), one.size) << one.name;
  }
  for (int index = 0; index <= 8; ++index) {
    EXPECT_TRUE(studio.graphics().imageNamed("Separator" + std::to_string(index))) << index;
  }
}

TEST(ResourcesTest, TheProgramsOwnMarkComesInTheSizesOfTaskBarsAndTitleBars) {
  const QIcon icon = programIcon();
  for (const int edge : {16, 32, 48, 64, 128}) {
    const QImage picture = icon.pixmap(edge).toImage();
    ASSERT_EQ(picture.size(), QSize(edge, edge));
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << "its corners are round";
    EXPECT_EQ(picture.pixelColor(edge / 2, edge / 4).alpha(), 255);
  }
}

TEST(ResourcesTest, ANameThatNothingHasGivesNone) {
  Studio studio;
  EXPECT_FALSE(studio.graphics().imageNamed("NoSuchPicture"));
  EXPECT_FALSE(studio.graphics().imageNamed(""));
}

TEST(ResourcesTest, BadgesFillWholeRowsOfTheirMenuAndEndWithTheOneForNone) {
  Studio studio;
  const auto names = studio.graphics().imageNames("Badge");
  EXPECT_EQ(names.size(), 48U);
  EXPECT_EQ(names.back(), "BadgeZNone");
  for (const std::string& name : names) {
    EXPECT_EQ(studio.graphics().imageNamed(name).size(), (Size{64, 64})) << name;
  }
}

/// What a picture can be seen by on a ground of one colour: its pixels that differ from it.
int visiblePixels(const QImage& picture, const QColor& ground) {
  constexpr int visible = 40;
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      if (std::abs(color.lightness() - ground.lightness()) > visible) ++count;
    }
  }
  return count;
}

TEST(ResourcesTest, EveryPictureCanBeSeenOnEveryGround) {
  Studio studio;
  for (const std::string& name : studio.graphics().imageNames("")) {
    const Image image = studio.graphics().imageNamed(name);
    const Rect all{{0, 0}, image.size()};
    for (const QColor& ground : {QColor(Qt::white), QColor(Qt::black), QColor(128, 128, 128)}) {
      const QImage picture = studio.drawn(image.size(), 1, ground,
                                          [&](Canvas& canvas) { canvas.drawImage(image, all); });
      EXPECT_GT(visiblePixels(picture, ground), 0.02 * picture.width() * picture.height())
          << name << " on " << ground.name().toStdString();
    }
  }
}

TEST(ResourcesTest, NoPictureIsCutAtItsEdges) {
  Studio studio;
  for (const std::string& name : studio.graphics().imageNames("")) {
    const Image image = studio.graphics().imageNamed(name);
    // Those of explanations are sheets that reach their edges.
    if (image.size().width > 128) continue;
    const auto& source = dynamic_cast<const DesktopImage&>(*image.source());
    const QSize size = QSizeF(image.size().width, image.size().height).toSize() * 8;
    const QImage picture = source.scaled(size);
    int alpha = 0;
    for (int x = 0; x < size.width(); ++x) {
      alpha = std::max(
          {alpha, qAlpha(picture.pixel(x, 0)), qAlpha(picture.pixel(x, size.height() - 1))});
    }
    for (int y = 0; y < size.height(); ++y) {
      alpha = std::max(
          {alpha, qAlpha(picture.pixel(0, y)), qAlpha(picture.pixel(size.width() - 1, y))});
    }
    EXPECT_LT(alpha, 128) << name;
  }
}

}  // namespace
}  // namespace qb::pictures
