#include "Quillbox/managers/ImageManager.h"

#include <utility>

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"

namespace qb {

namespace {

/// What a badge has in an icon of usual size: a quarter of it.
constexpr double badgeEdge = 64;

Size multiplied(Size size, double factor) { return {size.width * factor, size.height * factor}; }

Size sizeOfBadge(Size size) {
  double factor = 0;
  if (size.height > badgeEdge) factor = badgeEdge / size.height;
  if (size.width > badgeEdge && badgeEdge / size.width > factor) factor = badgeEdge / size.width;
  return factor == 0 ? size : multiplied(size, factor);
}

}  // namespace

Image ImageManager::iconForFile(const std::string& path, UpdateBlock updateBlock) {
  return graphics_.iconForFile(path, std::move(updateBlock));
}

void ImageManager::freeIconForFile(const std::string& path) { graphics_.freeIconForFile(path); }

Image ImageManager::iconForMissingFile() { return graphics_.imageNamed("UnknownFile"); }

Image ImageManager::decoratedImageOfImage(const Image& image, Size withSize,
                                          const std::optional<Color>& withTint,
                                          const Image& badge) {
  if (!withTint && !badge) return image;
  return graphics_.imageWithSize(withSize, [=](Canvas& canvas) {
    const Rect all{{0, 0}, withSize};
    canvas.drawImage(image, all);
    if (withTint) canvas.fillUsingOperation(all, *withTint, CompositingOperation::SourceAtop);
    if (!badge) return;
    const Size size = sizeOfBadge(badge.size());
    canvas.drawImage(badge, {{withSize.width - badgeEdge, withSize.height - size.height}, size});
  });
}

Image ImageManager::compositedImageOfImage(const Image& image, const Image& beneathImage,
                                           Point atLocation) {
  return graphics_.imageWithSize(image.size(), [=](Canvas& canvas) {
    const Size size = image.size(), front = beneathImage.size();
    canvas.drawImage(image, {{0, 0}, size});
    canvas.drawImage(beneathImage,
                     {{atLocation.x, size.height - atLocation.y - front.height}, front});
  });
}

Image ImageManager::flippedImage(const Image& image, bool vertically, bool horizontally) {
  return graphics_.imageWithSize(image.size(), [=](Canvas& canvas) {
    const Size size = image.size();
    canvas.translate(horizontally ? size.width : 0, vertically ? size.height : 0);
    canvas.scale(horizontally ? -1 : 1, vertically ? -1 : 1);
    canvas.drawImage(image, {{0, 0}, size});
  });
}

void ImageManager::scaleImage(Image& image, Size toMaximimumSize, bool /*upScalingAllowed*/) {
  Size size = image.size();
  if (size.width > toMaximimumSize.width) {
    size = multiplied(size, static_cast<float>(toMaximimumSize.width / size.width));
  }
  if (size.height > toMaximimumSize.height) {
    size = multiplied(size, static_cast<float>(toMaximimumSize.height / size.height));
  }
  image.setSize(size);
}

void ImageManager::setIconShadow(Canvas& canvas) {
  canvas.setShadow({Color::black().withAlpha(0.33), {0, 4}, 3});
}

bool ImageManager::saveImageToDiskWithPath(const Image& image, const std::string& path) {
  const auto png = graphics_.pngDataOfImage(image);
  return png && fileSystem_.writeDataToFile(*png, path);
}

}  // namespace qb
