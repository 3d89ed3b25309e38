#include "PlatformDesktop/session/ColorScheme.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QPalette>
#include <QTemporaryDir>
#include <utility>
#include <vector>

#include "EventWait.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// A desktop's settings portal, of the age in which answers are wrapped `wrappings` times.
class Portal : public QDBusVirtualObject {
 public:
  Portal(const QString& bus, uint preference, int wrappings)
      : connection_(QDBusConnection::connectToBus(bus, QStringLiteral("portal"))),
        preference_(preference),
        wrappings_(wrappings) {
    EXPECT_TRUE(connection_.registerVirtualObject(portalPath, this));
    EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  }
  ~Portal() override { QDBusConnection::disconnectFromBus(QStringLiteral("portal")); }

  void tell(const QString& group, const QString& key, const QVariant& value) {
    QDBusMessage signal =
        QDBusMessage::createSignal(portalPath, QStringLiteral("org.freedesktop.portal.Settings"),
                                   QStringLiteral("SettingChanged"));
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    EXPECT_TRUE(connection_.send(signal));
  }
  void prefer(uint preference) { tell(appearance, colorScheme, preference); }
  const std::vector<QList<QVariant>>& questions() const { return questions_; }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.interface() != "org.freedesktop.portal.Settings" || message.member() != "Read") {
      return false;
    }
    questions_.push_back(message.arguments());
    QVariant answer = preference_;
    for (int i = 0; i < wrappings_; ++i) answer = QVariant::fromValue(QDBusVariant(answer));
    return connection.send(message.createReply(answer));
  }

 private:
  QDBusConnection connection_;
  uint preference_;
  int wrappings_;
  std::vector<QList<QVariant>> questions_;
};

class ColorSchemeTest : public ::testing::Test {
 protected:
  ColorSchemeTest() {
    clearEnvironment();
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
  }
  ~ColorSchemeTest() override {
    clearEnvironment();
    qunsetenv("XDG_CONFIG_HOME");
    QApplication::setPalette(QPalette());
  }
  static void clearEnvironment() {
    qunsetenv("GTK_THEME");
    qunsetenv("QUILLBOX_THEME");
  }
  /// In a folder of its own each time: what Qt has read of a file it may remember.
  void writeGtkSettings(const char* line) {
    const QString folder = configuration.filePath(QString::number(++folders_));
    ASSERT_TRUE(QDir().mkpath(folder + "/gtk-3.0"));
    QFile file(folder + "/gtk-3.0/settings.ini");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Settings]\n");
    file.write(line);
    qputenv("XDG_CONFIG_HOME", folder.toUtf8());
  }

  QTemporaryDir configuration;

 private:
  int folders_ = 0;
};

TEST_F(ColorSchemeTest, ItIsLightUnlessSomebodySaysOtherwise) {
  SessionBus bus{QString()};
  EXPECT_FALSE(ColorScheme(bus).isDark());
}

TEST_F(ColorSchemeTest, TheThemeOfTheEnvironmentDecidesForGtk) {
  writeGtkSettings("gtk-application-prefer-dark-theme=1\n");
  for (const auto& [name, dark] : {std::pair{"Adwaita:dark", true},
                                   {"Arc-Dark", true},
                                   {"Adwaita", false},
                                   {"Darkness", false}}) {
    qputenv("GTK_THEME", name);
    EXPECT_EQ(ColorScheme::gtkPrefersDark(), dark) << name;
  }
}

TEST_F(ColorSchemeTest, WithoutItTheFileOfSettingsDoes) {
  EXPECT_FALSE(ColorScheme::gtkPrefersDark());
  for (const auto& [line, dark] : {std::pair{"gtk-theme-name=Adwaita-dark\n", true},
                                   {"gtk-theme-name=Adwaita\n", false},
                                   {"gtk-application-prefer-dark-theme=1\n", true},
                                   {"gtk-application-prefer-dark-theme=0\n", false}}) {
    writeGtkSettings(line);
    EXPECT_EQ(ColorScheme::gtkPrefersDark(), dark) << line;
    SessionBus bus{QString()};
    EXPECT_EQ(ColorScheme(bus).isDark(), dark) << line;
  }
}

TEST_F(ColorSchemeTest, APaletteThatQtHasFoundDarkCounts) {
  QApplication::setPalette(QPalette(Qt::black));
  SessionBus bus{QString()};
  EXPECT_TRUE(ColorScheme(bus).isDark());
}

TEST_F(ColorSchemeTest, ThePortalIsAskedAndHasTheLastWord) {
  for (const int wrappings : {1, 2}) {
    writeGtkSettings("gtk-application-prefer-dark-theme=0\n");
    const PrivateBus sessionBus;
    const Portal portal(sessionBus.address(), 1, wrappings);
    SessionBus bus(sessionBus.address());
    ColorScheme scheme(bus);
    std::vector<bool> heard;
    scheme.setObserver([&](bool dark) { heard.push_back(dark); });
    EXPECT_TRUE(waitFor([&] { return scheme.isDark(); }));
    EXPECT_THAT(heard, ElementsAre(true));
    EXPECT_THAT(portal.questions(), ElementsAre(QList<QVariant>{appearance, colorScheme}));
  }
}

TEST_F(ColorSchemeTest, WithoutAPreferenceTheToolkitsDecide) {
  writeGtkSettings("gtk-application-prefer-dark-theme=1\n");
  const PrivateBus sessionBus;
  Portal portal(sessionBus.address(), 2, 2);
  SessionBus bus(sessionBus.address());
  const ColorScheme scheme(bus);
  EXPECT_TRUE(scheme.isDark());
  EXPECT_TRUE(waitFor([&] { return !scheme.isDark(); }));
  portal.prefer(0);
  EXPECT_TRUE(waitFor([&] { return scheme.isDark(); }));
}

TEST_F(ColorSchemeTest, ChangesAreFollowedAndOtherSettingsAreNot) {
  const PrivateBus sessionBus;
  Portal portal(sessionBus.address(), 0, 2);
  SessionBus bus(sessionBus.address());
  ColorScheme scheme(bus);
  std::vector<bool> heard;
  scheme.setObserver([&](bool dark) { heard.push_back(dark); });
  ASSERT_TRUE(waitFor([&] { return !portal.questions().empty(); }));
  EXPECT_THAT(heard, IsEmpty());
  portal.prefer(1);
  portal.tell(QStringLiteral("org.gnome.desktop.interface"), colorScheme, 2U);
  portal.tell(appearance, QStringLiteral("contrast"), 2U);
  portal.prefer(1);
  portal.prefer(2);
  EXPECT_TRUE(waitFor([&] { return heard.size() == 2; }));
  EXPECT_THAT(heard, ElementsAre(true, false));
}

TEST_F(ColorSchemeTest, AWordInTheEnvironmentBeatsAll) {
  writeGtkSettings("gtk-application-prefer-dark-theme=1\n");
  SessionBus bus{QString()};
  qputenv("QUILLBOX_THEME", "light");
  EXPECT_FALSE(ColorScheme(bus).isDark());
  clearEnvironment();
  writeGtkSettings("");
  qputenv("QUILLBOX_THEME", "dark");
  const PrivateBus sessionBus;
  const Portal portal(sessionBus.address(), 2, 2);
  SessionBus other(sessionBus.address());
  const ColorScheme scheme(other);
  bool connected = false;
  // Tasks keep their order: whoever had a question has sent it by then.
  other.whenConnected([&](QDBusConnection& connection) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), portalPath,
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    call << QStringLiteral("of the test");
    connection.send(call);
    connected = true;
  });
  ASSERT_TRUE(waitFor([&] { return connected && !portal.questions().empty(); }));
  EXPECT_THAT(portal.questions(), ElementsAre(QList<QVariant>{QStringLiteral("of the test")}));
  EXPECT_TRUE(scheme.isDark());
}

}  // namespace
}  // namespace qb::test
