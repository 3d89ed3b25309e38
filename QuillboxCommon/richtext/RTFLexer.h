#pragma once

#include <cstdint>
#include <string_view>

namespace qb {

/// What rich text is made of, one after the other. The text must outlive it.
class RTFLexer {
 public:
  struct Token {
    enum class Kind {
      End,
      GroupBegin,
      GroupEnd,
      /// A word after a backslash, in `word`, with or without a number.
      Control,
      /// Any other single sign after a backslash, in `byte`.
      Symbol,
      /// One byte of text, plain or by its number.
      Byte,
    };
    Kind kind = Kind::End;
    std::string_view word{};
    bool hasNumber = false;
    /// Saturated: as large as it takes to be out of any range.
    std::int32_t number = 0;
    std::uint8_t byte = 0;
  };

  explicit RTFLexer(std::string_view rtf) : rest_(rtf) {}
  /// Ends of lines in the source, and binary data, are left out.
  Token next();

 private:
  Token afterBackslash();
  Token control();
  Token hexadecimalByte();

  std::string_view rest_;
};

}  // namespace qb
