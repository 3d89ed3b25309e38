#include "QuillboxCommon/views/LabelView.h"

#include <algorithm>

namespace qb {
namespace {

bool endsLine(char byte) { return byte == '\n' || byte == '\r'; }

}  // namespace

LabelView::LabelView(const TextMeasurer& measurer, const Rect& frame)
    : RoundedRectangleView(frame), measurer_(measurer) {}

void LabelView::draw(Canvas& canvas) {
  RoundedRectangleView::draw(canvas);
  if (text_.empty()) return;
  const Rect rect = textRect();
  if (shadowed_) {
    canvas.drawText(text_, offset(rect, 1, 1), font_, shadowColor_, horizontalAlignment_);
  }
  canvas.drawText(text_, rect, font_, textColor_, horizontalAlignment_);
}

Rect LabelView::textRect() const {
  const Rect all = bounds();
  const double shift = (all.height() - (textSize_.height + 1)) / 2;
  return Rect::make(0, shift, all.width(), all.height() - shift);
}

Rect LabelView::drawnArea() const {
  const Rect background = RoundedRectangleView::drawnArea();
  if (text_.empty()) return background;
  const Rect rect = textRect();
  double left = 0;
  if (horizontalAlignment_ == TextAlignmentRight) left = rect.width() - textSize_.width;
  if (horizontalAlignment_ == TextAlignmentCenter) left = (rect.width() - textSize_.width) / 2;
  const double shadow = shadowed_ ? 1 : 0;
  return unionOf(background,
                 Rect::make(left, rect.y(), textSize_.width + shadow, textSize_.height + shadow));
}

void LabelView::measure() {
  textSize_ = measurer_.measureText(text_, font_);
  textSize_.height *= static_cast<double>(1 + std::count_if(text_.begin(), text_.end(), endsLine));
}

void LabelView::setText(const std::string& text) {
  if (text == text_) return;
  setNeedsDisplay();
  text_ = text;
  measure();
  setNeedsDisplay();
}

void LabelView::setFont(const Font& font) {
  if (font == font_) return;
  setNeedsDisplay();
  font_ = font;
  measure();
  setNeedsDisplay();
}

void LabelView::setTextColor(const Color& color) {
  if (color == textColor_) return;
  textColor_ = color;
  setNeedsDisplay();
}

void LabelView::setShadowColor(const Color& color) {
  if (color == shadowColor_) return;
  shadowColor_ = color;
  if (shadowed_) setNeedsDisplay();
}

void LabelView::setShadowed(bool shadowed) {
  if (shadowed == shadowed_) return;
  setNeedsDisplay();
  shadowed_ = shadowed;
  setNeedsDisplay();
}

void LabelView::setHorizontalAlignment(TextAlignment alignment) {
  if (alignment == horizontalAlignment_) return;
  setNeedsDisplay();
  horizontalAlignment_ = alignment;
  setNeedsDisplay();
}

}  // namespace qb
