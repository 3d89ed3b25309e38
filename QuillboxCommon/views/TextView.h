#pragma once

#include <optional>

#include "QuillboxCommon/views/TextLayout.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

/// Shows a text in as many lines as its width makes of it, from the top, on a ground of one colour.
/// What is higher than the view is cut off.
class TextView : public View {
 public:
  /// The measurer must outlive the view.
  explicit TextView(const TextMeasurer& measurer, const Rect& frame = {});
  bool isFlipped() const override { return true; }
  void setFrame(const Rect& frame) override;
  void draw(Canvas& canvas) override;

  const AttributedString& text() const { return text_; }
  void setText(const AttributedString& text);
  const Color& backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const Color& color);
  /// The height at which all of the text shows in the present width; 0 for an empty text.
  double naturalHeight();

 private:
  const TextLayout& layout();

  const TextMeasurer& measurer_;
  AttributedString text_;
  Color backgroundColor_ = Color::white();
  /// None when it is out of date.
  std::optional<TextLayout> layout_;
};

}  // namespace qb
