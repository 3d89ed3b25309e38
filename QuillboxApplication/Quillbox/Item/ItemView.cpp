#include "Quillbox/Item/ItemView.h"

namespace qb {

void ItemView::setFrame(const Rect& frame) {
  ImageView::setFrame(frame);
  // An animated change comes in steps, and the picture has to keep up with each of them.
  setImageSize(frame.size);
}

}  // namespace qb
