#pragma once

#include "QuillboxCommon/views/View.h"

namespace qb {

/// A rounded rectangle, filled, framed or both.
class RoundedRectangleView : public View {
 public:
  explicit RoundedRectangleView(const Rect& frame = {}) : View(frame) {}
  bool isFlipped() const override { return true; }
  void draw(Canvas& canvas) override;
  /// Intended: a border thinner than 4 points stands a little outside.
  Rect drawnArea() const override;

  double cornerRadius() const { return cornerRadius_; }
  void setCornerRadius(double radius);
  /// Taken off the bounds on both axes before anything is drawn.
  Size inset() const { return inset_; }
  void setInset(Size inset);
  bool renderBackground() const { return renderBackground_; }
  void setRenderBackground(bool render);
  bool renderBorder() const { return renderBorder_; }
  void setRenderBorder(bool render);
  double borderWidth() const { return borderWidth_; }
  void setBorderWidth(double width);
  const Color& backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const Color& color);
  const Color& borderColor() const { return borderColor_; }
  void setBorderColor(const Color& color);

 private:
  double cornerRadius_ = 10;
  Size inset_;
  bool renderBackground_ = true;
  bool renderBorder_ = false;
  double borderWidth_ = 0;
  Color backgroundColor_ = Color::black();
  Color borderColor_ = Color::black();
};

}  // namespace qb
