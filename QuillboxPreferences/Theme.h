#pragma once

#include <QColor>
#include <QString>

class QApplication;

namespace qb {

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

}  // namespace qb
