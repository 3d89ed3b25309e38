#pragma once

#include <memory>

#include "QuillboxCommon/Timer.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

class Button;
class Graphics;

/// A line of text that points at a gear, with a button that closes it. It leaves its superview with
/// its end. Main thread.
class ConfigureTip {
 public:
  /// In points.
  static constexpr double width = 280;

  /// `closePressed` and `timeIsUp` end it in their own ways.
  ConfigureTip(Graphics& graphics, const Rect& frame, const Block& closePressed,
               const Block& timeIsUp);
  ~ConfigureTip();
  ConfigureTip(const ConfigureTip&) = delete;
  ConfigureTip& operator=(const ConfigureTip&) = delete;

  /// From now on it stays until something else ends it.
  void endTimer();
  const std::shared_ptr<RoundedRectangleView>& view() const { return view_; }
  LabelView& label() const { return *label_; }
  Button& closeButton() const { return *closeButton_; }

 private:
  std::shared_ptr<RoundedRectangleView> view_;
  std::shared_ptr<LabelView> label_;
  std::shared_ptr<Button> closeButton_;
  std::shared_ptr<Timer> timer_;
};

}  // namespace qb
