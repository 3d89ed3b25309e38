#include "QuillboxPreferences/controls/Card.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include "QuillboxPreferences/controls/ToggleSwitch.h"

namespace qb {

namespace {

QLabel* label(const QString& text, const char* role) {
  auto* const made = new QLabel(text);
  made->setProperty("role", QString::fromLatin1(role));
  made->setWordWrap(true);
  return made;
}

class WheelFilter : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();
    return true;
  }
};

void addSeparator(QVBoxLayout& card) {
  if (card.count() == 0) return;
  auto* const line = new QFrame;
  line->setObjectName(QStringLiteral("separator"));
  line->setFixedHeight(1);
  card.addWidget(line);
}

}  // namespace

QWidget* makePage(const QString& title, const std::function<void(QVBoxLayout&)>& fill) {
  auto* const content = new QWidget;
  auto* const column = new QVBoxLayout(content);
  column->setContentsMargins(28, 24, 28, 24);
  column->setSpacing(8);
  column->addWidget(label(title, "title"));
  fill(*column);
  column->addStretch();
  auto* const scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  // The keyboard goes from control to control; the view follows it.
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidget(content);
  return scroll;
}

QVBoxLayout* addCard(QVBoxLayout& page, const QString& heading) {
  if (!heading.isEmpty()) {
    QLabel* const above = label(heading, "section");
    above->setContentsMargins(2, 10, 0, 0);
    page.addWidget(above);
  }
  auto* const frame = new QFrame;
  frame->setObjectName(QStringLiteral("card"));
  auto* const rows = new QVBoxLayout(frame);
  rows->setContentsMargins(16, 6, 16, 6);
  rows->setSpacing(0);
  page.addWidget(frame);
  return rows;
}

void addRow(QVBoxLayout& card, const QString& title, const QString& caption, QWidget* control) {
  addSeparator(card);
  auto* const row = new QHBoxLayout;
  row->setContentsMargins(0, 10, 0, 10);
  row->setSpacing(16);
  auto* const words = new QVBoxLayout;
  words->setSpacing(2);
  auto* const name = new QLabel(title);
  name->setBuddy(control);
  words->addWidget(name);
  if (!caption.isEmpty()) words->addWidget(label(caption, "caption"));
  row->addLayout(words, 1);
  control->setAccessibleName(title);
  row->addWidget(control, 0, Qt::AlignVCenter);
  card.addLayout(row);
}

void addWideRow(QVBoxLayout& card, QWidget* control) {
  addSeparator(card);
  auto* const row = new QVBoxLayout;
  row->setContentsMargins(0, 10, 0, 10);
  row->addWidget(control);
  card.addLayout(row);
}

ToggleSwitch* addSwitch(QVBoxLayout& card, const QString& title, const QString& caption,
                        const std::function<void(bool)>& changed) {
  auto* const made = new ToggleSwitch;
  // Clicked and not toggled: only the user's doing counts.
  QObject::connect(made, &QAbstractButton::clicked, made, changed);
  addRow(card, title, caption, made);
  return made;
}

void leaveWheelToPage(QWidget& control) { control.installEventFilter(new WheelFilter(&control)); }

void ValueSlider::show(int number) const {
  const QSignalBlocker silence(slider);
  slider->setValue(number);
  value->setText(QString::number(number) + unit);
}

ValueSlider addSlider(QVBoxLayout& card, const QString& title, const QString& caption, int least,
                      int greatest, const QString& unit, const std::function<void(int)>& changed) {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(12);
  const ValueSlider made{new QSlider(Qt::Horizontal), label({}, "value"), unit};
  made.slider->setRange(least, greatest);
  made.slider->setFixedWidth(190);
  made.slider->setAccessibleName(title);
  leaveWheelToPage(*made.slider);
  made.value->setWordWrap(false);
  made.value->setMinimumWidth(52);
  made.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->addWidget(made.slider);
  row->addWidget(made.value);
  QObject::connect(made.slider, &QSlider::valueChanged, made.slider, [made, changed](int number) {
    made.value->setText(QString::number(number) + made.unit);
    changed(number);
  });
  addRow(card, title, caption, box);
  return made;
}

}  // namespace qb
