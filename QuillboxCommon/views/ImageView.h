#pragma once

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

/// How an image is fitted into a view.
enum ImageScaling : unsigned {
  ImageScaleProportionallyDown = 0,
  ImageScaleAxesIndependently = 1,
  ImageScaleNone = 2,
};

/// Shows one image, centred in its bounds and never outside of them.
class ImageView : public View {
 public:
  explicit ImageView(const Rect& frame = {}) : View(frame) {}
  void draw(Canvas& canvas) override;

  const Image& image() const { return image_; }
  void setImage(const Image& image);
  /// The size at which the image is drawn before scaling.
  void setImageSize(Size size);
  ImageScaling imageScaling() const { return scaling_; }
  void setImageScaling(ImageScaling scaling);

 protected:
  /// Draws the image with an opacity from 0 to 1.
  void drawImage(Canvas& canvas, double fraction) const;

 private:
  Image image_;
  ImageScaling scaling_ = ImageScaleProportionallyDown;
};

}  // namespace qb
