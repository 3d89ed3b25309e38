#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "QuillboxCommon/scripting/ScriptHost.h"
#include "QuillboxCommon/scripting/ScriptValue.h"

/// What a script consists of once it has been read.
namespace qb::scripting {

struct Expression;
using ExpressionPointer = std::unique_ptr<Expression>;

struct Literal {
  Value value;
};
struct Variable {
  std::string name;
  /// As written, for messages.
  std::string text;
};
enum class SpecialName : std::uint8_t { It, Me, Result };
struct ListOf {
  std::vector<ExpressionPointer> items;
};

enum class UnaryOperator : std::uint8_t { Minus, Not };
struct Unary {
  UnaryOperator operation;
  ExpressionPointer operand;
};
enum class BinaryOperator : std::uint8_t {
  Or,
  And,
  Equal,
  NotEqual,
  Less,
  LessOrEqual,
  Greater,
  GreaterOrEqual,
  Contains,
  DoesNotContain,
  IsIn,
  IsNotIn,
  StartsWith,
  EndsWith,
  Concatenate,
  Add,
  Subtract,
  Multiply,
  Divide,
  Div,
  Mod,
  Power,
};
struct Binary {
  BinaryOperator operation;
  ExpressionPointer left, right;
};
enum class ValueType : std::uint8_t { Text, Integer, Real, Number, Boolean, List };
struct Coercion {
  ExpressionPointer value;
  ValueType type;
};

struct ApplicationNamed {
  ExpressionPointer name;
  bool byIdentifier = false;
};

// Of the next three a null container means the target of the innermost tell.
/// Items of a list or pieces of a text.
struct Part {
  enum class Kind : std::uint8_t { Item, Character, Word, Paragraph };
  enum class Choice : std::uint8_t { One, Range, Every };
  Kind kind = Kind::Item;
  Choice choice = Choice::One;
  /// "text a thru b": the pieces as one text.
  bool asText = false;
  ExpressionPointer from, to;
  ExpressionPointer container;
};
struct Property {
  /// In lower case, its words with one blank between.
  std::string name;
  ExpressionPointer container;
};
struct Element {
  std::string elementClass;
  /// None when the selector's kind decides: a number is an index, anything else a name.
  std::optional<ScriptElement::Selection> selection;
  /// Null where every one is meant.
  ExpressionPointer selector;
  ExpressionPointer container;
};

struct HandlerCall {
  std::string name;
  std::string text;
  std::vector<ExpressionPointer> arguments;
  /// Said with "my": addressed to the script, whatever the target.
  bool isMine = false;
};
enum class CommandName : std::uint8_t {
  Activate,
  AsciiCharacter,
  Click,
  Count,
  Delay,
  DisplayAlert,
  DoShellScript,
  Exists,
  KeyCode,
  Keystroke,
  MakeDocument,
  Quit,
  Reveal,
};
struct Command {
  CommandName name;
  /// Null where the target itself is meant.
  ExpressionPointer direct;
  /// By their words, "using" and so on.
  std::map<std::string, ExpressionPointer> parameters;
};

struct Expression {
  std::variant<Literal, Variable, SpecialName, ListOf, Unary, Binary, Coercion, ApplicationNamed,
               Part, Property, Element, HandlerCall, Command>
      node;
  /// How many expressions lie in each other here.
  int depth = 1;
};

struct Statement;
using StatementPointer = std::unique_ptr<Statement>;
using StatementList = std::vector<StatementPointer>;

struct Evaluate {
  ExpressionPointer expression;
};
struct Tell {
  ExpressionPointer target;
  StatementList body;
};
struct If {
  struct Branch {
    ExpressionPointer condition;
    StatementList body;
  };
  std::vector<Branch> branches;
  StatementList otherwise;
};
struct Repeat {
  enum class Kind : std::uint8_t { Forever, Times, While, Until, Counting, Over };
  Kind kind = Kind::Forever;
  std::string variable;
  /// The count, the condition, the first number or the list.
  ExpressionPointer first;
  /// The last number and the step, which may be null.
  ExpressionPointer last, step;
  StatementList body;
};
struct ExitRepeat {};
struct Set {
  /// A variable, a list of patterns or a property.
  ExpressionPointer pattern;
  ExpressionPointer value;
};
struct Return {
  ExpressionPointer value;
};
struct Declaration {
  bool isGlobal = false;
  std::vector<std::string> names;
};
struct Try {
  StatementList body;
  StatementList onError;
  /// Variables for what has happened; empty for none.
  std::string message, number;
};
struct Raise {
  ExpressionPointer message, number;
};

struct Statement {
  std::variant<Evaluate, Tell, If, Repeat, ExitRepeat, Set, Return, Declaration, Try, Raise> node;
};

struct Handler {
  std::vector<std::string> parameters;
  StatementList body;
};

struct Program {
  /// Set before the body runs, in this order.
  std::vector<std::pair<std::string, ExpressionPointer>> properties;
  std::map<std::string, Handler> handlers;
  StatementList body;
};

}  // namespace qb::scripting
