#include "QuillboxCommon/scripting/ScriptOperators.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <utility>

#include "QuillboxCommon/Format.h"

namespace qb::scripting {

namespace {

double requiredNumber(const Value& value) {
  const auto number = value.coercedNumber();
  if (!number) failToCoerce(value, "number");
  return *number;
}

std::string requiredText(const Value& value) {
  auto text = value.coercedText();
  if (!text) failToCoerce(value, "text");
  return std::move(*text);
}

std::vector<Value> itemsOf(const Value& value) {
  if (const List* const list = value.list()) return list->items;
  return {value};
}

Value concatenated(const Value& left, const Value& right) {
  if (left.text() != nullptr) {
    if (auto text = right.coercedText()) return Value(*left.text() + *text);
  }
  std::vector<Value> items = itemsOf(left);
  for (Value& item : itemsOf(right)) items.push_back(std::move(item));
  return Value::list(std::move(items));
}

std::partial_ordering ordered(const Value& left, const Value& right) {
  if (left.text() != nullptr) return lowerCase(*left.text()) <=> lowerCase(requiredText(right));
  return requiredNumber(left) <=> requiredNumber(right);
}

bool isIn(const Value& whole, const Value& part) {
  if (const List* const list = whole.list()) {
    if (part.list() == nullptr) {
      return std::find(list->items.begin(), list->items.end(), part) != list->items.end();
    }
    const auto& wanted = part.list()->items;
    return std::search(list->items.begin(), list->items.end(), wanted.begin(), wanted.end()) !=
               list->items.end() ||
           wanted.empty();
  }
  return lowerCase(requiredText(whole)).find(lowerCase(requiredText(part))) != std::string::npos;
}

/// Whole numbers stay whole as long as they fit.
Value fromNumber(double number, bool whole) {
  if (whole && std::abs(number) < 9e15) return Value(static_cast<std::int64_t>(number));
  return Value(number);
}

Value calculated(BinaryOperator operation, const Value& left, const Value& right) {
  const double a = requiredNumber(left), b = requiredNumber(right);
  const bool whole =
      a == std::trunc(a) && b == std::trunc(b) && left.real() == nullptr && right.real() == nullptr;
  const bool divides = operation == BinaryOperator::Divide || operation == BinaryOperator::Div ||
                       operation == BinaryOperator::Mod;
  if (divides && b == 0) {
    throw ScriptError{ScriptErrorDivideByZero,
                      stringWithFormat("Can\u2019t divide %@ by zero.", left.source()), ""};
  }
  switch (operation) {
    case BinaryOperator::Add:
      return fromNumber(a + b, whole);
    case BinaryOperator::Subtract:
      return fromNumber(a - b, whole);
    case BinaryOperator::Multiply:
      return fromNumber(a * b, whole);
    case BinaryOperator::Div:
      return fromNumber(std::trunc(a / b), true);
    case BinaryOperator::Mod:
      return fromNumber(std::fmod(a, b), whole);
    case BinaryOperator::Power:
      return Value(std::pow(a, b));
    default:
      return Value(a / b);
  }
}

/// Where the character that begins at `start` ends; a stray byte is one of its own.
std::size_t endOfCharacter(const std::string& text, std::size_t start) {
  std::size_t end = start + 1;
  while (end < text.size() && (text[end] & 0xc0) == 0x80) ++end;
  return end;
}

std::vector<Value> charactersOf(const std::string& text) {
  std::vector<Value> characters;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = endOfCharacter(text, start);
    characters.emplace_back(text.substr(start, end - start));
    start = end;
  }
  return characters;
}

bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         (c & 0x80) != 0;
}

std::vector<Value> wordsOf(const std::string& text) {
  std::vector<Value> words;
  for (auto start = text.begin(); start != text.end();) {
    const auto begin = std::find_if(start, text.end(), isWordByte);
    const auto end = std::find_if_not(begin, text.end(), isWordByte);
    if (begin != end) words.emplace_back(std::string(begin, end));
    start = end;
  }
  return words;
}

std::vector<Value> paragraphsOf(const std::string& text) {
  std::vector<Value> paragraphs;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find_first_of("\r\n", start);
    paragraphs.emplace_back(text.substr(start, end - start));
    if (end == std::string::npos) return paragraphs;
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
}

const char* nameOf(Part::Kind kind) {
  switch (kind) {
    case Part::Kind::Character:
      return "character";
    case Part::Kind::Word:
      return "word";
    case Part::Kind::Paragraph:
      return "paragraph";
    case Part::Kind::Item:
      break;
  }
  return "item";
}

/// The place that `index` means, or none.
std::optional<std::size_t> place(std::int64_t index, std::size_t count) {
  const auto size = static_cast<std::int64_t>(count);
  if (index < -size || index > size || index == 0) return std::nullopt;
  return static_cast<std::size_t>(index > 0 ? index - 1 : size + index);
}

}  // namespace

void failToCoerce(const Value& value, const std::string& type) {
  throw ScriptError{ScriptErrorCannotCoerce,
                    stringWithFormat("Can\u2019t make %@ into type %@.", value.source(), type), ""};
}

void failToGet(const std::string& what) {
  throw ScriptError{ScriptErrorNoSuchObject, stringWithFormat("Can\u2019t get %@.", what), ""};
}

std::size_t effortOf(BinaryOperator operation, const Value& left, const Value& right) {
  const std::size_t both = left.weight() + right.weight();
  switch (operation) {
    case BinaryOperator::Contains:
    case BinaryOperator::DoesNotContain:
    case BinaryOperator::IsIn:
    case BinaryOperator::IsNotIn:
      return both + left.weight() * right.weight() / 256;
    default:
      return both;
  }
}

Value applied(BinaryOperator operation, const Value& left, const Value& right) {
  switch (operation) {
    case BinaryOperator::Equal:
      return Value(left == right);
    case BinaryOperator::NotEqual:
      return Value(!(left == right));
    case BinaryOperator::Less:
      return Value(ordered(left, right) < 0);
    case BinaryOperator::LessOrEqual:
      return Value(ordered(left, right) <= 0);
    case BinaryOperator::Greater:
      return Value(ordered(left, right) > 0);
    case BinaryOperator::GreaterOrEqual:
      return Value(ordered(left, right) >= 0);
    case BinaryOperator::Contains:
      return Value(isIn(left, right));
    case BinaryOperator::DoesNotContain:
      return Value(!isIn(left, right));
    case BinaryOperator::IsIn:
      return Value(isIn(right, left));
    case BinaryOperator::IsNotIn:
      return Value(!isIn(right, left));
    case BinaryOperator::StartsWith:
      return Value(lowerCase(requiredText(left)).starts_with(lowerCase(requiredText(right))));
    case BinaryOperator::EndsWith:
      return Value(lowerCase(requiredText(left)).ends_with(lowerCase(requiredText(right))));
    case BinaryOperator::Concatenate:
      return concatenated(left, right);
    default:
      return calculated(operation, left, right);
  }
}

Value coerced(const Value& value, ValueType type) {
  switch (type) {
    case ValueType::Text:
      return Value(requiredText(value));
    case ValueType::Integer:
      if (const auto whole = value.coercedInteger()) return Value(*whole);
      failToCoerce(value, "integer");
    case ValueType::Real:
      return Value(requiredNumber(value));
    case ValueType::Number:
      if (value.number()) return value;
      return fromNumber(requiredNumber(value),
                        requiredNumber(value) == std::trunc(requiredNumber(value)));
    case ValueType::Boolean:
      if (value.boolean() != nullptr) return value;
      if (value == Value("true")) return Value(true);
      if (value == Value("false")) return Value(false);
      failToCoerce(value, "boolean");
    case ValueType::List:
      break;
  }
  return value.list() != nullptr && !value.list()->isRecord() ? value : Value::list(itemsOf(value));
}

std::optional<std::vector<Value>> partsOf(const Value& whole, Part::Kind kind) {
  if (const List* const list = whole.list()) {
    return kind == Part::Kind::Item ? std::optional(list->items) : std::nullopt;
  }
  const std::string* const text = whole.text();
  if (text == nullptr) return std::nullopt;
  switch (kind) {
    case Part::Kind::Word:
      return wordsOf(*text);
    case Part::Kind::Paragraph:
      return paragraphsOf(*text);
    default:
      return charactersOf(*text);
  }
}

Value chosenParts(const Part& part, const Value& whole, std::int64_t index, std::int64_t last) {
  const std::string name = nameOf(part.kind);
  const auto parts = partsOf(whole, part.kind);
  if (part.choice == Part::Choice::Every) {
    if (!parts) failToGet(stringWithFormat("every %@ of %@", name, whole.source()));
    return Value::list(*parts);
  }
  const auto first = parts ? place(index, parts->size()) : std::nullopt;
  if (part.choice == Part::Choice::One) {
    if (!first) failToGet(stringWithFormat("%@ %ld of %@", name, index, whole.source()));
    return (*parts)[*first];
  }
  const auto end = parts ? place(last, parts->size()) : std::nullopt;
  if (!first || !end) {
    failToGet(stringWithFormat("%@s %ld thru %ld of %@", name, index, last, whole.source()));
  }
  const auto [from, to] = std::minmax(*first, *end);
  const auto begin = parts->begin() + static_cast<std::ptrdiff_t>(from);
  Value list = Value::list({begin, begin + static_cast<std::ptrdiff_t>(to - from + 1)});
  return part.asText ? Value(requiredText(list)) : list;
}

Value propertyOf(const std::string& name, const Value& container) {
  const List* const list = container.list();
  if (name == "length") {
    if (list != nullptr) return Value(static_cast<std::int64_t>(list->items.size()));
    if (const auto characters = partsOf(container, Part::Kind::Character)) {
      return Value(static_cast<std::int64_t>(characters->size()));
    }
  } else if (list != nullptr && list->isRecord()) {
    const auto label = std::find(list->labels.begin(), list->labels.end(), name);
    if (label != list->labels.end()) return list->items[label - list->labels.begin()];
  } else if (list != nullptr && name == "reverse") {
    return Value::list({list->items.rbegin(), list->items.rend()});
  } else if (list != nullptr && name == "rest" && !list->items.empty()) {
    return Value::list({list->items.begin() + 1, list->items.end()});
  } else if (const ScriptElement* const element = container.element(); name == "name" && element) {
    if (element->path.empty()) return Value(element->application.name);
    if (element->path.back().selection == ScriptElement::Selection::Name) {
      return Value(element->path.back().selector);
    }
  }
  failToGet(stringWithFormat("%@ of %@", name, container.source()));
}

}  // namespace qb::scripting
