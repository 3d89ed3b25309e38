#pragma once

#include "Platform/WindowPictures.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

class Quillbox;

/// Asks for an image that is as large as its picture and no larger than this.
struct MaximumSize {
  Size size;
};

/// Small pictures of the windows of other programs. They are never larger than the windows. Main
/// thread.
class WindowImages {
 public:
  explicit WindowImages(Quillbox& facade) : facade_(facade) {}

  /// An image of just `size` with the picture in its middle, over the shadow of icons. `margin`
  /// points stay free on each side of the picture. Where there is no picture, or the window is too
  /// small for one to tell anything, a copy of the default image, no larger than `size`.
  Image generateWindowImageWithID(WindowID window, Size size, double margin,
                                  const Image& defaultImage) const;
  /// The same without shadow, and with nothing around the picture but the margin.
  Image generateWindowImageWithID(WindowID window, MaximumSize maximumSize, double margin,
                                  const Image& defaultImage) const;

 private:
  /// The picture at the size at which it is drawn, or an empty one.
  Image fittedPicture(WindowID window, Size wanted) const;
  static Image scaledDefault(const Image& defaultImage, Size wanted);

  Quillbox& facade_;
};

}  // namespace qb
