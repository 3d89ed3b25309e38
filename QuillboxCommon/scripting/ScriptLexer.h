#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qb::scripting {

struct Token {
  enum class Kind : std::uint8_t {
    /// A name or a word of the language.
    Word,
    /// A name between bars, which no word of the language is.
    QuotedName,
    Text,
    Integer,
    Real,
    /// An operator, a bracket and so on; `text` is its usual form. "'s" is one.
    Symbol,
    LineEnd,
    End,
  };
  Kind kind = Kind::End;
  /// A text without its quotes and escapes; a name as written.
  std::string text;
  /// Of a word or name: in lower case, by which it is known.
  std::string word;
  std::int64_t integer = 0;
  double real = 0;
};

/// The tokens of `source`, ending in one of the kind End. Lines that go on after "¬" are joined,
/// comments are gone. Throws `ScriptError`.
std::vector<Token> tokensOf(std::string_view source);

}  // namespace qb::scripting
