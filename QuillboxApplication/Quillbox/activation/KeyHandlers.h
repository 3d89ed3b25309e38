#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Quillbox/activation/KeyHandler.h"
#include "QuillboxCommon/WeakList.h"

namespace qb {

class AppDelegate;

/// The single keys that providers want while their row is the active one.
class KeyHandlers {
 public:
  explicit KeyHandlers(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~KeyHandlers();
  KeyHandlers(const KeyHandlers&) = delete;
  KeyHandlers& operator=(const KeyHandlers&) = delete;

  /// Registers a hot key too, with the modifier of the present activation method. Both last until
  /// they are removed or the target goes; null asks for nothing.
  void installKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target,
                             std::string action);
  /// Takes the hot key back at once. The handler leaves in the next pass of the loop: it may just
  /// be at work.
  void removeKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target);
  /// Calls everyone who wants that key, in order of installation.
  void performKeyCode(std::int64_t keyCode, bool isApplicationInvocation);

 private:
  AppDelegate& appDelegate_;
  /// Of all targets, in order of installation.
  WeakList<KeyHandler> keyHandlers_ = arrayWithWeakReferences<KeyHandler>();
};

}  // namespace qb
