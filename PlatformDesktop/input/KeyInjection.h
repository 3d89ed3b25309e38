#pragma once

#include <cstdint>
#include <vector>

#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputThread.h"
#include "PlatformDesktop/input/KeyboardMap.h"
#include "PlatformDesktop/input/TypingLayout.h"

namespace qb {

/// One run of keys that this program sends by XTEST. While it lasts the input thread lets go of the
/// keyboard and passes on what its grabs catch. Main thread.
class KeyInjection {
 public:
  KeyInjection(InputConnection& connection, InputThread& thread, const KeyboardMap& map)
      : connection_(connection), thread_(thread), map_(map) {}
  ~KeyInjection() { end(); }
  KeyInjection(const KeyInjection&) = delete;
  KeyInjection& operator=(const KeyInjection&) = delete;

  /// Waits for the modifiers that are down, or takes their place; see TextTyper. `layout` must
  /// outlive the run.
  void begin(const TypingLayout& layout);
  void press(const TypingStroke& stroke);
  /// The server has done all that was asked.
  void sync();
  /// Puts everything back, when all keys have been handed out.
  void end();

 private:
  XKeySet heldModifiers() const;
  void waitForModifiers();
  void releaseModifiers();
  void pressAgain();
  bool isPhysicallyDown(std::uint8_t key) const;
  void setModifiers(std::uint16_t modifiers);
  void setGroup(std::uint8_t group);
  void setCapsLock(bool on);
  void fake(std::uint8_t type, std::uint8_t key);

  InputConnection& connection_;
  InputThread& thread_;
  const KeyboardMap& map_;
  const TypingLayout* layout_ = nullptr;
  /// Those that were released in the user's place.
  std::vector<std::uint8_t> released_;
  std::uint16_t modifiers_ = 0;
  std::uint8_t group_ = 0;
};

}  // namespace qb
