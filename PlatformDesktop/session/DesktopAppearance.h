#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QString>

#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// Keeps the application's palette light or dark as the desktop prefers: by its settings portal,
/// which also tells of changes, and where there is none by the settings of its toolkit. Main
/// thread.
class DesktopAppearance : public QObject {
  Q_OBJECT

 public:
  /// The bus must outlive it.
  explicit DesktopAppearance(SessionBus& bus);

  /// What the toolkit's theme says: `themeName` (as in GTK_THEME) decides unless it is empty, then
  /// the file of settings, which may be missing.
  static bool toolkitPrefersDark(const QString& themeName, const QString& settingsFile);

 private Q_SLOTS:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void ask(QDBusConnection& connection);
  void apply(bool dark);
};

}  // namespace qb
