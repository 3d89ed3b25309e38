#pragma once

#include <memory>

namespace qb {

class AccessibilityElement;
class RunningApplication;

/// What an entry of an application's menu acts on: the application, or one of its windows.
struct RepresentedObject {
  std::shared_ptr<RunningApplication> runningApplication;
  /// Kept by the item that has listed the windows, and by nobody else.
  std::weak_ptr<AccessibilityElement> window;
};

}  // namespace qb
