#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"

namespace qb {

/// The pixels behind an image, known only to the platform that made them. Immutable, shared.
class ImageSource {
 public:
  virtual ~ImageSource() = default;
  /// The size in points at which it was made.
  virtual Size naturalSize() const = 0;
};

/// A picture with the size in points at which it is drawn. A value: copies share the pixels.
class Image {
 public:
  Image() = default;
  explicit Image(std::shared_ptr<const ImageSource> source)
      : source_(std::move(source)), size_(source_ ? source_->naturalSize() : Size{}) {}

  explicit operator bool() const { return source_ != nullptr; }
  const std::shared_ptr<const ImageSource>& source() const { return source_; }
  Size size() const { return size_; }
  void setSize(Size size) { size_ = size; }
  Image withSize(Size size) const {
    Image copy = *this;
    copy.size_ = size;
    return copy;
  }
  friend bool operator==(const Image&, const Image&) = default;

 private:
  std::shared_ptr<const ImageSource> source_;
  Size size_;
};

}  // namespace qb
