#include "QuillboxCommon/scripting/ScriptTokens.h"

#include <algorithm>
#include <iterator>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/ScriptError.h"

namespace qb::scripting {

namespace {

/// Sorted.
constexpr std::string_view reservedWords[] = {
    "and",   "as",    "by",       "considering", "contain",  "contains", "copy",  "div",
    "does",  "else",  "end",      "equal",       "equals",   "error",    "every", "exit",
    "false", "from",  "global",   "if",          "ignoring", "in",       "is",    "it",
    "item",  "items", "local",    "me",          "mod",      "my",       "not",   "of",
    "on",    "or",    "property", "repeat",      "return",   "set",      "tell",  "the",
    "then",  "thru",  "through",  "to",          "true",     "try",      "until", "using",
    "while", "with",
};

std::string nameOf(const Token& token) {
  switch (token.kind) {
    case Token::Kind::Word:
    case Token::Kind::QuotedName:
    case Token::Kind::Symbol:
      return stringWithFormat("\u201c%@\u201d", token.text);
    case Token::Kind::Text:
      return "string";
    case Token::Kind::Integer:
    case Token::Kind::Real:
      return "number";
    case Token::Kind::LineEnd:
      return "end of line";
    case Token::Kind::End:
      break;
  }
  return "end of script";
}

}  // namespace

const Token& TokenReader::peek(std::size_t ahead) const {
  return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

const Token& TokenReader::next() {
  const Token& token = peek();
  skip(1);
  return token;
}

void TokenReader::skip(std::size_t count) {
  position_ = std::min(position_ + count, tokens_.size() - 1);
}

bool TokenReader::isWord(std::string_view word, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == Token::Kind::Word && token.word == word;
}

bool TokenReader::areWords(std::initializer_list<std::string_view> words) const {
  std::size_t ahead = 0;
  return std::all_of(words.begin(), words.end(),
                     [&](std::string_view word) { return isWord(word, ahead++); });
}

bool TokenReader::isSymbol(std::string_view symbol, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == Token::Kind::Symbol && token.text == symbol;
}

bool TokenReader::acceptWord(std::string_view word) { return acceptWords({word}); }

bool TokenReader::acceptWords(std::initializer_list<std::string_view> words) {
  if (!areWords(words)) return false;
  skip(words.size());
  return true;
}

bool TokenReader::acceptSymbol(std::string_view symbol) {
  if (!isSymbol(symbol)) return false;
  skip(1);
  return true;
}

void TokenReader::expectWord(std::string_view word) {
  if (!acceptWord(word)) failExpecting(stringWithFormat("\u201c%@\u201d", word));
}

void TokenReader::expectSymbol(std::string_view symbol) {
  if (!acceptSymbol(symbol)) failExpecting(stringWithFormat("\u201c%@\u201d", symbol));
}

void TokenReader::expectLineEnd() {
  if (!isLineEnd()) failExpecting("end of line");
  skip(1);
}

bool TokenReader::isName() const {
  const Token& token = peek();
  if (token.kind == Token::Kind::QuotedName) return true;
  return token.kind == Token::Kind::Word &&
         !std::binary_search(std::begin(reservedWords), std::end(reservedWords), token.word);
}

std::string TokenReader::expectName() {
  if (!isName()) failExpecting("variable name");
  return next().word;
}

void TokenReader::failExpecting(std::string_view what) const {
  throw ScriptError{ScriptErrorSyntax,
                    stringWithFormat("Expected %@ but found %@.", what, nameOf(peek())), ""};
}

}  // namespace qb::scripting
