#include "PlatformDesktop/dialogs/DialogColors.h"

#include <QApplication>

namespace qb {

namespace {

/// Under this lightness of its windows a desktop counts as dark.
constexpr int darkLightness = 128;

}  // namespace

const DialogColors& DialogColors::light() {
  static const DialogColors colors{.background = QColor(246, 246, 248),
                                   .titleBar = QColor(234, 234, 238),
                                   .border = QColor(176, 176, 184),
                                   .text = QColor(28, 28, 30),
                                   .dimmedText = QColor(96, 96, 104),
                                   .field = Qt::white,
                                   .fieldBorder = QColor(186, 186, 194),
                                   .button = Qt::white,
                                   .buttonBorder = QColor(192, 192, 200),
                                   .accent = QColor(38, 112, 233),
                                   .accentText = Qt::white,
                                   .focusRing = QColor(16, 62, 148),
                                   .warning = QColor(184, 38, 24)};
  return colors;
}

const DialogColors& DialogColors::dark() {
  static const DialogColors colors{.background = QColor(42, 43, 46),
                                   .titleBar = QColor(52, 53, 57),
                                   .border = QColor(84, 86, 92),
                                   .text = QColor(236, 236, 238),
                                   .dimmedText = QColor(168, 169, 175),
                                   .field = QColor(30, 31, 33),
                                   .fieldBorder = QColor(92, 94, 100),
                                   .button = QColor(66, 68, 73),
                                   .buttonBorder = QColor(92, 94, 100),
                                   .accent = QColor(48, 110, 214),
                                   .accentText = Qt::white,
                                   .focusRing = QColor(150, 190, 255),
                                   .warning = QColor(255, 138, 120)};
  return colors;
}

const DialogColors& DialogColors::current() {
  const QColor window = QApplication::palette().color(QPalette::Window);
  return window.lightness() < darkLightness ? dark() : light();
}

void DialogColors::adopt() const { QApplication::setPalette(palette()); }

QPalette DialogColors::palette() const {
  QPalette palette;
  palette.setColor(QPalette::Window, background);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, field);
  palette.setColor(QPalette::AlternateBase, background);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dimmedText);
  palette.setColor(QPalette::Button, button);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, text);
  palette.setColor(QPalette::ToolTipBase, background);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, accentText);
  palette.setColor(QPalette::Light, button.lighter(115));
  palette.setColor(QPalette::Midlight, button);
  palette.setColor(QPalette::Mid, fieldBorder);
  palette.setColor(QPalette::Dark, border);
  palette.setColor(QPalette::Shadow, border.darker(150));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dimmedText);
  }
  return palette;
}

QString DialogColors::styleSheet() const {
  return QStringLiteral(
             "QPushButton { background: %1; color: %2; border: 1px solid %3; border-radius: 6px;"
             " padding: 5px 16px; min-width: 64px; }"
             "QPushButton:hover, QPushButton:focus { border-color: %4; }"
             "QPushButton:pressed { background: %3; }"
             "QPushButton:disabled { color: %5; }"
             "QPushButton[default=\"true\"] { background: %4; color: %6; border-color: %4; }"
             "QPushButton[default=\"true\"]:focus { border-color: %10; }"
             "QPushButton[default=\"true\"]:pressed { background: %7; }"
             "QPushButton[default=\"true\"]:disabled { background: %1; color: %5;"
             " border-color: %3; }"
             "QLineEdit { background: %8; color: %2; border: 1px solid %9; border-radius: 5px;"
             " padding: 2px 5px; selection-background-color: %4; selection-color: %6; }"
             "QLineEdit:focus { border-color: %4; }")
      .arg(button.name(), text.name(), buttonBorder.name(), accent.name(), dimmedText.name(),
           accentText.name(), accent.darker(120).name(), field.name(), fieldBorder.name())
      .arg(focusRing.name());
}

}  // namespace qb
