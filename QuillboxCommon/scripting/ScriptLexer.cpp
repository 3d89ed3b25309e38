#include "QuillboxCommon/scripting/ScriptLexer.h"

#include <charconv>
#include <optional>
#include <utility>

#include "QuillboxCommon/scripting/ScriptError.h"
#include "QuillboxCommon/scripting/ScriptValue.h"

namespace qb::scripting {

namespace {

constexpr std::string_view continuation = "\u00ac";
constexpr std::string_view byteOrderMark = "\ufeff";
constexpr std::string_view noBreakSpace = "\u00a0";

/// What may be written for a symbol, longer forms first.
constexpr std::pair<std::string_view, std::string_view> symbols[] = {
    {"'s", "'s"},     {"\u2019s", "'s"},    {"/=", "\u2260"}, {"\u2260", "\u2260"},
    {"<=", "\u2264"}, {"\u2264", "\u2264"}, {">=", "\u2265"}, {"\u2265", "\u2265"},
    {"(", "("},       {")", ")"},           {"{", "{"},       {"}", "}"},
    {",", ","},       {":", ":"},           {"&", "&"},       {"+", "+"},
    {"-", "-"},       {"*", "*"},           {"/", "/"},       {"\u00f7", "/"},
    {"^", "^"},       {"=", "="},           {"<", "<"},       {">", ">"},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

class Lexer {
 public:
  explicit Lexer(std::string_view source) : source_(source) { accept(byteOrderMark); }

  std::vector<Token> tokens() {
    while (skipBlanks()) tokens_.push_back(nextToken());
    add(Token::Kind::LineEnd);
    add(Token::Kind::End);
    return std::move(tokens_);
  }

 private:
  [[noreturn]] static void fail(const std::string& message) {
    throw ScriptError{ScriptErrorSyntax, message, ""};
  }

  bool atEnd() const { return position_ >= source_.size(); }
  char here() const { return atEnd() ? '\0' : source_[position_]; }
  char after() const { return position_ + 1 < source_.size() ? source_[position_ + 1] : '\0'; }
  bool isHere(std::string_view text) const { return source_.substr(position_).starts_with(text); }
  bool accept(std::string_view text) {
    if (!isHere(text)) return false;
    position_ += text.size();
    return true;
  }
  void add(Token::Kind kind) { tokens_.emplace_back().kind = kind; }

  /// Up to the next token; false at the end.
  bool skipBlanks() {
    for (;;) {
      if (atEnd()) return false;
      if (here() == ' ' || here() == '\t') {
        ++position_;
      } else if (accept(noBreakSpace)) {
        continue;
      } else if (here() == '#' || isHere("--")) {
        skipLine();
      } else if (isHere("(*")) {
        skipBlockComment();
      } else if (accept(continuation)) {
        skipRestOfContinuedLine();
      } else {
        return true;
      }
    }
  }
  void skipLine() {
    while (!atEnd() && !isLineEnd(here())) ++position_;
  }
  void skipBlockComment() {
    int open = 0;
    do {
      if (atEnd()) fail("Expected \u201c*)\u201d but found end of script.");
      if (accept("(*")) {
        ++open;
      } else if (accept("*)")) {
        --open;
      } else {
        ++position_;
      }
    } while (open > 0);
  }
  void skipRestOfContinuedLine() {
    while (here() == ' ' || here() == '\t') ++position_;
    if (here() == '#' || isHere("--")) skipLine();
    if (!atEnd() && !acceptLineEnd()) fail("Expected end of line after \u201c\u00ac\u201d.");
  }
  bool acceptLineEnd() { return accept("\r\n") || accept("\r") || accept("\n"); }

  Token nextToken() {
    Token token;
    if (acceptLineEnd()) {
      token.kind = Token::Kind::LineEnd;
    } else if (isLetter(here())) {
      readWord(token);
    } else if (isDigit(here()) || (here() == '.' && isDigit(after()))) {
      readNumber(token);
    } else if (here() == '"') {
      readText(token);
    } else if (here() == '|') {
      readQuotedName(token);
    } else {
      readSymbol(token);
    }
    return token;
  }

  void readWord(Token& token) {
    const std::size_t start = position_;
    while (isLetter(here()) || isDigit(here())) ++position_;
    token.kind = Token::Kind::Word;
    token.text = source_.substr(start, position_ - start);
    token.word = lowerCase(token.text);
  }

  void readNumber(Token& token) {
    const char* const begin = source_.data() + position_;
    const char* const end = source_.data() + source_.size();
    token.kind = Token::Kind::Integer;
    auto result = std::from_chars(begin, end, token.integer);
    const char* const rest = result.ptr;
    const bool goesOn = rest != end && (*rest == 'e' || *rest == 'E' ||
                                        (*rest == '.' && rest + 1 != end && isDigit(rest[1])));
    if (result.ec != std::errc() || goesOn) {
      token.kind = Token::Kind::Real;
      result = std::from_chars(begin, end, token.real);
      if (result.ec != std::errc()) fail("A number is out of range.");
    }
    position_ += static_cast<std::size_t>(result.ptr - begin);
    if (isLetter(here())) fail("Expected end of line but found unknown token.");
  }

  void readText(Token& token) {
    token.kind = Token::Kind::Text;
    ++position_;
    while (!accept("\"")) {
      if (atEnd()) fail("Expected \u201c\"\u201d but found end of script.");
      if (here() != '\\') {
        token.text += source_[position_++];
        continue;
      }
      const auto meant = escaped(after());
      if (!meant) fail("Expected \u201c\"\u201d but found unknown token.");
      token.text += *meant;
      position_ += 2;
    }
  }
  static std::optional<char> escaped(char c) {
    switch (c) {
      case '"':
      case '\\':
        return c;
      case 'r':
        return '\r';
      case 'n':
        return '\n';
      case 't':
        return '\t';
      default:
        return std::nullopt;
    }
  }

  void readQuotedName(Token& token) {
    const std::size_t start = ++position_;
    while (!atEnd() && here() != '|' && !isLineEnd(here())) ++position_;
    token.kind = Token::Kind::QuotedName;
    token.text = source_.substr(start, position_ - start);
    token.word = lowerCase(token.text);
    if (!accept("|")) fail("Expected \u201c|\u201d but found end of line.");
  }

  void readSymbol(Token& token) {
    token.kind = Token::Kind::Symbol;
    for (const auto& [written, usual] : symbols) {
      if (!accept(written)) continue;
      // "it's" is one word of a text that has lost its quotes, not a possessive.
      if (usual == "'s" && (isLetter(here()) || isDigit(here()))) break;
      token.text = usual;
      return;
    }
    fail("Expected expression but found unknown token.");
  }

  std::string_view source_;
  std::size_t position_ = 0;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> tokensOf(std::string_view source) { return Lexer(source).tokens(); }

}  // namespace qb::scripting
