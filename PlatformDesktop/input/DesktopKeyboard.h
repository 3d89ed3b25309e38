#pragma once

#include <string>

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
  std::string legendOfKey(std::uint16_t keyCode) const override;
  /// Which of the two keys an event with Control stands for. Events do not say, so the server is
  /// asked; a key that is up again by then passes for the left one.
  bool controlIsTheLeftOne() const;
  ChangeNotice& keysChanged() override { return keysChanged_; }

 private:
  /// Buttons, modifiers and, from bit 13 on, the number of the layout.
  std::uint32_t state() const;

  InputConnection& queries_;
  InputQueue& queue_;
  ChangeNotice keysChanged_;
};

}  // namespace qb
