#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/activation/KeyHandler.h"

namespace qb {

class AppDelegate;

/// The single keys that providers want while their row is the active one.
class KeyHandlers {
 public:
  explicit KeyHandlers(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~KeyHandlers();
  KeyHandlers(const KeyHandlers&) = delete;
  KeyHandlers& operator=(const KeyHandlers&) = delete;

  /// Registers a hot key too, with the modifier of the present activation method.
  void installKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target,
                             std::string action);
  /// Takes the hot key back at once. The handler leaves in the next pass of the loop: it may just
  /// be at work.
  void removeKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target);
  /// Calls everyone who wants that key, in order of installation.
  void performKeyCode(std::int64_t keyCode, bool isApplicationInvocation);

 private:
  AppDelegate& appDelegate_;
  std::vector<std::shared_ptr<KeyHandler>> keyHandlers_;
};

}  // namespace qb
