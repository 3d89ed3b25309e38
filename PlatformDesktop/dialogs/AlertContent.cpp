#include "PlatformDesktop/dialogs/AlertContent.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/dialogs/KeyRecorderView.h"
#include "PlatformDesktop/dialogs/WrappedText.h"
#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

constexpr int margin = 20, spacing = 16, iconEdge = 64;
constexpr int smallestTextWidth = 360;
/// How much of the screen's height a text may take before it scrolls.
constexpr double largestTextShare = 0.5;

/// An image in its middle, sharp at every scale.
class PictureView : public QWidget {
 public:
  PictureView(const Image& image, Size imageSize, Size size, bool caution = false)
      : image_(image), imageSize_(imageSize), caution_(caution) {
    setFixedSize(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRectF place((width() - imageSize_.width) / 2, (height() - imageSize_.height) / 2,
                       imageSize_.width, imageSize_.height);
    if (const auto* pixels = dynamic_cast<const DesktopImage*>(image_.source().get())) {
      const QSize size = (place.size() * devicePixelRatioF()).toSize();
      painter.drawImage(place, pixels->scaled(size));
    }
    if (caution_) drawCaution(painter);
  }

 private:
  /// In the lower right corner.
  void drawCaution(QPainter& painter) const {
    const double edge = width() * 0.46;
    const QRectF place(width() - edge, height() - edge, edge, edge);
    QPainterPath triangle;
    triangle.moveTo(place.center().x(), place.top() + 1);
    triangle.lineTo(place.right() - 1, place.bottom() - 2);
    triangle.lineTo(place.left() + 1, place.bottom() - 2);
    triangle.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(150, 100, 0), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(255, 204, 51));
    painter.drawPath(triangle);
    painter.setPen(QPen(QColor(60, 40, 0), edge * 0.1, Qt::SolidLine, Qt::RoundCap));
    const double x = place.center().x();
    painter.drawLine(QPointF(x, place.top() + edge * 0.38), QPointF(x, place.top() + edge * 0.62));
    painter.drawPoint(QPointF(x, place.top() + edge * 0.8));
  }

  Image image_;
  Size imageSize_;
  bool caution_;
};

QString textOf(const std::string& text) {
  QString result = qtString(text);
  return result.replace(u'\r', u'\n');
}

QSize qtSize(Size size) {
  return {static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height))};
}

}  // namespace

AlertContent::AlertContent(Alert& alert, const Image& logo,
                           const std::function<void(std::int32_t)>& respond)
    : alert_(alert) {
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(margin, margin, margin, margin);
  grid->setHorizontalSpacing(spacing);
  grid->setVerticalSpacing(spacing);
  grid->addWidget(makeIcon(logo), 0, 0, alert_.accessoryView ? 2 : 1, 1, Qt::AlignTop);
  grid->addWidget(makeText(), 0, 1, Qt::AlignTop | Qt::AlignLeft);
  int row = 1;
  if (alert_.accessoryView) grid->addWidget(makeAccessory(), row++, 1, Qt::AlignLeft);
  grid->addWidget(makeButtons(respond), row, 0, 1, 2);
}

int AlertContent::textWidth() const {
  const int accessory = alert_.accessoryView ? qtSize(alert_.accessoryView->size()).width() : 0;
  return std::max(smallestTextWidth, accessory);
}

QWidget* AlertContent::makeIcon(const Image& logo) const {
  const Size size{iconEdge, iconEdge};
  return new PictureView(alert_.icon ? alert_.icon : logo, size, size,
                         alert_.style == AlertStyleCritical);
}

QWidget* AlertContent::makeText() {
  auto* const texts = new QWidget;
  auto* const column = new QVBoxLayout(texts);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  QFont bold = font();
  bold.setBold(true);
  column->addWidget(new WrappedText(textOf(alert_.messageText), bold, textWidth()));
  if (alert_.informativeText.empty()) return texts;
  auto* const text = new WrappedText(textOf(alert_.informativeText), font(), textWidth());
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const int largest =
      screen ? static_cast<int>(screen->availableGeometry().height() * largestTextShare)
             : text->height();
  if (text->height() <= largest) {
    column->addWidget(text);
    return texts;
  }
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidget(text);
  // The window's own ground shows.
  text->setAutoFillBackground(false);
  area->viewport()->setAutoFillBackground(false);
  area->setFixedSize(text->width() + area->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4,
                     largest);
  column->addWidget(area);
  return texts;
}

QWidget* AlertContent::makeAccessory() {
  DialogControl& control = *alert_.accessoryView;
  if (auto* const field = dynamic_cast<DialogTextField*>(&control)) {
    auto* const line = new QLineEdit(qtString(field->stringValue()));
    line->setFixedWidth(qtSize(field->size()).width());
    line->setMinimumHeight(qtSize(field->size()).height());
    line->selectAll();
    connect(line, &QLineEdit::textChanged, this,
            [field](const QString& text) { field->setStringValue(text.toStdString()); });
    initialFocus_ = line;
    return line;
  }
  if (const auto* const image = dynamic_cast<const DialogImage*>(&control)) {
    return new PictureView(image->image(), image->image().size(), image->size());
  }
  if (auto* const recorder = dynamic_cast<DialogKeyRecorder*>(&control)) {
    recorderView_ = new KeyRecorderView(*recorder);
    initialFocus_ = recorderView_;
    return recorderView_;
  }
  auto* const spacer = new QWidget;
  spacer->setFixedSize(qtSize(control.size()));
  return spacer;
}

void AlertContent::refreshRecorder() {
  if (recorderView_ != nullptr) recorderView_->refresh();
}

QWidget* AlertContent::makeButtons(const std::function<void(std::int32_t)>& respond) {
  auto* const buttons = new QWidget;
  auto* const row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 4, 0, 0);
  row->setSpacing(10);
  QWidget* next = nullptr;
  for (std::size_t index = 0; index < alert_.buttons.size(); ++index) {
    const Alert::Button& button = alert_.buttons[index];
    // In titles "&" would mean a shortcut.
    auto* const push = new QPushButton(qtString(button.title).replace("&", "&&"));
    push->setDefault(index == 0);
    connect(push, &QPushButton::clicked, this,
            [respond, response = button.response] { respond(response); });
    row->insertWidget(0, push);
    if (index == 0 && initialFocus_ == nullptr) initialFocus_ = push;
    if (next != nullptr) QWidget::setTabOrder(next, push);
    next = push;
  }
  row->insertStretch(0);
  return buttons;
}

}  // namespace qb
