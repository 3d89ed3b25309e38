#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "Platform/ControlCharacters.h"

namespace qb {

/// A key of the simulated keyboard, which has the US layout, and whether Shift goes with it.
struct SimulatedKey {
  std::uint16_t keyCode = 0;
  bool shift = false;
};

/// The key for a character; none when the layout lacks it.
constexpr std::optional<SimulatedKey> simulatedKeyOf(char32_t character) {
  // By virtual key code; keys that type nothing stand as blanks.
  constexpr std::string_view plain = "asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm.";
  constexpr std::string_view shifted = "ASDFHGZXCV BQWERYT!@#$^%+(&_*)}OU{IP LJ\"K:|<?NM>";
  if (const auto control = keyCodeOfControlCharacter(character)) return SimulatedKey{*control};
  if (character == ' ') return SimulatedKey{KeyCodeSpace};
  if (character == '`' || character == '~') return SimulatedKey{KeyCodeBackquote, character == '~'};
  if (character >= 128) return std::nullopt;
  const char c = static_cast<char>(character);
  if (const auto at = plain.find(c); at != plain.npos) {
    return SimulatedKey{static_cast<std::uint16_t>(at)};
  }
  if (const auto at = shifted.find(c); at != shifted.npos) {
    return SimulatedKey{static_cast<std::uint16_t>(at), true};
  }
  return std::nullopt;
}

}  // namespace qb
