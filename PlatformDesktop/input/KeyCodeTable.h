#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace qb {

/// X key codes, which are evdev positions plus 8, against virtual key codes. Both name a place on
/// the keyboard, so the table holds with every layout.
namespace KeyCodeTable {

struct Entry {
  std::uint8_t xCode;
  std::uint16_t keyCode;
  /// What the key is called in messages, after its US legend.
  std::string_view name;
};

/// The virtual code of a key that has none of its own: one that no key map bit stands for.
inline constexpr std::uint16_t unknownKeyCode = 0xff;

/// One entry for each virtual key code.
std::span<const Entry> entries();
/// `unknownKeyCode` for keys that the table lacks.
std::uint16_t keyCodeFromX(std::uint8_t xCode);
std::optional<std::uint8_t> xCodeFromKeyCode(std::uint16_t keyCode);
/// Empty for codes that the table lacks.
std::string_view nameOf(std::uint16_t keyCode);

}  // namespace KeyCodeTable

}  // namespace qb
