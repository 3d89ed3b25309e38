#pragma once

#include <memory>

namespace qb {

class HostView;
class TabRow;

/// One row of a host view on its way to another place, under the pointer. The others slide out of
/// its way and change places with it. Main thread.
class TabRowMove {
 public:
  explicit TabRowMove(HostView& host) : host_(host) {}

  /// Nothing with fewer than two rows, and while a row is on its way.
  void begin(TabRow& tabRow);
  /// Positive is downward. Nothing when no row is on its way.
  void moveBy(double deltaY);
  /// The row slides into its place.
  void end();
  TabRow* tabRow() const { return tabRow_.get(); }

 private:
  HostView& host_;
  std::shared_ptr<TabRow> tabRow_;
  /// Of the top edge of a moving row.
  double verticalLowerLimit_ = 0, verticalUpperLimit_ = 0;
  /// From a row's top edge to that of the next.
  double verticalSpacingBetweenTabRows_ = 0;
};

}  // namespace qb
