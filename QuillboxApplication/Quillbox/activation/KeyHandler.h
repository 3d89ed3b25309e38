#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Platform/HotKeys.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

struct KeyHandler;

/// Takes the keys for which it has installed handlers. They are its own: when it goes, other
/// programs have its keys again.
class KeyHandlerTarget {
 public:
  virtual ~KeyHandlerTarget() = default;
  /// `action` is the name given at installation; `information` holds
  /// `kKeyIsApplicationInvocationKey`.
  virtual void performKeyAction(const std::string& action, const PropertyList& information) = 0;

 private:
  friend class KeyHandlers;
  /// In order of installation.
  std::vector<std::shared_ptr<KeyHandler>> keyHandlers_;
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
