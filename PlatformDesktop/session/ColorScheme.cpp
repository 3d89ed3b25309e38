#include "PlatformDesktop/session/ColorScheme.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QSettings>
#include <utility>

#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr uint preferDark = 1, preferLight = 2;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

bool isDarkThemeName(const QString& name) {
  return name.endsWith(QLatin1String(":dark"), Qt::CaseInsensitive) ||
         name.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive);
}

bool isDarkPalette(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// The portal wraps the value once or twice, by its age.
uint unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt();
}

}  // namespace

ColorScheme::ColorScheme(SessionBus& bus)
    : isDarkByToolkits_(gtkPrefersDark() || isDarkPalette(QGuiApplication::palette())),
      isDark_(isDarkByToolkits_) {
  const QString wish = qEnvironmentVariable("QUILLBOX_THEME");
  if (!wish.isEmpty()) {
    isDark_ = wish == QStringLiteral("dark");
    return;
  }
  bus.whenConnected([this](QDBusConnection& connection) { ask(connection); });
}

bool ColorScheme::gtkPrefersDark() {
  const QString theme = qEnvironmentVariable("GTK_THEME");
  if (!theme.isEmpty()) return isDarkThemeName(theme);
  const QSettings settings(
      qtString(DesktopFolders::configuration().front()) + QStringLiteral("/gtk-3.0/settings.ini"),
      QSettings::IniFormat);
  return settings.value(QStringLiteral("Settings/gtk-application-prefer-dark-theme")).toBool() ||
         isDarkThemeName(settings.value(QStringLiteral("Settings/gtk-theme-name")).toString());
}

void ColorScheme::ask(QDBusConnection& connection) {
  // From anybody: naming the sender would make this thread wait for the bus to say who that is.
  connection.connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QDBusMessage)));
  QDBusMessage call =
      QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
  call.setArguments({appearanceGroup, colorSchemeKey});
  auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this](QDBusPendingCallWatcher* finished) {
            const QDBusPendingReply<QVariant> reply = *finished;
            // Many desktops have no portal; that is no fault.
            if (reply.isValid()) apply(unwrapped(reply.value()));
            finished->deleteLater();
          });
}

void ColorScheme::settingChanged(const QDBusMessage& message) {
  const QList<QVariant> arguments = message.arguments();
  if (arguments.size() < 3) return;
  if (arguments[0] != appearanceGroup || arguments[1] != colorSchemeKey) return;
  apply(unwrapped(arguments[2]));
}

void ColorScheme::apply(uint preference) {
  const bool dark = preference == preferDark || (preference != preferLight && isDarkByToolkits_);
  if (dark == std::exchange(isDark_, dark)) return;
  if (observer_) observer_(dark);
}

}  // namespace qb
