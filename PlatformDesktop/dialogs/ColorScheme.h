#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QPalette>

#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// Whether the user wants dark windows, by what the desktop says: the settings portal, which may
/// change its mind at any time, and before it answers or without it GTK's settings. The
/// application's palette follows, and with it dialogs and menus. Main thread.
class ColorScheme : public QObject {
  Q_OBJECT

 public:
  /// `bus` must outlive it.
  explicit ColorScheme(SessionBus& bus);

  /// By the environment and GTK's settings file.
  static bool gtkPrefersDark();

 private Q_SLOTS:
  void settingChanged(const QDBusMessage& message);

 private:
  void ask(QDBusConnection& connection);
  void apply(uint preference);
  void setDark(bool dark);

  QPalette light_;
};

}  // namespace qb
