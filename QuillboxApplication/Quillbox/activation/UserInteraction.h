#pragma once

#include <cstdint>

namespace qb {

class AppDelegate;

/// How many alerts and other foreign uses of the keyboard are under way. While there are any,
/// keys go where they would go without this program.
class UserInteraction {
 public:
  explicit UserInteraction(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}

  void beginUserInteraction();
  void endUserInteraction();
  std::int64_t userInteractionLevel() const { return userInteractionLevel_; }

 private:
  AppDelegate& appDelegate_;
  std::int64_t userInteractionLevel_ = 0;
};

}  // namespace qb
