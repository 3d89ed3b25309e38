#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// A text in lines no wider than a page, broken after blanks or, where a word is wider than the
/// page, inside it. Each of "\n", "\r" and "\r\n" ends a line. A value that keeps the text.
class TextLayout {
 public:
  /// `width` in points, with a small margin on both sides.
  TextLayout(const AttributedString& text, double width, const TextMeasurer& measurer);

  /// The bottom of the lowest line with something in it, in whole points; 0 when there is none.
  std::int64_t naturalHeight() const;
  /// From the top left of the canvas.
  void draw(Canvas& canvas) const;

 private:
  /// Part of a line in one look.
  struct Piece {
    std::string text;
    double x;
    Size size;
    Font font;
    Color color;
  };
  struct Line {
    double y = 0, height = 0;
    std::vector<Piece> pieces;
  };

  void add(const AttributedString::Run& run, const TextMeasurer& measurer);
  void addWord(std::string_view word, const AttributedString::Run& run,
               const TextMeasurer& measurer);
  void addPiece(std::string_view text, const AttributedString::Run& run, Size size);
  void endLine(double emptyHeight);

  double width_;
  std::vector<Line> lines_{1};
  /// Where the next piece begins.
  double x_;
  bool followsReturn_ = false;
};

}  // namespace qb
