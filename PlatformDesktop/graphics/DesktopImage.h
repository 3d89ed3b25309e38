#pragma once

#include <QByteArray>
#include <QImage>
#include <functional>
#include <mutex>
#include <vector>

#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

/// The desktop's images: whatever can give its pixels in any size. The sizes drawn last are kept.
class DesktopImage : public ImageSource {
 public:
  explicit DesktopImage(Size naturalSize) : naturalSize_(naturalSize) {}
  Size naturalSize() const override { return naturalSize_; }

  /// The picture in exactly that many pixels, premultiplied. An empty size gives a null picture.
  /// Any thread, where the kind of image does not say otherwise.
  QImage scaled(const QSize& pixels) const;
  /// The pixels that it is made of, or one for each point.
  virtual QSize ownPixels() const;

 private:
  /// Makes the picture anew; never for an empty size, and on one thread at a time.
  virtual QImage render(const QSize& pixels) const = 0;

  Size naturalSize_;
  mutable std::mutex mutex_;
  mutable std::vector<QImage> drawn_;
};

/// A drawing in SVG, rendered for each size: crisp in all of them.
class SvgImage : public DesktopImage {
 public:
  /// Valid SVG, natural at the size that it states.
  explicit SvgImage(const QByteArray& svg);

 private:
  QImage render(const QSize& pixels) const override;

  QByteArray svg_;
};

/// A picture that a function draws, anew for each size. Main thread.
class DrawnImage : public DesktopImage {
 public:
  using Drawing = std::function<void(Canvas&)>;
  DrawnImage(Size naturalSize, Drawing drawing)
      : DesktopImage(naturalSize), drawing_(std::move(drawing)) {}

 private:
  QImage render(const QSize& pixels) const override;

  Drawing drawing_;
};

/// Renders SVG text at a size in pixels, keeping its proportions, centred. Null when it is no SVG.
/// Any thread.
QImage renderSvg(const QByteArray& svg, const QSize& pixels);
/// The size that an SVG states for itself; invalid when it is no SVG. Any thread.
QSize sizeOfSvg(const QByteArray& svg);

}  // namespace qb
