#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// Text measurement and where pictures come from. Main thread.
class Graphics : public TextMeasurer {
 public:
  /// An image of the program's own resources by its name without extension; an empty one when
  /// there is none of that name.
  virtual Image imageNamed(const std::string& name) = 0;
  /// The names, in the order of their bytes, of those images that begin with `prefix`.
  virtual std::vector<std::string> imageNames(std::string_view prefix) const = 0;
  /// A picture of that many points, made by `draw` on a canvas with the origin at the picture's top
  /// left; an empty one for an empty size. Intended: `draw` is kept and runs when and as often as
  /// the picture is wanted in another resolution, at once or never. So it owns what it draws, and
  /// draws the same each time.
  virtual Image imageWithSize(Size size, std::function<void(Canvas&)> draw) = 0;
  /// The picture in the bytes of a file such as PNG, JPEG or TIFF, a point for each of its pixels;
  /// an empty one when there is none in them. Fitted into `largest` points, where that is given, it
  /// shows all detail; no more than that is kept.
  virtual Image imageWithData(const PropertyList::Data& data,
                              std::optional<Size> largest = std::nullopt) = 0;
  /// The image as a PNG file, in the pixels that it is made of or, where it has none of its own,
  /// one for each point of its natural size. None for an empty image.
  virtual std::optional<PropertyList::Data> pngDataOfImage(const Image& image) const = 0;
  /// The icon of a file or application. Answers at once, never touches the disk on the way: what it
  /// has, or a generic icon; the true one then comes through `update` (if given) on the main
  /// thread, once, and is kept for the next time.
  virtual Image iconForFile(const std::string& path, std::function<void(const Image&)> update) = 0;
  /// What is kept for a path is kept no longer: the file has gone, or is another one now. Nothing
  /// for a path without an icon.
  virtual void freeIconForFile(const std::string& path) = 0;
  /// `NSImage initWithContentsOfFile`, of an image or of the first page of a PDF: natural at its
  /// own size, where a pixel is a point and a page has its points. It is read and decoded
  /// elsewhere, in no more detail than shows when it is fitted into `largest` points. `completion`
  /// gets it on the main thread, once, later than the call: an empty image for what is missing, no
  /// plain file, not to be read, damaged or too large to be kept.
  virtual void loadImageOfFile(const std::string& path, Size largest,
                               std::function<void(const Image&)> completion) = 0;
  /// The picture in an image file in all of its detail, as PNG; no bytes where the other gives an
  /// empty image.
  virtual void loadPNGDataOfFile(const std::string& path,
                                 std::function<void(const PropertyList::Data&)> completion) = 0;
};

}  // namespace qb
