#pragma once

#include "QuillboxCommon/views/Button.h"

namespace qb {

/// A small button of a row that comes and goes by its alpha. At alpha 0 it takes no clicks: what
/// lies below it and can be seen gets them.
class RowButton : public Button {
 public:
  /// Hidden at alpha 0, with the image at `size`.
  RowButton(const Image& image, Size size);
  View* hitTest(Point point) override;
};

}  // namespace qb
