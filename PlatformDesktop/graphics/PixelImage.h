#pragma once

#include <QImage>
#include <vector>

#include "PlatformDesktop/graphics/DesktopImage.h"

namespace qb {

/// An image of given pixels, in halving sizes, so that drawing it small never starts from a large
/// picture. Any thread.
class PixelImage : public DesktopImage {
 public:
  /// `pixels` with the size in points at which it is natural.
  PixelImage(QImage pixels, Size naturalSize);
  QSize ownPixels() const override { return levels_.front().size(); }

 private:
  QImage render(const QSize& pixels) const override;

  /// From large to small.
  std::vector<QImage> levels_;
};

}  // namespace qb
