#pragma once

#include <cstdint>

namespace qb {

/// The code pages whose bytes are known, by the numbers that they have in rich text.
inline constexpr int codePageWindows1250 = 1250;
inline constexpr int codePageWindows1251 = 1251;
inline constexpr int codePageWindows1252 = 1252;
inline constexpr int codePageMacRoman = 10000;
/// One of the others.
inline constexpr int codePageUnknown = 0;

/// The character of a byte; U+FFFD where the page has none, and for what is no ASCII in a page that
/// is not known.
char32_t codePointOfByte(std::uint8_t byte, int codePage);

/// The code page of a font's character set; `otherwise` for a set that leaves it to the document.
int codePageOfCharacterSet(int characterSet, int otherwise);

}  // namespace qb
