#include "PlatformDesktop/graphics/IconTheme.h"

#include <gmock/gmock.h>

#include "TemporaryFolder.h"

namespace qb {
namespace {

class IconThemeTest : public ::testing::Test {
 protected:
  IconThemeTest() {
    folder_.write("icons/mine/index.theme",
                  "[Icon Theme]\nName=Mine\nInherits=base\n"
                  "Directories=16/apps,48/apps,128/apps,scalable/apps\n"
                  "[16/apps]\nSize=16\nType=Fixed\n[48/apps]\nSize=48\nType=Fixed\n"
                  "[128/apps]\nSize=128\nType=Fixed\n"
                  "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n");
    folder_.write("icons/base/index.theme",
                  "[Icon Theme]\nName=Base\nInherits=mine\nDirectories=32\n[32]\nSize=32\n");
    folder_.write("icons/hicolor/index.theme",
                  "[Icon Theme]\nName=Hicolor\nDirectories=64\n[64]\nSize=64\n");
  }
  std::string add(const std::string& file) { return folder_.write(file, ""); }
  std::string find(const std::string& icon, int pixels) {
    return IconTheme("mine", {folder_.path("icons")}, {folder_.path("pixmaps")})
        .fileOfIcon(icon, pixels);
  }

  TemporaryFolder folder_;
};

TEST_F(IconThemeTest, TheSizeThatFitsComesFirst) {
  add("icons/mine/16/apps/pen.png");
  const std::string wanted = add("icons/mine/48/apps/pen.png");
  add("icons/mine/128/apps/pen.png");
  EXPECT_EQ(find("pen", 48), wanted);
}

TEST_F(IconThemeTest, ScalableServesWhatNoSizeFits) {
  add("icons/mine/128/apps/pen.png");
  const std::string wanted = add("icons/mine/scalable/apps/pen.svg");
  EXPECT_EQ(find("pen", 77), wanted);
}

TEST_F(IconThemeTest, LargerIsBetterThanSmaller) {
  add("icons/mine/48/apps/pen.png");
  const std::string wanted = add("icons/mine/128/apps/pen.png");
  EXPECT_EQ(find("pen", 60), wanted);
  EXPECT_EQ(find("pen", 200), wanted);
}

TEST_F(IconThemeTest, ThenTheThemesItBuildsOnThenHicolorThenLooseFiles) {
  const std::string loose = add("pixmaps/pen.xpm");
  EXPECT_EQ(find("pen", 48), loose);
  const std::string hicolor = add("icons/hicolor/64/pen.png");
  EXPECT_EQ(find("pen", 48), hicolor);
  const std::string inherited = add("icons/base/32/pen.png");
  EXPECT_EQ(find("pen", 48), inherited);
}

TEST_F(IconThemeTest, AnEndingDoesNotMatterAndAPathIsItself) {
  const std::string file = add("icons/mine/48/apps/pen.png");
  EXPECT_EQ(find("pen.png", 48), file);
  EXPECT_EQ(find(file, 48), file);
  EXPECT_EQ(find("/no/such.png", 48), "");
  EXPECT_EQ(find("none", 48), "");
  EXPECT_EQ(find("", 48), "");
}

}  // namespace
}  // namespace qb
