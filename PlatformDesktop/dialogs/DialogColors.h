#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace qb {

/// The colours of dialogs.
struct DialogColors {
  QColor background, titleBar, border, text, dimmedText, field, fieldBorder, button, buttonBorder,
      accent, accentText, focusRing, warning;

  static const DialogColors& light();
  static const DialogColors& dark();
  /// Those that go with the application's palette as it is now.
  static const DialogColors& current();

  /// Makes these the application's, dialogs and menus that are open included.
  void adopt() const;
  QPalette palette() const;
  /// For the controls that Qt draws.
  QString styleSheet() const;
};

}  // namespace qb
