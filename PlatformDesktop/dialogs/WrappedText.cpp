#include "PlatformDesktop/dialogs/WrappedText.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextOption>
#include <cmath>

namespace qb {

WrappedText::WrappedText(const QString& text, const QFont& font, int width) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  document_.setDocumentMargin(0);
  document_.setDefaultFont(font);
  document_.setDefaultTextOption(option);
  document_.setPlainText(text);
  document_.setTextWidth(width);
  setFixedSize(width, static_cast<int>(std::ceil(document_.size().height())));
  setAccessibleName(text);
}

void WrappedText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette = palette();
  context.palette.setColor(QPalette::Text, palette().color(QPalette::WindowText));
  document_.documentLayout()->draw(&painter, context);
}

}  // namespace qb
