#include "QuillboxPreferences/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace qb {

namespace {

Theme theme = Theme::light();
bool themeIsDark = false;

QPalette paletteOf(const Theme& colors) {
  QPalette palette;
  palette.setColor(QPalette::Window, colors.window);
  palette.setColor(QPalette::WindowText, colors.text);
  palette.setColor(QPalette::Base, colors.card);
  palette.setColor(QPalette::AlternateBase, colors.window);
  palette.setColor(QPalette::Text, colors.text);
  palette.setColor(QPalette::Button, colors.card);
  palette.setColor(QPalette::ButtonText, colors.text);
  palette.setColor(QPalette::Highlight, colors.accent);
  palette.setColor(QPalette::HighlightedText, colors.accentText);
  palette.setColor(QPalette::ToolTipBase, colors.card);
  palette.setColor(QPalette::ToolTipText, colors.text);
  palette.setColor(QPalette::PlaceholderText, colors.secondaryText);
  palette.setColor(QPalette::Disabled, QPalette::Text, colors.secondaryText);
  palette.setColor(QPalette::Disabled, QPalette::WindowText, colors.secondaryText);
  palette.setColor(QPalette::Disabled, QPalette::ButtonText, colors.secondaryText);
  return palette;
}

QString styleSheetOf(const Theme& colors) {
  return QStringLiteral(R"(
    QLabel { background: transparent; color: %3; }
    QLabel[role="title"] { font-size: 20px; font-weight: 700; }
    QLabel[role="section"] { font-size: 12px; font-weight: 600; color: %4; }
    QLabel[role="caption"] { font-size: 12px; color: %4; }
    QLabel[role="value"] { color: %4; }
    QFrame#card { background: %1; border: 1px solid %2; border-radius: 10px; }
    QFrame#separator { background: %2; border: none; }
    QWidget#footer { background: %1; border-top: 1px solid %2; }
    QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; border: none; }
    QListWidget#sidebar { background: %1; border: none; border-right: 1px solid %2; outline: none;
      padding: 12px 10px; font-size: 14px; }
    QListWidget#sidebar::item { height: 36px; border-radius: 8px; padding-left: 10px;
      margin-bottom: 2px; color: %3; }
    QListWidget#sidebar::item:hover:!selected { background: %7; }
    QListWidget#sidebar::item:selected { background: %5; color: %6; }
    QPushButton { background: %7; border: 1px solid %2; border-radius: 7px; padding: 7px 16px;
      color: %3; }
    QPushButton:hover { border-color: %5; }
    QPushButton:focus { border-color: %5; }
    QPushButton:pressed { background: %2; }
    QPushButton:default { background: %5; border-color: %5; color: %6; }
    QComboBox { background: %7; border: 1px solid %2; border-radius: 7px; padding: 6px 12px;
      padding-right: 30px; color: %3; }
    QComboBox::drop-down { border: none; }
    QComboBox::down-arrow { image: none; }
    QComboBox:focus { border-color: %5; }
    QComboBox QAbstractItemView { background: %1; color: %3; selection-background-color: %5;
      selection-color: %6; border: 1px solid %2; }
    QSlider { min-height: 24px; background: transparent; }
    QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: %2; }
    QSlider::sub-page:horizontal { height: 4px; border-radius: 2px; background: %5; }
    QSlider::handle:horizontal { width: 18px; height: 18px; margin: -7px 0; border-radius: 9px;
      background: #ffffff; border: 1px solid %4; }
    QSlider::handle:horizontal:focus { border: 2px solid %5; width: 16px; height: 16px; }
    QToolTip { background: %1; color: %3; border: 1px solid %2; padding: 4px; }
    QScrollBar:vertical { background: transparent; width: 10px; margin: 0; }
    QScrollBar::handle:vertical { background: %2; border-radius: 4px; min-height: 32px;
      margin: 2px; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
  )")
      .arg(colors.card.name(), colors.border.name(), colors.text.name(),
           colors.secondaryText.name(), colors.accent.name(), colors.accentText.name(),
           colors.control.name());
}

}  // namespace

Theme Theme::light() {
  return {QColor(0xf3f4f7), QColor(0xffffff), QColor(0xdcdfe6), QColor(0x1c2230), QColor(0x667085),
          QColor(0x3558c8), QColor(0xffffff), QColor(0xf0f2f6), QColor(0x1f8a4c), QColor(0xb3261e)};
}

Theme Theme::dark() {
  return {QColor(0x16181d), QColor(0x1f2229), QColor(0x343945), QColor(0xedf0f6), QColor(0x9aa3b4),
          QColor(0x6f8ff0), QColor(0x0e1220), QColor(0x2a2e38), QColor(0x57c785), QColor(0xff8a80)};
}

const Theme& Theme::current() { return theme; }
bool Theme::isDark() { return themeIsDark; }

void applyTheme(QApplication& application, bool dark) {
  theme = dark ? Theme::dark() : Theme::light();
  themeIsDark = dark;
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(paletteOf(theme));
  application.setStyleSheet(styleSheetOf(theme));
}

}  // namespace qb
