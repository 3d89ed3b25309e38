#pragma once

#include <xcb/xcb.h>

#include <map>
#include <mutex>
#include <string>

namespace qb {

/// Which window stands for a running program, so that its icon can be asked from it. Any thread.
class ProgramWindows {
 public:
  void set(const std::string& bundlePath, xcb_window_t window) {
    const std::lock_guard lock(mutex_);
    windows_[bundlePath] = window;
  }
  /// 0 when there is none.
  xcb_window_t windowOf(const std::string& bundlePath) const {
    const std::lock_guard lock(mutex_);
    const auto found = windows_.find(bundlePath);
    return found == windows_.end() ? 0 : found->second;
  }

 private:
  mutable std::mutex mutex_;
  std::map<std::string, xcb_window_t> windows_;
};

}  // namespace qb
