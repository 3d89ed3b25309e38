#pragma once

#include <memory>
#include <string_view>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb::test {

/// A picture of a size and nothing else; each call makes another.
inline Image imageOfSize(double width, double height) {
  struct Source : ImageSource {
    explicit Source(Size given) : size(given) {}
    Size naturalSize() const override { return size; }
    Size size;
  };
  return Image(std::make_shared<Source>(Size{width, height}));
}

/// Each byte is half the font's size wide, a line as high as the font's size.
class PlainMeasurer : public TextMeasurer {
 public:
  Size measureText(std::string_view text, const Font& font) const override {
    return {static_cast<double>(text.size()) * font.size / 2, font.size};
  }
};

}  // namespace qb::test
