#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Platform/HotKeys.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// Takes the keys for which it has installed handlers.
class KeyHandlerTarget {
 public:
  virtual ~KeyHandlerTarget() = default;
  /// `action` is the name given at installation; `information` holds
  /// `kKeyIsApplicationInvocationKey`.
  virtual void performKeyAction(const std::string& action, const PropertyList& information) = 0;
};

/// One key that a target wants while its row is the active one. The registration of the hot key
/// ends with it.
struct KeyHandler {
  std::weak_ptr<KeyHandlerTarget> target;
  std::string action;
  std::uint16_t keyCode = 0;
  std::unique_ptr<HotKeys::Registration> hotKeyRef;
  /// It has been removed, and only waits to leave the list.
  bool removed = false;
};

}  // namespace qb
