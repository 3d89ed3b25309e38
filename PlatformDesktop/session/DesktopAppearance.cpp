#include "PlatformDesktop/session/DesktopAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>
#include <QSettings>
#include <QStandardPaths>

#include "PlatformDesktop/dialogs/DialogColors.h"

namespace qb {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interfaceName = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");
constexpr uint darkScheme = 1;
constexpr uint lightScheme = 2;

/// The portal wraps its answers once or twice, depending on its age.
uint schemeOf(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt();
}

bool isDarkName(const QString& theme) {
  return theme.endsWith(":dark", Qt::CaseInsensitive) ||
         theme.endsWith("-dark", Qt::CaseInsensitive);
}

}  // namespace

DesktopAppearance::DesktopAppearance(SessionBus& bus) {
  const QString settings =
      QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) + "/gtk-3.0/settings.ini";
  if (toolkitPrefersDark(qEnvironmentVariable("GTK_THEME"), settings)) apply(true);
  bus.whenConnected([this](QDBusConnection& connection) { ask(connection); });
}

bool DesktopAppearance::toolkitPrefersDark(const QString& themeName, const QString& settingsFile) {
  if (!themeName.isEmpty()) return isDarkName(themeName);
  QSettings settings(settingsFile, QSettings::IniFormat);
  settings.beginGroup("Settings");
  return settings.value("gtk-application-prefer-dark-theme").toBool() ||
         isDarkName(settings.value("gtk-theme-name").toString());
}

void DesktopAppearance::ask(QDBusConnection& connection) {
  connection.connect(service, path, interfaceName, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QString, QString, QDBusVariant)));
  QDBusMessage read =
      QDBusMessage::createMethodCall(service, path, interfaceName, QStringLiteral("Read"));
  read << appearanceGroup << schemeKey;
  auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    const QDBusPendingReply<QDBusVariant> reply = *watcher;
    // Without a portal the toolkit's settings stand.
    if (!reply.isError()) settingChanged(appearanceGroup, schemeKey, reply.value());
    watcher->deleteLater();
  });
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key,
                                       const QDBusVariant& value) {
  if (group != appearanceGroup || key != schemeKey) return;
  const uint scheme = schemeOf(value.variant());
  if (scheme == darkScheme) apply(true);
  if (scheme == lightScheme) apply(false);
}

void DesktopAppearance::apply(bool dark) {
  const DialogColors& colors = dark ? DialogColors::dark() : DialogColors::light();
  QGuiApplication::setPalette(colors.palette());
}

}  // namespace qb
