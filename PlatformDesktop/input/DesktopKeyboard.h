#pragma once

#include "Platform/Keyboard.h"
#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputQueue.h"

namespace qb {

/// Main thread.
class DesktopKeyboard : public Keyboard {
 public:
  /// `queries` is the main thread's own connection.
  DesktopKeyboard(InputConnection& queries, InputQueue& queue) : queries_(queries), queue_(queue) {}

  KeyMap getKeys() const override;
  EventFlags modifierFlags() const override;
  ChangeNotice& keysChanged() override { return keysChanged_; }

 private:
  InputConnection& queries_;
  InputQueue& queue_;
  ChangeNotice keysChanged_;
};

}  // namespace qb
