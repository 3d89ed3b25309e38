#pragma once

#include <cstdint>

namespace qb {

/// What hot keys are known by. Below 1000 an id is the key code of a key handler. The tap hands in
/// the first two for its chords.
enum HotKeyIdentity : std::int32_t {
  HotKeyNextItem = 1000,
  HotKeyPreviousItem = 1001,
  HotKeyNextTabRow = 1002,
  HotKeyPreviousTabRow = 1003,
  HotKeyPreviousTabRowByLetter = 1004,
  HotKeyNextTabRowByLetter = 1005,
  HotKeyEscape = 1006,
  HotKeyOptionTab = 1007,
  HotKeyOptionShiftTab = 1008,
  HotKeyAlternatePreviousItem = 1009,
  HotKeyPreview = 1011,
  HotKeyHideFrontmostApplication = 1012,
};
inline constexpr std::int32_t firstHotKeyIDThatIsNoKeyCode = 1000;
inline constexpr std::int32_t lastHotKeyIDOfThePanel = HotKeyHideFrontmostApplication;

}  // namespace qb
