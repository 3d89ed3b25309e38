#pragma once

#include <memory>

#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

/// The right to be the one instance on an X display: the ownership of a selection, which the
/// server takes back when the owner ends, however it ends.
class InstanceLock {
 public:
  enum class Failure { NoDisplay, Taken };

  /// Null with `failure` set when there is no X server or another instance has the right.
  static std::unique_ptr<InstanceLock> acquire(Failure& failure);

 private:
  InstanceLock() = default;

  XConnection x_;
};

}  // namespace qb
