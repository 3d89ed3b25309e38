#include "PlatformDesktop/session/DesktopAppearance.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace qb::test {
namespace {

TEST(AppearanceTest, TheToolkitsThemeNameDecides) {
  struct Case {
    const char* name;
    bool dark;
  };
  for (const Case& each : {Case{"Adwaita:dark", true}, Case{"Arc-Dark", true},
                           Case{"Adwaita", false}, Case{"Darkness", false}}) {
    EXPECT_EQ(DesktopAppearance::toolkitPrefersDark(each.name, "/nowhere"), each.dark) << each.name;
  }
}

TEST(AppearanceTest, WithoutANameTheSettingsFileDoes) {
  const QTemporaryDir folder;
  const auto prefersDark = [&](const char* text) {
    QFile file(folder.filePath("settings.ini"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
    file.close();
    return DesktopAppearance::toolkitPrefersDark("", file.fileName());
  };
  EXPECT_TRUE(prefersDark("[Settings]\ngtk-application-prefer-dark-theme=1\n"));
  EXPECT_TRUE(prefersDark("[Settings]\ngtk-theme-name=Adwaita-dark\n"));
  EXPECT_FALSE(prefersDark("[Settings]\ngtk-application-prefer-dark-theme=0\n"));
  EXPECT_FALSE(prefersDark("[Settings]\ngtk-theme-name=Adwaita\n"));
  EXPECT_FALSE(DesktopAppearance::toolkitPrefersDark("", folder.filePath("missing.ini")));
}

}  // namespace
}  // namespace qb::test
