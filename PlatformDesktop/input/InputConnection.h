#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "PlatformDesktop/input/XInput.h"

namespace qb {

/// Why the desktop's input cannot be had.
struct InputError {
  enum class Kind { NoDisplay, NoXInput, NoXTest };
  Kind kind = Kind::NoDisplay;
  /// One sentence for the user.
  std::string message;
};

/// One connection to an X server that can do what input needs: XInput 2.2 and XTEST. Used by one
/// thread at a time.
struct InputConnection {
  XcbConnectionPointer xcb;
  xcb_window_t root = XCB_NONE;
  std::uint8_t xinputOpcode = 0;
  xcb_input_device_id_t masterKeyboard = 0;

  /// `display` as in DISPLAY; null takes that.
  static std::variant<InputConnection, InputError> open(const char* display);
};

}  // namespace qb
