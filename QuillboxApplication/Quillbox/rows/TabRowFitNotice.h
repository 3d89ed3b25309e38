#pragma once

#include <memory>

namespace qb {

class HostView;
class Window;

/// Warns the user who tries icon sizes in the desktop's settings, for as long as the smallest icons
/// are too large for the rows that there are. Main thread.
class TabRowFitNotice {
 public:
  explicit TabRowFitNotice(HostView& host) : host_(host) {}
  ~TabRowFitNotice();
  TabRowFitNotice(const TabRowFitNotice&) = delete;
  TabRowFitNotice& operator=(const TabRowFitNotice&) = delete;

  /// Shows the notice or takes it away, whichever is due. While it is up it looks again by itself.
  void manage();
  /// Null while there is nothing to warn of.
  const std::shared_ptr<Window>& window() const { return window_; }

 private:
  bool applies() const;
  void manageAgainLater();

  HostView& host_;
  std::shared_ptr<Window> window_;
  bool willManageAgain_ = false;
};

}  // namespace qb
