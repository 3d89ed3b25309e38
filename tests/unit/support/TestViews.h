#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "QuillboxCommon/views/View.h"

namespace qb::test {

/// A view with y growing downward.
class FlippedView : public View {
 public:
  using View::View;
  bool isFlipped() const override { return true; }
};

inline std::shared_ptr<View> makeView(const Rect& frame, bool flipped = false) {
  if (flipped) return std::make_shared<FlippedView>(frame);
  return std::make_shared<View>(frame);
}

/// Fills its bounds with one colour.
class PaintedView : public View {
 public:
  PaintedView(const Rect& frame, const Color& color) : View(frame), color_(color) {}
  void draw(Canvas& canvas) override { canvas.fill(bounds(), color_); }

 private:
  Color color_;
};

inline std::shared_ptr<PaintedView> makePainted(const Rect& frame, double white = 1) {
  return std::make_shared<PaintedView>(frame, Color::colorWithCalibratedWhite(white, 1));
}

/// Writes down its events as "name: mouseDown"; `onEvent`, if set, comes after that.
class ListeningView : public View {
 public:
  ListeningView(const Rect& frame, std::string name, std::vector<std::string>& heard)
      : View(frame), name_(std::move(name)), heard_(heard) {}

  std::function<void()> onEvent;
  bool takesKeys = false;

  bool acceptsFirstResponder() const override { return takesKeys; }
  void mouseDown(const Event&) override { hear("mouseDown"); }
  void mouseUp(const Event&) override { hear("mouseUp"); }
  void mouseDragged(const Event&) override { hear("mouseDragged"); }
  void rightMouseDown(const Event&) override { hear("rightMouseDown"); }
  void rightMouseUp(const Event&) override { hear("rightMouseUp"); }
  void scrollWheel(const Event&) override { hear("scrollWheel"); }
  void keyDown(const Event&) override { hear("keyDown"); }

 private:
  void hear(const char* event) {
    heard_.push_back(name_ + ": " + event);
    // What it calls may clear it.
    if (const auto action = onEvent) action();
  }

  std::string name_;
  std::vector<std::string>& heard_;
};

}  // namespace qb::test
