#pragma once

#include <cstdint>

#include "PlatformDesktop/input/XInput.h"

/// Requests of XKB on the keyboard that all others are attached to.
namespace qb {

/// Makes a keyboard group the one in force until another one is.
void lockKeyboardGroup(xcb_connection_t* xcb, std::uint8_t group);
/// Puts locks such as Caps Lock on or off.
void lockKeyboardModifiers(xcb_connection_t* xcb, std::uint8_t modifiers, bool on);

}  // namespace qb
