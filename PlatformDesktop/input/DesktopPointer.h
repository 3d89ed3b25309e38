#pragma once

#include <functional>

#include "Platform/Pointer.h"
#include "PlatformDesktop/input/DesktopEventTap.h"
#include "PlatformDesktop/input/InputConnection.h"

namespace qb {

/// Main thread.
class DesktopPointer : public Pointer {
 public:
  /// `queries` is the main thread's own connection.
  DesktopPointer(InputConnection& queries, std::function<PointerSpace()> space);

  Point mouseLocation() const override;
  std::uint32_t pressedMouseButtons() const override;

 private:
  InputConnection& queries_;
  std::function<PointerSpace()> space_;
};

}  // namespace qb
