#include "QuillboxCommon/richtext/RTFLexer.h"

#include <algorithm>

namespace qb {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// -1 for what is no digit.
int valueOfHexadecimalDigit(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

RTFLexer::Token RTFLexer::next() {
  while (!rest_.empty()) {
    const char first = rest_.front();
    rest_.remove_prefix(1);
    switch (first) {
      case '{':
        return {.kind = Token::Kind::GroupBegin};
      case '}':
        return {.kind = Token::Kind::GroupEnd};
      case '\\':
        return afterBackslash();
      case '\r':
      case '\n':
        break;
      default:
        return {.kind = Token::Kind::Byte, .byte = static_cast<std::uint8_t>(first)};
    }
  }
  return {};
}

RTFLexer::Token RTFLexer::afterBackslash() {
  if (rest_.empty()) return {};
  if (isLetter(rest_.front())) return control();
  const char symbol = rest_.front();
  rest_.remove_prefix(1);
  if (symbol == '\'') return hexadecimalByte();
  return {.kind = Token::Kind::Symbol, .byte = static_cast<std::uint8_t>(symbol)};
}

RTFLexer::Token RTFLexer::control() {
  constexpr std::int32_t largestNumber = 100'000'000;
  Token token{.kind = Token::Kind::Control};
  std::size_t length = 0;
  while (length < rest_.size() && isLetter(rest_[length])) ++length;
  token.word = rest_.substr(0, length);
  rest_.remove_prefix(length);
  const bool isNegative = rest_.size() > 1 && rest_[0] == '-' && isDigit(rest_[1]);
  if (isNegative) rest_.remove_prefix(1);
  while (!rest_.empty() && isDigit(rest_.front())) {
    token.hasNumber = true;
    token.number = std::min(largestNumber, token.number * 10 + (rest_.front() - '0'));
    rest_.remove_prefix(1);
  }
  if (isNegative) token.number = -token.number;
  if (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  if (token.word == "bin" && token.number > 0) {
    rest_.remove_prefix(std::min(rest_.size(), static_cast<std::size_t>(token.number)));
  }
  return token;
}

RTFLexer::Token RTFLexer::hexadecimalByte() {
  const int high = rest_.size() < 2 ? -1 : valueOfHexadecimalDigit(rest_[0]);
  const int low = rest_.size() < 2 ? -1 : valueOfHexadecimalDigit(rest_[1]);
  // What follows is text then.
  if (high < 0 || low < 0) return {.kind = Token::Kind::Symbol, .byte = '\''};
  rest_.remove_prefix(2);
  return {.kind = Token::Kind::Byte, .byte = static_cast<std::uint8_t>(high << 4 | low)};
}

}  // namespace qb
