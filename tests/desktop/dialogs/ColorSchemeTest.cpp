#include "PlatformDesktop/dialogs/ColorScheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "DialogDesk.h"
#include "PlatformDesktop/dialogs/DialogColors.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

class Portal : public QDBusVirtualObject {
 public:
  uint preference = 0;
  int questions = 0;
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != "Read") return false;
    ++questions;
    const QDBusVariant inner{preference};
    const QDBusVariant outer{QVariant::fromValue(inner)};
    return connection.send(message.createReply(QVariant::fromValue(outer)));
  }
};

class ColorSchemeTest : public DialogDesk {
 protected:
  ColorSchemeTest() {
    qunsetenv("GTK_THEME");
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
  }
  ~ColorSchemeTest() override {
    qunsetenv("GTK_THEME");
    qunsetenv("XDG_CONFIG_HOME");
    QApplication::setPalette(before);
  }
  static bool isDark() {
    return QApplication::palette().color(QPalette::Window) == DialogColors::dark().background;
  }
  void writeGtkSettings(const char* line) const {
    QDir(configuration.path()).mkpath("gtk-3.0");
    QFile file(configuration.filePath("gtk-3.0/settings.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Settings]\n");
    file.write(line);
  }

  const QPalette before = QApplication::palette();
  QTemporaryDir configuration;
};

TEST_F(ColorSchemeTest, ItIsLightUnlessSomebodySaysOtherwise) {
  SessionBus bus{QString()};
  const ColorScheme scheme(bus);
  EXPECT_FALSE(isDark());
}

TEST_F(ColorSchemeTest, GtkSaysItByEnvironmentThemeOrSwitch) {
  EXPECT_FALSE(ColorScheme::gtkPrefersDark());
  writeGtkSettings("gtk-theme-name=Adwaita-dark\n");
  EXPECT_TRUE(ColorScheme::gtkPrefersDark());
  writeGtkSettings("gtk-application-prefer-dark-theme=1\n");
  EXPECT_TRUE(ColorScheme::gtkPrefersDark());
  qputenv("GTK_THEME", "Adwaita");
  EXPECT_FALSE(ColorScheme::gtkPrefersDark());
  qputenv("GTK_THEME", "Adwaita:dark");
  EXPECT_TRUE(ColorScheme::gtkPrefersDark());
  SessionBus bus{QString()};
  const ColorScheme scheme(bus);
  EXPECT_TRUE(isDark());
}

TEST_F(ColorSchemeTest, ThePortalSaysItAndMayChangeItsMind) {
  PrivateBus portalBus;
  QDBusConnection connection = QDBusConnection::connectToBus(portalBus.address(), "portal");
  Portal portal;
  portal.preference = 1;
  ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/portal/desktop", &portal));
  ASSERT_TRUE(connection.registerService("org.freedesktop.portal.Desktop"));
  SessionBus bus(portalBus.address());
  const ColorScheme scheme(bus);
  EXPECT_TRUE(waitFor([] { return isDark(); }));
  QProcess::execute(
      "dbus-send",
      {"--bus=" + portalBus.address(), "--type=signal", "/org/freedesktop/portal/desktop",
       "org.freedesktop.portal.Settings.SettingChanged", "string:org.freedesktop.appearance",
       "string:color-scheme", "variant:uint32:2"});
  EXPECT_TRUE(waitFor([] { return !isDark(); }));
  QDBusConnection::disconnectFromBus("portal");
}

}  // namespace
}  // namespace qb::test
