#pragma once

#include <functional>
#include <optional>
#include <string>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

class Canvas;
class FileSystem;
class Graphics;

/// Where items get their pictures. All images are values: whatever makes one from another leaves
/// that as it is. Main thread.
class ImageManager {
 public:
  using UpdateBlock = std::function<void(const Image&)>;

  /// Both must outlive it.
  ImageManager(Graphics& graphics, FileSystem& fileSystem)
      : graphics_(graphics), fileSystem_(fileSystem) {}

  /// Answers at once; a better image, if there is one, comes through the block later. The block may
  /// be empty.
  Image iconForFile(const std::string& path, UpdateBlock updateBlock);
  /// The file has moved or gone, or its icon is out of date.
  void freeIconForFile(const std::string& path);
  Image iconForMissingFile();

  /// `image` at `size`, its opaque parts tinted and the badge in its lower right. A badge of more
  /// than 64 points is scaled down until its shorter side has 64; intended. Its left edge is always
  /// 64 points from the image's right one. With neither tint nor badge, the image as it is.
  Image decoratedImageOfImage(const Image& image, Size withSize,
                              const std::optional<Color>& withTint, const Image& badge);
  /// `image` with the other in front of it, at its own size; the location is that of its lower left
  /// corner, counted from the lower left.
  Image compositedImageOfImage(const Image& image, const Image& beneathImage, Point atLocation);
  Image flippedImage(const Image& image, bool vertically, bool horizontally);
  /// Shrinks the size, in proportion, until it fits. Intended: never enlarges anything, not even
  /// where that is allowed.
  static void scaleImage(Image& image, Size toMaximimumSize, bool upScalingAllowed);
  /// The shadow that pictures of things cast within an icon: soft, and straight down.
  static void setIconShadow(Canvas& canvas);
  /// As a PNG file. False for an empty image, and when it cannot be written.
  bool saveImageToDiskWithPath(const Image& image, const std::string& path);

 private:
  Graphics& graphics_;
  FileSystem& fileSystem_;
};

}  // namespace qb
