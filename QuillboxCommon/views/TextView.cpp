#include "QuillboxCommon/views/TextView.h"

namespace qb {

TextView::TextView(const TextMeasurer& measurer, const Rect& frame)
    : View(frame), measurer_(measurer) {}

void TextView::setFrame(const Rect& newFrame) {
  if (newFrame.width() != frame().width()) layout_.reset();
  View::setFrame(newFrame);
}

void TextView::setText(const AttributedString& text) {
  if (text == text_) return;
  text_ = text;
  layout_.reset();
  setNeedsDisplay();
}

void TextView::setBackgroundColor(const Color& color) {
  if (color == backgroundColor_) return;
  backgroundColor_ = color;
  setNeedsDisplay();
}

double TextView::naturalHeight() { return static_cast<double>(layout().naturalHeight()); }

const TextLayout& TextView::layout() {
  if (!layout_) layout_.emplace(text_, bounds().width(), measurer_);
  return *layout_;
}

void TextView::draw(Canvas& canvas) {
  canvas.fill(bounds(), backgroundColor_);
  canvas.save();
  canvas.clip(bounds());
  layout().draw(canvas);
  canvas.restore();
}

}  // namespace qb
