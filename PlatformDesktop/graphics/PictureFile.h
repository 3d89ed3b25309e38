#pragma once

#include <QImage>
#include <optional>
#include <string>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// What is in a picture file.
struct LoadedPicture {
  QImage pixels;
  /// In points.
  Size naturalSize;
};

/// How much of a picture is wanted.
struct PictureDetail {
  /// The size in points that it will be fitted into, never enlarged; none: all of its pixels.
  std::optional<Size> largest;
  /// The device pixels of a point.
  double scale = 1;
};

/// Reads an image file, or the first page of a PDF, by the file's extension. A pixel of an image is
/// a point; it stands upright as its camera was held. None when there is no plain file, or one that
/// cannot be read, is damaged, or decodes to more than 128 MiB. Any thread; may take seconds.
std::optional<LoadedPicture> loadPictureFile(const std::string& path, const PictureDetail& detail);

/// The same for the bytes of an image file.
std::optional<LoadedPicture> loadPictureData(const PropertyList::Data& data,
                                             const PictureDetail& detail);

/// Of such a file in all of its detail. No bytes for none.
PropertyList::Data pngOfPictureFile(const std::string& path);

/// The size at which a picture shows that is fitted into what is wanted.
Size shownSize(Size naturalSize, const PictureDetail& detail);

}  // namespace qb
