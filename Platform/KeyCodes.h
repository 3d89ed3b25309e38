#pragma once

#include <cstdint>

namespace qb {

/// Virtual key codes: positions on the keyboard, whatever is printed on them. Those that the core
/// knows by name; a platform maps every key of its keyboards.
enum KeyCode : std::uint16_t {
  KeyCodeA = 0,
  KeyCodeS = 1,
  KeyCodeD = 2,
  KeyCodeH = 4,
  KeyCodeZ = 6,
  KeyCodeX = 7,
  KeyCodeC = 8,
  KeyCodeV = 9,
  KeyCodeQ = 12,
  KeyCodeW = 13,
  KeyCodeO = 31,
  KeyCodeReturn = 36,
  KeyCodeTab = 48,
  KeyCodeSpace = 49,
  KeyCodeBackquote = 50,
  KeyCodeDelete = 51,
  KeyCodeEscape = 53,
  KeyCodeRightCommand = 54,
  KeyCodeLeftCommand = 55,
  KeyCodeLeftShift = 56,
  KeyCodeCapsLock = 57,
  KeyCodeLeftOption = 58,
  KeyCodeLeftControl = 59,
  KeyCodeRightShift = 60,
  KeyCodeRightOption = 61,
  KeyCodeRightControl = 62,
  KeyCodeEnter = 76,
  KeyCodeHome = 115,
  KeyCodePageUp = 116,
  KeyCodeForwardDelete = 117,
  KeyCodeEnd = 119,
  KeyCodePageDown = 121,
  KeyCodeLeft = 123,
  KeyCodeRight = 124,
  KeyCodeDown = 125,
  KeyCodeUp = 126,
};

}  // namespace qb
