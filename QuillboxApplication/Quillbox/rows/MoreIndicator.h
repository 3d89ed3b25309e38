#pragma once

#include <memory>
#include <string>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/ImageView.h"

namespace qb {

class TabRow;

/// The arrow at one end of a row that tells of items beyond it. While the pointer rests on it the
/// row scrolls. Main thread.
class MoreIndicator {
 public:
  enum class Side { Left, Right };
  /// The row owns the indicator.
  MoreIndicator(TabRow& row, Side side) : row_(row), side_(side) {}
  ~MoreIndicator() { exitHoverState(); }
  MoreIndicator(const MoreIndicator&) = delete;
  MoreIndicator& operator=(const MoreIndicator&) = delete;

  /// Fades in or out. The view is made when it is first needed.
  void show(bool visible);
  bool isVisible() const { return visible_; }
  /// Null before it was first shown.
  ImageView* view() const { return view_.get(); }
  void arrange(Size rowSize);
  /// Whether the pointer at `point` is on it, or near enough.
  bool isHitBy(Point point) const;

  /// Takes the selection away and scrolls one step now and ten a second from now on.
  void enterHoverState();
  void exitHoverState();
  bool isInHoverState() const { return timer_ != nullptr; }
  void invoke();

 private:
  TabRow& row_;
  Side side_;
  std::shared_ptr<ImageView> view_;
  std::shared_ptr<RunLoopTimer> timer_;
  bool visible_ = false;
};

}  // namespace qb
