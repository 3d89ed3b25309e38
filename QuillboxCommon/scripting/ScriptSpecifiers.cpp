// The part of the expression parser that reads things of things: items of lists, pieces of text,
// properties, and what lies in an application.

#include <algorithm>
#include <iterator>
#include <utility>

#include "QuillboxCommon/scripting/ScriptExpressions.h"

namespace qb::scripting {

namespace {

/// Where a thing keeps its container; null for what has none.
struct ContainerOf {
  ExpressionPointer* operator()(Part& node) const { return &node.container; }
  ExpressionPointer* operator()(Property& node) const { return &node.container; }
  ExpressionPointer* operator()(Element& node) const { return &node.container; }
  template <class Other>
  ExpressionPointer* operator()(Other&) const {
    return nullptr;
  }
};

}  // namespace

ExpressionPointer ExpressionParser::specifier() {
  if (auto found = ordinalPart()) return found;
  if (auto found = part()) return found;
  if (auto found = property()) return found;
  return tellDepth_ > 0 ? element() : nullptr;
}

std::optional<Part::Kind> ExpressionParser::partKind(bool* isPlural) {
  struct Name {
    std::string_view word;
    Part::Kind kind;
    bool isPlural;
  };
  static constexpr Name names[] = {
      {"item", Part::Kind::Item, false},           {"items", Part::Kind::Item, true},
      {"character", Part::Kind::Character, false}, {"characters", Part::Kind::Character, true},
      {"word", Part::Kind::Word, false},           {"words", Part::Kind::Word, true},
      {"paragraph", Part::Kind::Paragraph, false}, {"paragraphs", Part::Kind::Paragraph, true},
  };
  for (const Name& name : names) {
    if (!tokens_.acceptWord(name.word)) continue;
    *isPlural = name.isPlural;
    return name.kind;
  }
  return std::nullopt;
}

ExpressionPointer ExpressionParser::ordinalPart() {
  static constexpr std::pair<std::string_view, std::int64_t> ordinals[] = {
      {"first", 1}, {"second", 2}, {"third", 3}, {"last", -1}};
  bool isPlural = false;
  if (tokens_.acceptWord("every")) {
    const auto kind = partKind(&isPlural);
    if (!kind) {
      const auto elements = tellDepth_ > 0 ? elementClass(&isPlural) : std::nullopt;
      if (!elements) tokens_.failExpecting("class name");
      return everyElement(*elements);
    }
    Part every;
    every.kind = *kind;
    every.choice = Part::Choice::Every;
    return makeExpression(std::move(every));
  }
  for (const auto& [name, index] : ordinals) {
    if (!tokens_.acceptWord(name)) continue;
    const auto kind = partKind(&isPlural);
    if (!kind) tokens_.failExpecting("class name");
    Part one;
    one.kind = *kind;
    one.from = makeExpression(Literal{Value(index)});
    return makeExpression(std::move(one));
  }
  return nullptr;
}

ExpressionPointer ExpressionParser::part() {
  Part part;
  bool isPlural = false;
  if (tokens_.acceptWord("text")) {
    part.kind = Part::Kind::Character;
    part.asText = true;
  } else if (const auto kind = partKind(&isPlural)) {
    part.kind = *kind;
  } else {
    return nullptr;
  }
  if (isPlural && (tokens_.isWord("of") || tokens_.isWord("in"))) {
    part.choice = Part::Choice::Every;
    return makeExpression(std::move(part));
  }
  part.from = selector();
  if (tokens_.acceptWord("through") || tokens_.acceptWord("thru")) {
    part.choice = Part::Choice::Range;
    part.to = selector();
  } else if (part.asText || isPlural) {
    tokens_.failExpecting("\u201cthrough\u201d");
  }
  return makeExpression(std::move(part));
}

ExpressionPointer ExpressionParser::property() {
  if (tokens_.acceptWords({"button", "returned"})) {
    return makeExpression(Property{"button returned", nullptr});
  }
  for (const std::string_view name : {"length", "rest", "reverse"}) {
    if (tokens_.acceptWord(name)) return makeExpression(Property{std::string(name), nullptr});
  }
  if (tellDepth_ == 0) return nullptr;
  if (tokens_.acceptWords({"current", "pane"})) {
    return makeExpression(Property{"current pane", nullptr});
  }
  for (const std::string_view name : {"enabled", "frontmost", "name"}) {
    if (tokens_.acceptWord(name)) return makeExpression(Property{std::string(name), nullptr});
  }
  return nullptr;
}

std::optional<std::string_view> ExpressionParser::elementClass(bool* isPlural) {
  struct Name {
    std::initializer_list<std::string_view> words;
    std::string_view elementClass;
    bool isPlural = false;
  };
  // Longer forms first.
  static const Name names[] = {
      {{"menu", "bar", "item"}, "menu bar item"},
      {{"menu", "bar", "items"}, "menu bar item", true},
      {{"menu", "bar"}, "menu bar"},
      {{"menu", "item"}, "menu item"},
      {{"menu", "items"}, "menu item", true},
      {{"menu", "button"}, "menu button"},
      {{"menu"}, "menu"},
      {{"application", "process"}, "process"},
      {{"process"}, "process"},
      {{"window"}, "window"},
      {{"button"}, "button"},
      {{"pane"}, "pane"},
      {{"anchor"}, "anchor"},
  };
  for (const Name& name : names) {
    if (!tokens_.acceptWords(name.words)) continue;
    *isPlural = name.isPlural;
    return name.elementClass;
  }
  return std::nullopt;
}

ExpressionPointer ExpressionParser::everyElement(std::string_view elementClass) {
  Element element;
  element.elementClass = elementClass;
  element.selection = ScriptElement::Selection::Every;
  return makeExpression(std::move(element));
}

ExpressionPointer ExpressionParser::element() {
  bool isPlural = false;
  const auto found = elementClass(&isPlural);
  if (!found) return nullptr;
  if (isPlural) return everyElement(*found);
  Element element;
  element.elementClass = *found;
  if (tokens_.acceptWord("id")) element.selection = ScriptElement::Selection::Identifier;
  element.selector = selector();
  return makeExpression(std::move(element));
}

/// A number, a name or anything in brackets: what follows with "of" belongs to the whole.
ExpressionPointer ExpressionParser::selector() {
  const NestingGuard guard(nesting_);
  while (tokens_.acceptWord("the")) continue;
  if (tokens_.acceptSymbol("-")) {
    return makeExpression(Unary{UnaryOperator::Minus, selector()});
  }
  const Token& token = tokens_.peek();
  if (token.kind == Token::Kind::Word || token.kind == Token::Kind::QuotedName) {
    if (!tokens_.isName()) tokens_.failExpecting("expression");
    return makeExpression(Variable{token.word, tokens_.next().text});
  }
  return primary();
}

ExpressionPointer ExpressionParser::specifierAfterPossessive() {
  const NestingGuard guard(nesting_);
  ExpressionPointer found;
  if (tokens_.acceptSymbol("(")) {
    found = specifier();
    if (!found) tokens_.failExpecting("property or element");
    found = withContainer(std::move(found));
    tokens_.expectSymbol(")");
  } else {
    found = specifier();
  }
  if (!found) tokens_.failExpecting("property or element");
  return found;
}

ExpressionPointer ExpressionParser::withContainer(ExpressionPointer specifier) {
  if (tokens_.acceptWord("of") || tokens_.acceptWord("in")) attach(*specifier, postfix());
  return specifier;
}

void ExpressionParser::attach(Expression& specifier, ExpressionPointer container) {
  std::vector<Expression*> path{&specifier};
  ExpressionPointer* place = std::visit(ContainerOf{}, specifier.node);
  while (place != nullptr && *place != nullptr) {
    path.push_back(place->get());
    place = std::visit(ContainerOf{}, (*place)->node);
  }
  if (place == nullptr) tokens_.failExpecting("end of line");
  *place = std::move(container);
  // What lies around the container has become deeper.
  for (auto each = path.rbegin(); each != path.rend(); ++each) measure(**each);
}

}  // namespace qb::scripting
