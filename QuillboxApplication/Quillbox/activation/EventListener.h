#pragma once

namespace qb {

/// What wants to know of events of the whole system.
class EventListener {
 public:
  virtual ~EventListener() = default;
  /// Displays have come, gone or changed.
  virtual void displayConfigurationChanged() {}
};

}  // namespace qb
