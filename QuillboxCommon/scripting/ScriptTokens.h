#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/scripting/ScriptLexer.h"

namespace qb::scripting {

/// A place among the tokens of a script, with what a parser asks there. Words are given in lower
/// case.
class TokenReader {
 public:
  explicit TokenReader(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

  /// The token `ahead` places on; the end is never passed.
  const Token& peek(std::size_t ahead = 0) const;
  const Token& next();
  void skip(std::size_t count);

  bool isWord(std::string_view word, std::size_t ahead = 0) const;
  bool areWords(std::initializer_list<std::string_view> words) const;
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool isLineEnd() const { return peek().kind == Token::Kind::LineEnd; }
  bool isEnd() const { return peek().kind == Token::Kind::End; }

  bool acceptWord(std::string_view word);
  /// All of them or none.
  bool acceptWords(std::initializer_list<std::string_view> words);
  bool acceptSymbol(std::string_view symbol);

  void expectWord(std::string_view word);
  void expectSymbol(std::string_view symbol);
  void expectLineEnd();
  /// A name that is no word of the language, in lower case.
  std::string expectName();
  /// A word of the language cannot be the name of a variable or handler.
  bool isName() const;

  /// Throws the error that `what` was expected here.
  [[noreturn]] void failExpecting(std::string_view what) const;

 private:
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
};

}  // namespace qb::scripting
