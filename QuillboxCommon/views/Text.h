#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"

namespace qb {

/// A font of the system family.
struct Font {
  double size = 14;
  bool bold = false;
  bool italic = false;

  static Font systemFontOfSize(double size) { return {size}; }
  static Font boldSystemFontOfSize(double size) { return {size, true}; }
  friend bool operator==(const Font&, const Font&) = default;
};

/// The values are those of the settings of label views.
enum TextAlignment : unsigned {
  TextAlignmentLeft = 0,
  TextAlignmentRight = 1,
  TextAlignmentCenter = 2,
};

/// Measures text as the platform will draw it.
class TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;
  /// Width and line height in points of one line; a text of several lines is as wide as the
  /// widest. Main thread.
  virtual Size measureText(std::string_view text, const Font& font) const = 0;
};

/// Text in runs of one font and colour each.
class AttributedString {
 public:
  struct Run {
    std::string text;
    Font font;
    Color color = Color::black();
    friend bool operator==(const Run&, const Run&) = default;
  };
  void append(std::string text, Font font, Color color = Color::black()) {
    runs_.push_back({std::move(text), font, color});
  }
  const std::vector<Run>& runs() const { return runs_; }
  std::string string() const;
  bool isEmpty() const { return runs_.empty(); }
  /// In characters, as the range of the next.
  std::size_t length() const;
  /// What of the range there is.
  AttributedString attributedSubstringFromRange(std::size_t location, std::size_t length) const;
  friend bool operator==(const AttributedString&, const AttributedString&) = default;

 private:
  std::vector<Run> runs_;
};

}  // namespace qb
