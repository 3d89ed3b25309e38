#pragma once

#include <QByteArray>
#include <QImage>
#include <memory>
#include <mutex>
#include <vector>

#include "QuillboxCommon/views/Image.h"

namespace qb {

/// The desktop's images: pixels in halving sizes, so that drawing one small never starts from a
/// large picture; the sizes drawn last are kept. Thread-safe.
class PixelImage : public ImageSource {
 public:
  /// `pixels` with the size in points at which it is natural.
  PixelImage(QImage pixels, Size naturalSize);
  Size naturalSize() const override { return naturalSize_; }

  /// The picture in exactly that many pixels, premultiplied. An empty size gives a null picture.
  QImage scaled(const QSize& pixels) const;

 private:
  Size naturalSize_;
  /// From large to small.
  std::vector<QImage> levels_;
  mutable std::mutex mutex_;
  mutable std::vector<QImage> drawn_;
};

/// Renders SVG text at a size in pixels, keeping its proportions, centred. Null when it is no SVG.
/// Any thread.
QImage renderSvg(const QByteArray& svg, const QSize& pixels);
/// The size that an SVG states for itself; invalid when it is no SVG. Any thread.
QSize sizeOfSvg(const QByteArray& svg);

}  // namespace qb
