#include "QuillboxCommon/TextComparison.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace qb {

namespace {

constexpr char32_t firstBeyondUnicode = 0x110000;

/// Capital letters in a row, each as far from its small letter; with a distance of 0 every other
/// one is the small letter of the one before.
struct Capitals {
  char32_t first, last, distance;
};
constexpr char32_t pairs = 0;
/// In order.
constexpr Capitals capitals[] = {
    {0x41, 0x5A, 32},      {0xC0, 0xD6, 32},        {0xD8, 0xDE, 32},        {0x100, 0x12F, pairs},
    {0x132, 0x137, pairs}, {0x139, 0x148, pairs},   {0x14A, 0x177, pairs},   {0x179, 0x17E, pairs},
    {0x1CD, 0x1DC, pairs}, {0x1DE, 0x1EF, pairs},   {0x1F8, 0x21F, pairs},   {0x222, 0x233, pairs},
    {0x386, 0x386, 38},    {0x388, 0x38A, 37},      {0x38C, 0x38C, 64},      {0x38E, 0x38F, 63},
    {0x391, 0x3A1, 32},    {0x3A3, 0x3AB, 32},      {0x400, 0x40F, 80},      {0x410, 0x42F, 32},
    {0x460, 0x481, pairs}, {0x48A, 0x4BF, pairs},   {0x4C1, 0x4CE, pairs},   {0x4D0, 0x52F, pairs},
    {0x531, 0x556, 48},    {0x1E00, 0x1E95, pairs}, {0x1EA0, 0x1EFF, pairs}, {0xFF21, 0xFF3A, 32},
};

char32_t smallLetter(char32_t character) {
  const auto* const range =
      std::find_if(std::begin(capitals), std::end(capitals),
                   [character](const Capitals& each) { return character <= each.last; });
  if (range == std::end(capitals) || character < range->first) return character;
  if (range->distance != pairs) return character + range->distance;
  return (character - range->first) % 2 == 0 ? character + 1 : character;
}

/// The number of bytes of a character that begins so; 0 for none.
std::size_t lengthOf(std::uint8_t first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

/// Takes the next character off a text that is not empty.
char32_t takeCharacter(std::string_view& text) {
  const auto first = static_cast<std::uint8_t>(text.front());
  const std::size_t length = lengthOf(first);
  char32_t character = length > 1 ? first & (0xFFU >> (length + 1)) : first;
  bool isWhole = length > 0 && length <= text.size();
  for (std::size_t i = 1; isWhole && i < length; ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    isWhole = (byte & 0xC0U) == 0x80U;
    character = character << 6U | (byte & 0x3FU);
  }
  text.remove_prefix(isWhole ? length : 1);
  return isWhole ? smallLetter(character) : firstBeyondUnicode + first;
}

}  // namespace

int caseInsensitiveCompare(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    const char32_t left = takeCharacter(a), right = takeCharacter(b);
    if (left != right) return left < right ? -1 : 1;
  }
  if (a.empty() && b.empty()) return 0;
  return a.empty() ? -1 : 1;
}

}  // namespace qb
