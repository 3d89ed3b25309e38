#include "Quillbox/activation/utilities/WindowImages.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ImageManager.h"

namespace qb {

namespace {

/// What is not longer in both directions is no window that a user would know again.
constexpr double smallestWindowSide = 20;

Size fitted(Size size, Size wanted) {
  if (size.height > wanted.height) {
    size = {size.width * (wanted.height / size.height), wanted.height};
  }
  if (size.width > wanted.width) {
    size = {wanted.width, size.height * (wanted.width / size.width)};
  }
  return size;
}

}  // namespace

Image WindowImages::generateWindowImageWithID(WindowID window, Size size, double margin,
                                              const Image& defaultImage) const {
  const Image picture = fittedPicture(window, size);
  if (!picture) return scaledDefault(defaultImage, size);
  const Rect frame = inset(centered(picture.size(), {{0, 0}, size}), margin, margin);
  return facade_.platform().graphics().imageWithSize(size, [picture, frame](Canvas& canvas) {
    ImageManager::setIconShadow(canvas);
    canvas.drawImage(picture, frame, CompositingOperation::Copy, 1);
  });
}

Image WindowImages::generateWindowImageWithID(WindowID window, MaximumSize maximumSize,
                                              double margin, const Image& defaultImage) const {
  const Image picture = fittedPicture(window, maximumSize.size);
  if (!picture) return scaledDefault(defaultImage, maximumSize.size);
  const Size size = picture.size();
  const Rect frame = inset({{0, 0}, size}, margin, margin);
  return facade_.platform().graphics().imageWithSize(size, [picture, frame](Canvas& canvas) {
    canvas.drawImage(picture, frame, CompositingOperation::Copy, 1);
  });
}

Image WindowImages::fittedPicture(WindowID window, Size wanted) const {
  const Image picture = facade_.platform().windowPictures().imageOfWindow(window, wanted);
  const Size size = picture.size();
  if (!(size.height > smallestWindowSide && size.width > smallestWindowSide)) return {};
  return picture.withSize(fitted(size, wanted));
}

Image WindowImages::scaledDefault(const Image& defaultImage, Size wanted) {
  Image copy = defaultImage;
  if (copy) ImageManager::scaleImage(copy, wanted, true);
  return copy;
}

}  // namespace qb
