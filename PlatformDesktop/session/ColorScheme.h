#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <utility>

#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// Whether the user wants dark windows: by "QUILLBOX_THEME" in the environment ("light" or "dark"),
/// or else by what the desktop's settings portal says, which may change its mind at any time.
/// Before the portal answers, and without one, by GTK's settings and the palette that Qt has
/// started with. Main thread.
class ColorScheme : public QObject {
  Q_OBJECT

 public:
  /// Made before anybody changes the application's palette. `bus` must outlive it.
  explicit ColorScheme(SessionBus& bus);

  bool isDark() const { return isDark_; }
  /// Called after each change of `isDark`.
  void setObserver(std::function<void(bool dark)> observer) { observer_ = std::move(observer); }

  /// By the environment and GTK's settings file.
  static bool gtkPrefersDark();

 private Q_SLOTS:
  void settingChanged(const QDBusMessage& message);

 private:
  void ask(QDBusConnection& connection);
  void apply(uint preference);

  bool isDarkByToolkits_;
  bool isDark_;
  std::function<void(bool dark)> observer_;
};

}  // namespace qb
