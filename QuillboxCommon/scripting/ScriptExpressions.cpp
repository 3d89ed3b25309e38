#include "QuillboxCommon/scripting/ScriptExpressions.h"

#include <algorithm>
#include <utility>

namespace qb::scripting {

namespace {

constexpr int deepestNesting = 100;
constexpr int deepestExpression = 200;

[[noreturn]] void failTooDeep() {
  throw ScriptError{ScriptErrorSyntax, "The script is nested too deeply.", ""};
}

int depthOf(const ExpressionPointer& expression) { return expression ? expression->depth : 0; }

int depthOf(const std::vector<ExpressionPointer>& expressions) {
  int depth = 0;
  for (const auto& each : expressions) depth = std::max(depth, each->depth);
  return depth;
}

struct InnerDepth {
  int operator()(const Literal&) const { return 0; }
  int operator()(const Variable&) const { return 0; }
  int operator()(SpecialName) const { return 0; }
  int operator()(const ListOf& list) const { return depthOf(list.items); }
  int operator()(const Unary& node) const { return depthOf(node.operand); }
  int operator()(const Binary& node) const {
    return std::max(depthOf(node.left), depthOf(node.right));
  }
  int operator()(const Coercion& node) const { return depthOf(node.value); }
  int operator()(const ApplicationNamed& node) const { return depthOf(node.name); }
  int operator()(const Part& node) const {
    return std::max({depthOf(node.from), depthOf(node.to), depthOf(node.container)});
  }
  int operator()(const Property& node) const { return depthOf(node.container); }
  int operator()(const Element& node) const {
    return std::max(depthOf(node.selector), depthOf(node.container));
  }
  int operator()(const HandlerCall& node) const { return depthOf(node.arguments); }
  int operator()(const Command& node) const {
    int depth = depthOf(node.direct);
    for (const auto& [name, value] : node.parameters) depth = std::max(depth, depthOf(value));
    return depth;
  }
};

}  // namespace

NestingGuard::NestingGuard(int& level) : level_(level) {
  if (level_ >= deepestNesting) failTooDeep();
  ++level_;
}

ExpressionPointer makeExpression(decltype(Expression::node) node) {
  auto expression = std::make_unique<Expression>();
  expression->node = std::move(node);
  measure(*expression);
  return expression;
}

void measure(Expression& expression) {
  expression.depth = std::visit(InnerDepth{}, expression.node) + 1;
  if (expression.depth > deepestExpression) failTooDeep();
}

ExpressionPointer ExpressionParser::binary(int lowest) {
  const NestingGuard guard(nesting_);
  ExpressionPointer left = unary();
  for (;;) {
    if (coercionPrecedence >= lowest && tokens_.acceptWord("as")) {
      left = makeExpression(Coercion{std::move(left), valueType()});
      continue;
    }
    if (tellDepth_ > 0 && comparisonPrecedence >= lowest && tokens_.acceptWord("exists")) {
      left = withDirect(CommandName::Exists, std::move(left));
      continue;
    }
    const auto found = operatorHere();
    if (!found || found->precedence < lowest) return left;
    tokens_.skip(found->words);
    ExpressionPointer right = binary(found->precedence + 1);
    left = makeExpression(Binary{found->operation, std::move(left), std::move(right)});
  }
}

std::optional<ExpressionParser::Operator> ExpressionParser::operatorHere() const {
  struct Symbol {
    std::string_view text;
    BinaryOperator operation;
    int precedence;
  };
  static constexpr Symbol symbols[] = {
      {"=", BinaryOperator::Equal, 4},       {"\u2260", BinaryOperator::NotEqual, 4},
      {"<", BinaryOperator::Less, 4},        {"\u2264", BinaryOperator::LessOrEqual, 4},
      {">", BinaryOperator::Greater, 4},     {"\u2265", BinaryOperator::GreaterOrEqual, 4},
      {"&", BinaryOperator::Concatenate, 6}, {"+", BinaryOperator::Add, 7},
      {"-", BinaryOperator::Subtract, 7},    {"*", BinaryOperator::Multiply, 8},
      {"/", BinaryOperator::Divide, 8},      {"^", BinaryOperator::Power, 9},
  };
  for (const Symbol& symbol : symbols) {
    if (tokens_.isSymbol(symbol.text)) return Operator{symbol.operation, symbol.precedence, 1};
  }
  return wordOperatorHere();
}

std::optional<ExpressionParser::Operator> ExpressionParser::wordOperatorHere() const {
  struct Words {
    std::initializer_list<std::string_view> words;
    BinaryOperator operation;
    int precedence = comparisonPrecedence;
  };
  using enum BinaryOperator;
  // Longer forms first.
  static const Words forms[] = {
      {{"is", "not", "equal", "to"}, NotEqual},
      {{"is", "not", "in"}, IsNotIn},
      {{"is", "not", "contained", "by"}, IsNotIn},
      {{"is", "not"}, NotEqual},
      {{"is", "equal", "to"}, Equal},
      {{"is", "greater", "than", "or", "equal", "to"}, GreaterOrEqual},
      {{"is", "greater", "than"}, Greater},
      {{"is", "less", "than", "or", "equal", "to"}, LessOrEqual},
      {{"is", "less", "than"}, Less},
      {{"is", "contained", "by"}, IsIn},
      {{"is", "in"}, IsIn},
      {{"is"}, Equal},
      {{"equals"}, Equal},
      {{"does", "not", "equal"}, NotEqual},
      {{"does", "not", "contain"}, DoesNotContain},
      {{"contains"}, Contains},
      {{"starts", "with"}, StartsWith},
      {{"begins", "with"}, StartsWith},
      {{"ends", "with"}, EndsWith},
      {{"or"}, Or, 1},
      {{"and"}, And, 2},
      {{"div"}, Div, 8},
      {{"mod"}, Mod, 8},
  };
  for (const Words& form : forms) {
    if (tokens_.areWords(form.words)) {
      return Operator{form.operation, form.precedence, form.words.size()};
    }
  }
  return std::nullopt;
}

ExpressionPointer ExpressionParser::unary() {
  if (tokens_.acceptWord("not")) {
    return makeExpression(Unary{UnaryOperator::Not, binary(comparisonPrecedence)});
  }
  if (tokens_.acceptSymbol("-")) {
    const NestingGuard guard(nesting_);
    return makeExpression(Unary{UnaryOperator::Minus, unary()});
  }
  return postfix();
}

ExpressionPointer ExpressionParser::postfix() {
  const NestingGuard guard(nesting_);
  ExpressionPointer result = primary();
  while (tokens_.acceptSymbol("'s")) {
    ExpressionPointer inner = specifierAfterPossessive();
    attach(*inner, std::move(result));
    result = std::move(inner);
  }
  return result;
}

ExpressionPointer ExpressionParser::primary() {
  const NestingGuard guard(nesting_);
  while (tokens_.acceptWord("the")) continue;
  const Token& token = tokens_.peek();
  switch (token.kind) {
    case Token::Kind::Text:
      return makeExpression(Literal{Value(tokens_.next().text)});
    case Token::Kind::Integer:
      return makeExpression(Literal{Value(tokens_.next().integer)});
    case Token::Kind::Real:
      return makeExpression(Literal{Value(tokens_.next().real)});
    case Token::Kind::Word:
    case Token::Kind::QuotedName:
      return word();
    case Token::Kind::Symbol:
      break;
    case Token::Kind::LineEnd:
    case Token::Kind::End:
      tokens_.failExpecting("expression");
  }
  if (tokens_.acceptSymbol("(")) {
    ExpressionPointer inner = expression();
    tokens_.expectSymbol(")");
    return inner;
  }
  if (tokens_.isSymbol("{")) return listLiteral();
  tokens_.failExpecting("expression");
}

ExpressionPointer ExpressionParser::listLiteral() {
  tokens_.expectSymbol("{");
  ListOf list;
  while (!tokens_.acceptSymbol("}")) {
    if (!list.items.empty()) tokens_.expectSymbol(",");
    list.items.push_back(expression());
  }
  return makeExpression(std::move(list));
}

ExpressionPointer ExpressionParser::word() {
  if (tokens_.peek().kind == Token::Kind::QuotedName) return nameOrCall(false);
  if (auto found = constantWord()) return found;
  if (tokens_.acceptWord("my")) return nameOrCall(true);
  if (tokens_.isWord("application") || tokens_.isWord("app")) {
    tokens_.skip(1);
    const bool byIdentifier = tokens_.acceptWord("id");
    return makeExpression(ApplicationNamed{primary(), byIdentifier});
  }
  if (auto found = command()) return found;
  if (auto found = specifier()) return withContainer(std::move(found));
  return nameOrCall(false);
}

ExpressionPointer ExpressionParser::constantWord() {
  static const std::pair<std::string_view, Value> constants[] = {
      {"true", Value(true)},     {"false", Value(false)}, {"return", Value("\r")},
      {"linefeed", Value("\n")}, {"tab", Value("\t")},    {"space", Value(" ")},
      {"quote", Value("\"")},
  };
  static constexpr Constant modifiers[] = {{"shift down", EventFlagShift},
                                           {"control down", EventFlagControl},
                                           {"option down", EventFlagOption},
                                           {"command down", EventFlagCommand}};
  for (const auto& [name, value] : constants) {
    if (tokens_.acceptWord(name)) return makeExpression(Literal{value});
  }
  if (tokens_.acceptWords({"missing", "value"})) {
    return makeExpression(Literal{Value(MissingValue{})});
  }
  if (tokens_.acceptWords({"current", "application"}) || tokens_.acceptWord("me")) {
    return makeExpression(SpecialName::Me);
  }
  if (tokens_.acceptWord("it")) return makeExpression(SpecialName::It);
  if (tokens_.acceptWord("result")) return makeExpression(SpecialName::Result);
  for (const Constant& modifier : modifiers) {
    const auto name = modifier.name.substr(0, modifier.name.find(' '));
    if (tellDepth_ > 0 && tokens_.acceptWords({name, "down"})) {
      return makeExpression(Literal{Value(modifier)});
    }
  }
  return nullptr;
}

ExpressionPointer ExpressionParser::nameOrCall(bool isMine) {
  if (!tokens_.isName()) tokens_.failExpecting("expression");
  const Token name = tokens_.next();
  if (!tokens_.acceptSymbol("(")) return makeExpression(Variable{name.word, name.text});
  HandlerCall call{name.word, name.text, {}, isMine};
  while (!tokens_.acceptSymbol(")")) {
    if (!call.arguments.empty()) tokens_.expectSymbol(",");
    call.arguments.push_back(expression());
  }
  return makeExpression(std::move(call));
}

ValueType ExpressionParser::valueType() {
  static constexpr std::pair<std::string_view, ValueType> types[] = {
      {"text", ValueType::Text}, {"string", ValueType::Text},   {"integer", ValueType::Integer},
      {"real", ValueType::Real}, {"number", ValueType::Number}, {"boolean", ValueType::Boolean},
      {"list", ValueType::List}};
  if (tokens_.acceptWords({"unicode", "text"})) return ValueType::Text;
  for (const auto& [name, type] : types) {
    if (tokens_.acceptWord(name)) return type;
  }
  tokens_.failExpecting("class name");
}

}  // namespace qb::scripting
