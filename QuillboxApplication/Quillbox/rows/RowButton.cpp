#include "Quillbox/rows/RowButton.h"

namespace qb {

RowButton::RowButton(const Image& image, Size size) : Button({{0, 0}, size}) {
  setImage(image.withSize(size));
  setHidden(true);
  setAlphaValue(0);
}

View* RowButton::hitTest(Point point) {
  return alphaValue() > 0 ? Button::hitTest(point) : nullptr;
}

}  // namespace qb
