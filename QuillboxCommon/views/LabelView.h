#pragma once

#include <string>

#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

/// One piece of text, vertically centred over a rounded background, with a hard shadow if wanted.
class LabelView : public RoundedRectangleView {
 public:
  /// The measurer must outlive the view.
  explicit LabelView(const TextMeasurer& measurer, const Rect& frame = {});
  void draw(Canvas& canvas) override;
  Rect drawnArea() const override;

  const std::string& text() const { return text_; }
  void setText(const std::string& text);
  const Font& font() const { return font_; }
  void setFont(const Font& font);
  const Color& textColor() const { return textColor_; }
  void setTextColor(const Color& color);
  const Color& shadowColor() const { return shadowColor_; }
  void setShadowColor(const Color& color);
  bool isShadowed() const { return shadowed_; }
  void setShadowed(bool shadowed);
  TextAlignment horizontalAlignment() const { return horizontalAlignment_; }
  void setHorizontalAlignment(TextAlignment alignment);
  /// In points, of all lines together; 0 before the first text or font is set.
  double textWidth() const { return textSize_.width; }
  double textHeight() const { return textSize_.height; }

 private:
  void measure();
  Rect textRect() const;

  const TextMeasurer& measurer_;
  std::string text_;
  Font font_ = Font::systemFontOfSize(14);
  Color textColor_ = Color::white();
  Color shadowColor_ = Color::black();
  bool shadowed_ = false;
  TextAlignment horizontalAlignment_ = TextAlignmentCenter;
  Size textSize_;
};

}  // namespace qb
