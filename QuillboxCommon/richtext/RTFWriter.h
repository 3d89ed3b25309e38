#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/views/Text.h"

namespace qb {

/// Writes one document, once.
class RTFWriter {
 public:
  std::string write(const AttributedString& text);

 private:
  struct Components {
    int red, green, blue;
    friend bool operator==(const Components&, const Components&) = default;
  };

  void writeColors();
  void writeAppearance(const Font& font, std::size_t color);
  void writeText(std::string_view text);
  void writeCharacter(char32_t character);
  /// The place in the table of colours, which is made with all that occur; 0 is black.
  std::size_t indexOfColor(const Color& color);

  std::string rtf_;
  std::vector<Components> colors_;
  bool followsReturn_ = false;
};

}  // namespace qb
