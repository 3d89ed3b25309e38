#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qb {

/// Takes the first character off `text`, which must not be empty. None where the bytes there are no
/// UTF-8 (nor stand for a surrogate, or in more bytes than it takes); one byte is taken then.
std::optional<char32_t> takeCodePoint(std::string_view& text);

/// Nothing that is no character is appended: U+FFFD goes in its place.
void appendUtf8(std::string& text, char32_t codePoint);

bool isUtf8(std::string_view text);

/// How many characters; a byte that belongs to none counts as one.
std::size_t numberOfCharacters(std::string_view text);

/// The bytes of the first `count` characters, or all.
std::string_view firstCharacters(std::string_view text, std::size_t count);

}  // namespace qb
