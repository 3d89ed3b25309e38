#pragma once

#include <memory>

#include "Quillbox/rows/RowButton.h"
#include "QuillboxCommon/Timer.h"

namespace qb {

/// Hears of presses and releases of a drag button.
class DragButtonTarget {
 public:
  virtual ~DragButtonTarget() = default;
  virtual void mouseDownInButton(const Event& event) = 0;
  virtual void mouseUpForButton(const Event& event) = 0;
};

/// The button by which a row is moved. The release may get lost while the row glides along under
/// the pointer, so it watches the mouse buttons itself. Main thread.
class DragButton : public RowButton {
 public:
  /// The target owns the button.
  DragButton(const Image& image, Size size, DragButtonTarget& target);
  ~DragButton() override;

  void mouseDown(const Event& event) override;
  void mouseDragged(const Event&) override {}
  void mouseUp(const Event& event) override;

 private:
  DragButtonTarget& target_;
  std::shared_ptr<Timer> timer_;
};

}  // namespace qb
