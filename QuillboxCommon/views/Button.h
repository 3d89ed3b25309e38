#pragma once

#include <functional>

#include "QuillboxCommon/views/ImageView.h"

namespace qb {

/// A push button that shows an image and no border: dimmed while the mouse holds it down, acting on
/// release inside.
class Button : public ImageView {
 public:
  using Action = std::function<void()>;
  explicit Button(const Rect& frame = {}) : ImageView(frame) {}
  bool isFlipped() const override { return true; }
  void draw(Canvas& canvas) override;

  void setAction(Action action) { action_ = std::move(action); }
  /// Performs the action as a click would.
  void performClick();
  /// The mouse was pressed on it and is over it now.
  bool isPressed() const { return pressed_; }
  /// Shows it as pressed or not.
  void highlight(bool pressed);

  void mouseDown(const Event& event) override;
  void mouseDragged(const Event& event) override;
  void mouseUp(const Event& event) override;

 private:
  bool isInside(const Event& event) const;

  Action action_;
  bool tracking_ = false;
  bool pressed_ = false;
};

}  // namespace qb
