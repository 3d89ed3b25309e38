#pragma once

#include <QString>
#include <functional>

class QLabel;
class QSlider;
class QVBoxLayout;
class QWidget;

namespace qb {

class ToggleSwitch;

/// A page's column: title, sections and cards, in a view that scrolls when it must.
QWidget* makePage(const QString& title, const std::function<void(QVBoxLayout&)>& fill);
/// A framed group of rows, with its heading above.
QVBoxLayout* addCard(QVBoxLayout& page, const QString& heading);
/// A row of a title, a caption below it that may be empty, and a control at the right.
void addRow(QVBoxLayout& card, const QString& title, const QString& caption, QWidget* control);
/// A row whose control takes the whole width.
void addWideRow(QVBoxLayout& card, QWidget* control);

ToggleSwitch* addSwitch(QVBoxLayout& card, const QString& title, const QString& caption,
                        const std::function<void(bool)>& changed);

/// A wheel that scrolls the page goes on when `control` comes under the pointer, and changes
/// nothing.
void leaveWheelToPage(QWidget& control);

/// A slider that says its value.
struct ValueSlider {
  QSlider* slider = nullptr;
  QLabel* value = nullptr;
  QString unit;
  /// Without telling anyone.
  void show(int number) const;
};
ValueSlider addSlider(QVBoxLayout& card, const QString& title, const QString& caption, int least,
                      int greatest, const QString& unit, const std::function<void(int)>& changed);

}  // namespace qb
