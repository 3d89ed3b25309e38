#pragma once

#include <functional>
#include <string>

#include "QuillboxCommon/views/Image.h"

namespace qb {

class Graphics;

/// Where items get their pictures. Main thread.
class ImageManager {
 public:
  using UpdateBlock = std::function<void(const Image&)>;

  explicit ImageManager(Graphics& graphics) : graphics_(graphics) {}

  /// Answers at once; a better image, if there is one, comes through the block later. The block may
  /// be empty.
  Image iconForFile(const std::string& path, UpdateBlock updateBlock);

 private:
  Graphics& graphics_;
};

}  // namespace qb
