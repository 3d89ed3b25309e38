#pragma once

#include <QColor>
#include <QString>
#include <functional>

class QApplication;

namespace qb {

class SessionBus;

/// The program's colours, for a light and a dark desktop.
struct Theme {
  QColor window, card, border, text, secondaryText, accent, accentText, control, good, bad;

  static Theme light();
  static Theme dark();
  /// The one in use.
  static const Theme& current();
  static bool isDark();
};

/// Gives the whole application that look. May be called again when the desktop's mood changes.
void applyTheme(QApplication& application, bool dark);
/// What can be told at once: "QUILLBOX_THEME" in the environment, "light" or "dark", or else the
/// palette that Qt has found.
bool desktopIsDark();
/// Asks the desktop's portal which mood the user prefers; calls `answer` when it says so, and never
/// where there is no portal or the environment has spoken.
void askDesktopForDark(SessionBus& bus, std::function<void(bool)> answer);

}  // namespace qb
