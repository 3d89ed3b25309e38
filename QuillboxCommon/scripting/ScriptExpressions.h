#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/scripting/ScriptNode.h"
#include "QuillboxCommon/scripting/ScriptTokens.h"

namespace qb::scripting {

/// Counts how deep parsers are nested while it lives. Throws when that is too deep.
class NestingGuard {
 public:
  explicit NestingGuard(int& level);
  ~NestingGuard() { --level_; }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;

 private:
  int& level_;
};

/// Reads expressions, commands among them. Operations throw `ScriptError`.
class ExpressionParser {
 public:
  explicit ExpressionParser(TokenReader& tokens) : tokens_(tokens) {}

  ExpressionPointer expression() { return binary(lowestPrecedence); }
  /// What "tell" addresses, up to "to" or the end of the line.
  ExpressionPointer target() { return postfix(); }

  /// How many tells the place being read lies in: only there the words of applications, such as
  /// "keystroke", mean what they say.
  void setTellDepth(int depth) { tellDepth_ = depth; }
  int tellDepth() const { return tellDepth_; }

 private:
  struct Operator {
    BinaryOperator operation;
    int precedence;
    std::size_t words;
  };
  static constexpr int lowestPrecedence = 1;
  static constexpr int comparisonPrecedence = 4;
  static constexpr int coercionPrecedence = 5;
  static constexpr int concatenationPrecedence = 6;

  ExpressionPointer binary(int lowest);
  std::optional<Operator> operatorHere() const;
  std::optional<Operator> wordOperatorHere() const;
  ExpressionPointer unary();
  ExpressionPointer postfix();
  ExpressionPointer primary();
  ExpressionPointer word();
  ExpressionPointer constantWord();
  ExpressionPointer listLiteral();
  ExpressionPointer nameOrCall(bool isMine);
  ValueType valueType();

  // Things of things, as yet without a container; null when there is none here.
  ExpressionPointer specifier();
  ExpressionPointer part();
  ExpressionPointer ordinalPart();
  ExpressionPointer property();
  ExpressionPointer element();
  ExpressionPointer everyElement(std::string_view elementClass);
  /// None when the words here are no class of elements.
  std::optional<std::string_view> elementClass(bool* isPlural);
  ExpressionPointer selector();
  std::optional<Part::Kind> partKind(bool* isPlural);
  ExpressionPointer specifierAfterPossessive();
  ExpressionPointer withContainer(ExpressionPointer specifier);
  /// Puts the whole into the outermost thing that has no container yet.
  void attach(Expression& specifier, ExpressionPointer container);

  // Commands; null when there is none here.
  ExpressionPointer command();
  ExpressionPointer applicationCommand();
  ExpressionPointer keyCommand(CommandName name);
  ExpressionPointer displayAlert();
  ExpressionPointer withDirect(CommandName name, ExpressionPointer direct);
  ExpressionPointer directParameter() { return binary(concatenationPrecedence); }
  bool startsExpression() const;

  TokenReader& tokens_;
  int nesting_ = 0;
  int tellDepth_ = 0;
};

/// An expression around `node`. Throws when it lies too deep.
ExpressionPointer makeExpression(decltype(Expression::node) node);
/// Sets the depth of one whose parts have changed. Throws when it lies too deep.
void measure(Expression& expression);

}  // namespace qb::scripting
