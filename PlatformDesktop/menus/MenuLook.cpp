#include "PlatformDesktop/menus/MenuLook.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/graphics/TextCache.h"

namespace qb {

namespace {

constexpr double titleSize = 14;
/// Left of all titles: room for the check mark.
constexpr int checkColumn = 22;
/// Of a picture in the check mark's place.
constexpr int stateImageEdge = 14;
constexpr int imageGap = 7;
/// Right of all titles: room for the arrow of a submenu.
constexpr int arrowColumn = 24;
constexpr int verticalPadding = 4;
/// Above and below a view.
constexpr int viewPadding = 3;
constexpr int separatorHeight = 9;
constexpr double highlightRadius = 4;
/// Under this lightness of its windows a desktop counts as dark.
constexpr int darkLightness = 128;

std::vector<AttributedString::Run> runsOf(const MenuItem& item) {
  if (!item.attributedTitle().isEmpty()) return item.attributedTitle().runs();
  return {{item.title(), Font::systemFontOfSize(titleSize)}};
}

/// A title is one line without gaps.
QString lineOf(const AttributedString::Run& run) {
  return qtString(run.text).replace('\t', ' ').replace('\n', ' ').replace('\r', ' ');
}

struct TextExtent {
  double width = 0, ascent = 0, descent = 0;
};

TextExtent extentOf(const std::vector<AttributedString::Run>& runs) {
  TextExtent extent;
  for (const auto& run : runs) {
    const QFontMetricsF metrics(qtFont(run.font));
    extent.width += metrics.horizontalAdvance(lineOf(run));
    extent.ascent = std::max(extent.ascent, metrics.ascent());
    extent.descent = std::max(extent.descent, metrics.descent());
  }
  return extent;
}

QSizeF imageSize(const MenuItem& item) {
  return item.image() ? QSizeF(item.image().size().width, item.image().size().height) : QSizeF();
}

/// Black is the colour of text that was given none: it follows the theme.
QColor colorOfRun(const Color& color, const QColor& themed) {
  const bool isBlack = color.red() == 0 && color.green() == 0 && color.blue() == 0;
  return isBlack ? themed : qtColor(color);
}

void drawCheckMark(QPainter& painter, const QRect& rect, const QColor& color) {
  const QPointF center(rect.left() + checkColumn / 2.0, rect.center().y() + 0.5);
  QPainterPath mark(center + QPointF(-4, 0.5));
  mark.lineTo(center + QPointF(-1, 3.5));
  mark.lineTo(center + QPointF(4.5, -4));
  painter.strokePath(mark, QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void drawArrow(QPainter& painter, const QRect& rect, const QColor& color) {
  const QPointF tip(rect.right() - 7, rect.center().y() + 0.5);
  QPainterPath arrow(tip + QPointF(-4, -4));
  arrow.lineTo(tip);
  arrow.lineTo(tip + QPointF(-4, 4));
  painter.strokePath(arrow, QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void drawImage(QPainter& painter, const QRectF& rect, const Image& image) {
  const auto source = std::dynamic_pointer_cast<const DesktopImage>(image.source());
  if (!source) return;
  const double scale = painter.device()->devicePixelRatioF();
  const QSize pixels = (rect.size() * scale).toSize().expandedTo({1, 1});
  QImage picture = source->scaled(pixels);
  picture.setDevicePixelRatio(scale);
  painter.drawImage(rect.topLeft(), picture);
}

void drawState(QPainter& painter, const QRect& rect, const MenuItem& item, const QColor& color) {
  if (!item.onStateImage()) return drawCheckMark(painter, rect, color);
  const QPointF corner(rect.left() + (checkColumn - stateImageEdge) / 2.0,
                       rect.top() + (rect.height() - stateImageEdge) / 2.0);
  drawImage(painter, {corner, QSizeF(stateImageEdge, stateImageEdge)}, item.onStateImage());
}

}  // namespace

const MenuColors& MenuColors::light() {
  static const MenuColors colors{.background = QColor(247, 247, 248),
                                 .border = QColor(0, 0, 0, 58),
                                 .text = QColor(28, 28, 30),
                                 .disabledText = QColor(150, 150, 155),
                                 .highlight = QColor(38, 112, 233),
                                 .highlightedText = Qt::white,
                                 .separator = QColor(0, 0, 0, 28)};
  return colors;
}

const MenuColors& MenuColors::dark() {
  static const MenuColors colors{.background = QColor(42, 43, 46),
                                 .border = QColor(255, 255, 255, 48),
                                 .text = QColor(236, 236, 238),
                                 .disabledText = QColor(126, 127, 132),
                                 .highlight = QColor(48, 110, 214),
                                 .highlightedText = Qt::white,
                                 .separator = QColor(255, 255, 255, 34)};
  return colors;
}

const MenuColors& MenuColors::current() {
  const QColor window = QGuiApplication::palette().color(QPalette::Window);
  return window.lightness() < darkLightness ? dark() : light();
}

QSize MenuLook::sizeOfItem(const MenuItem& item) {
  if (item.isSeparatorItem()) return {2 * checkColumn, separatorHeight};
  const TextExtent text = extentOf(runsOf(item));
  const QSizeF image = imageSize(item);
  double width = checkColumn + text.width + arrowColumn;
  if (item.image()) width += image.width() + (text.width > 0 ? imageGap : 0);
  const double height = std::max(text.ascent + text.descent, image.height());
  return {static_cast<int>(std::ceil(width)),
          static_cast<int>(std::ceil(height)) + 2 * verticalPadding};
}

QSize MenuLook::sizeOfView(const View& view) {
  const Size size = view.frame().size;
  return QSizeF(size.width, size.height + 2 * viewPadding).toSize();
}

void MenuLook::drawItem(QPainter& painter, const QRect& rect, const MenuItem& item,
                        bool highlighted) {
  const MenuColors& colors = MenuColors::current();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  if (item.isSeparatorItem()) {
    painter.fillRect(QRect(rect.left() + 6, rect.center().y(), rect.width() - 12, 1),
                     colors.separator);
    return;
  }
  if (highlighted) drawHighlight(painter, rect);
  QColor text = highlighted ? colors.highlightedText : colors.text;
  if (!item.isEnabled()) text = colors.disabledText;
  if (item.state()) drawState(painter, rect, item, text);
  if (item.submenu()) drawArrow(painter, rect, text);
  double x = rect.left() + checkColumn;
  if (item.image()) {
    const QSizeF image = imageSize(item);
    const double fraction = item.isEnabled() ? 1 : 0.5;
    painter.setOpacity(fraction);
    drawImage(painter, {{x, rect.top() + (rect.height() - image.height()) / 2}, image},
              item.image());
    painter.setOpacity(1);
    x += image.width() + imageGap;
  }
  const auto runs = runsOf(item);
  const TextExtent extent = extentOf(runs);
  const double baseline =
      std::round(rect.top() + (rect.height() - extent.ascent - extent.descent) / 2 + extent.ascent);
  for (const auto& run : runs) {
    const QString string = lineOf(run);
    painter.setFont(qtFont(run.font));
    painter.setPen(item.isEnabled() ? colorOfRun(run.color, text) : text);
    painter.drawText(QPointF(x, baseline), string);
    x += QFontMetricsF(painter.font()).horizontalAdvance(string);
  }
}

void MenuLook::drawHighlight(QPainter& painter, const QRect& rect) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(MenuColors::current().highlight);
  painter.drawRoundedRect(rect, highlightRadius, highlightRadius);
}

void MenuLook::drawPanel(QPainter& painter, const QRect& rect, bool rounded) {
  const MenuColors& colors = MenuColors::current();
  if (!rounded) {
    // Filled, not stroked: a stroke would stand half a device pixel off at larger scales.
    painter.fillRect(rect, colors.background);
    const QRect inner = rect.adjusted(1, 1, -1, -1);
    for (const QRect& edge : QRegion(rect) - inner) painter.fillRect(edge, colors.border);
    return;
  }
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(rect, Qt::transparent);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colors.border, 1));
  painter.setBrush(colors.background);
  painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

}  // namespace qb
