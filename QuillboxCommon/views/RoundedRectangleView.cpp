#include "QuillboxCommon/views/RoundedRectangleView.h"

#include <algorithm>

namespace qb {

void RoundedRectangleView::draw(Canvas& canvas) {
  const Rect inner = qb::inset(bounds(), inset_.width, inset_.height);
  if (renderBackground_) canvas.fill(Path::roundedRect(inner, cornerRadius_), backgroundColor_);
  if (!renderBorder_) return;
  const Rect line = qb::inset(inner, borderWidth_ - 2, borderWidth_ - 2);
  canvas.stroke(Path::roundedRect(line, cornerRadius_), borderColor_, borderWidth_);
}

Rect RoundedRectangleView::drawnArea() const {
  if (!renderBorder_) return bounds();
  // Half of the line lies outside of its path.
  const double outside = 2 - borderWidth_ / 2;
  return qb::inset(bounds(), std::min(0.0, inset_.width - outside),
                   std::min(0.0, inset_.height - outside));
}

void RoundedRectangleView::setCornerRadius(double radius) {
  if (radius == cornerRadius_) return;
  cornerRadius_ = radius;
  setNeedsDisplay();
}

void RoundedRectangleView::setInset(Size inset) {
  if (inset == inset_) return;
  setNeedsDisplay();
  inset_ = inset;
  setNeedsDisplay();
}

void RoundedRectangleView::setRenderBackground(bool render) {
  if (render == renderBackground_) return;
  renderBackground_ = render;
  setNeedsDisplay();
}

void RoundedRectangleView::setRenderBorder(bool render) {
  if (render == renderBorder_) return;
  setNeedsDisplay();
  renderBorder_ = render;
  setNeedsDisplay();
}

void RoundedRectangleView::setBorderWidth(double width) {
  if (width == borderWidth_) return;
  setNeedsDisplay();
  borderWidth_ = width;
  setNeedsDisplay();
}

void RoundedRectangleView::setBackgroundColor(const Color& color) {
  if (color == backgroundColor_) return;
  backgroundColor_ = color;
  setNeedsDisplay();
}

void RoundedRectangleView::setBorderColor(const Color& color) {
  if (color == borderColor_) return;
  borderColor_ = color;
  setNeedsDisplay();
}

}  // namespace qb
