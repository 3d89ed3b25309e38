#pragma once

#include <functional>
#include <string>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// Text measurement and where pictures come from. Main thread.
class Graphics : public TextMeasurer {
 public:
  /// An image of the program's own resources by its name without extension; an empty one when
  /// there is none of that name.
  virtual Image imageNamed(const std::string& name) = 0;
  /// The icon of a file or application. Answers at once, never touches the disk on the way: what it
  /// has, or a generic icon; the true one then comes through `update` (if given) on the main
  /// thread, once, and is kept for the next time.
  virtual Image iconForFile(const std::string& path, std::function<void(const Image&)> update) = 0;
};

}  // namespace qb
