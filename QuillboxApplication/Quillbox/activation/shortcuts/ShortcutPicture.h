#pragma once

#include <string>
#include <vector>

#include "QuillboxCommon/views/Image.h"

namespace qb {

class Graphics;

/// A picture of keys side by side, in the middle, to be read on light and dark grounds alike. Keys
/// that would not fit are drawn smaller.
Image pictureOfKeys(const std::vector<std::string>& keyCaps, Size size, Graphics& graphics);

}  // namespace qb
