#include "QuillboxCommon/views/ImageView.h"

#include <algorithm>

namespace qb {

void ImageView::draw(Canvas& canvas) { drawImage(canvas, 1); }

void ImageView::drawImage(Canvas& canvas, double fraction) const {
  const Size natural = image_.size();
  const Rect all = bounds();
  if (!image_ || natural.width <= 0 || natural.height <= 0) return;
  if (scaling_ == ImageScaleAxesIndependently) {
    canvas.drawImage(image_, all, CompositingOperation::SourceOver, fraction);
    return;
  }
  if (scaling_ == ImageScaleProportionallyDown) {
    const double scale =
        std::min({1.0, all.width() / natural.width, all.height() / natural.height});
    const Size fitted{natural.width * scale, natural.height * scale};
    canvas.drawImage(image_, centered(fitted, all), CompositingOperation::SourceOver, fraction);
    return;
  }
  const Rect rect = centered(natural, all);
  const bool sticksOut = !contains(all, rect);
  if (sticksOut) {
    canvas.save();
    canvas.clip(all);
  }
  canvas.drawImage(image_, rect, CompositingOperation::SourceOver, fraction);
  if (sticksOut) canvas.restore();
}

void ImageView::setImage(const Image& image) {
  if (image == image_) return;
  image_ = image;
  setNeedsDisplay();
}

void ImageView::setImageSize(Size size) { setImage(image_.withSize(size)); }

void ImageView::setImageScaling(ImageScaling scaling) {
  if (scaling == scaling_) return;
  scaling_ = scaling;
  setNeedsDisplay();
}

}  // namespace qb
