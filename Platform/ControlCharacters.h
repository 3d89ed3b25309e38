#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "Platform/KeyCodes.h"

namespace qb {

/// The key that a control character of typed text stands for; none for any other character.
constexpr std::optional<std::uint16_t> keyCodeOfControlCharacter(char32_t character) {
  constexpr std::pair<char32_t, std::uint16_t> keys[] = {
      {3, KeyCodeEnter},   {8, KeyCodeDelete},          {9, KeyCodeTab},
      {10, KeyCodeReturn}, {13, KeyCodeReturn},         {27, KeyCodeEscape},
      {28, KeyCodeLeft},   {29, KeyCodeRight},          {30, KeyCodeUp},
      {31, KeyCodeDown},   {127, KeyCodeForwardDelete},
  };
  for (const auto& [control, keyCode] : keys) {
    if (control == character) return keyCode;
  }
  return std::nullopt;
}

}  // namespace qb
