#include "QuillboxCommon/scripting/ScriptValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace qb {

namespace {

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

std::string ScriptElement::description() const {
  if (path.empty()) return "application " + quoted(application.name);
  std::string text;
  for (auto step = path.rbegin(); step != path.rend(); ++step) {
    if (!text.empty()) text += " of ";
    if (step->selection == Selection::Every) {
      text += "every " + step->elementClass;
      continue;
    }
    text += step->elementClass + ' ';
    if (step->selection == Selection::Identifier) text += "id ";
    text += step->selection == Selection::Index ? step->selector : quoted(step->selector);
  }
  return text;
}

}  // namespace qb

namespace qb::scripting {

namespace {

constexpr int greatestDepth = 64;
constexpr std::size_t weightOfAnything = 16;
/// What a message shows of a value.
constexpr std::size_t longestSource = 200;

/// The fewest digits that tell it apart; always seen to be a real.
std::string realText(double value) {
  char digits[64];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), value);
  std::string text(std::begin(digits), end.ptr);
  const bool plain = text.find_first_not_of("-0123456789") == std::string::npos;
  return plain ? text + ".0" : text;
}

std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

template <class Number>
std::optional<Number> parsed(const std::string& text) {
  const std::string digits = trimmed(text);
  Number number{};
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

std::optional<std::int64_t> wholeNumber(double value) {
  if (!(std::abs(value) < 9.2e18) || std::trunc(value) != value) return std::nullopt;
  return static_cast<std::int64_t>(value);
}

std::string sourceOfText(const std::string& text) {
  std::string source = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') source += '\\';
    source += c;
  }
  return source + '"';
}

}  // namespace

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

Value Value::list(std::vector<Value> items) { return record({}, std::move(items)); }

Value Value::record(std::vector<std::string> labels, std::vector<Value> items) {
  auto list = std::make_shared<List>();
  list->weight = weightOfAnything;
  for (const Value& item : items) {
    list->weight += item.weight();
    list->depth = std::max(list->depth, item.depth() + 1);
  }
  if (list->depth > greatestDepth) {
    throw ScriptError{ScriptErrorStackOverflow, "A list holds too many lists in each other.", ""};
  }
  list->items = std::move(items);
  list->labels = std::move(labels);
  Value value;
  value.value_ = Items(std::move(list));
  return value;
}

const std::string* Value::text() const {
  const Text* const text = std::get_if<Text>(&value_);
  return text == nullptr ? nullptr : text->get();
}

const List* Value::list() const {
  const Items* const items = std::get_if<Items>(&value_);
  return items == nullptr ? nullptr : items->get();
}

const ScriptElement* Value::element() const {
  const Element* const element = std::get_if<Element>(&value_);
  return element == nullptr ? nullptr : element->get();
}

std::optional<double> Value::number() const {
  if (integer() != nullptr) return static_cast<double>(*integer());
  if (real() != nullptr) return *real();
  return std::nullopt;
}

std::optional<std::string> Value::coercedText() const {
  if (text() != nullptr) return *text();
  if (integer() != nullptr) return std::to_string(*integer());
  if (real() != nullptr) return realText(*real());
  if (boolean() != nullptr) return *boolean() ? "true" : "false";
  if (list() == nullptr || list()->isRecord()) return std::nullopt;
  std::string joined;
  for (const Value& item : list()->items) {
    const auto part = item.coercedText();
    if (!part) return std::nullopt;
    joined += *part;
  }
  return joined;
}

std::optional<std::int64_t> Value::coercedInteger() const {
  if (integer() != nullptr) return *integer();
  const auto value = coercedNumber();
  return value ? wholeNumber(std::nearbyint(*value)) : std::nullopt;
}

std::optional<double> Value::coercedNumber() const {
  if (const auto value = number()) return value;
  return text() != nullptr ? parsed<double>(*text()) : std::nullopt;
}

std::size_t Value::weight() const {
  if (text() != nullptr) return weightOfAnything + text()->size();
  if (list() != nullptr) return list()->weight;
  if (element() == nullptr) return weightOfAnything;
  std::size_t weight = weightOfAnything + element()->application.name.size();
  for (const auto& step : element()->path) weight += weightOfAnything + step.selector.size();
  return weight;
}

int Value::depth() const { return list() == nullptr ? 0 : list()->depth; }

std::string Value::source() const {
  if (text() != nullptr) {
    return sourceOfText(text()->size() > longestSource ? text()->substr(0, longestSource)
                                                       : *text());
  }
  if (element() != nullptr) return element()->description();
  if (constant() != nullptr) return std::string(constant()->name);
  if (isMe()) return "me";
  if (isNone()) return "nothing";
  if (list() == nullptr) return coercedText().value_or("missing value");
  std::string items;
  for (std::size_t i = 0; i < list()->items.size() && items.size() < longestSource; ++i) {
    if (i > 0) items += ", ";
    if (list()->isRecord()) items += list()->labels[i] + ':';
    items += list()->items[i].source();
  }
  return "{" + items + "}";
}

ScriptDescriptor Value::descriptor() const {
  ScriptDescriptor descriptor;
  if (const List* const items = list()) {
    for (const Value& item : items->items) descriptor.items.push_back(item.descriptor());
  } else {
    descriptor.stringValue = coercedText();
  }
  return descriptor;
}

bool operator==(const Value& a, const Value& b) {
  const auto first = a.number(), second = b.number();
  if (first && second) return *first == *second;
  if (a.text() != nullptr && b.text() != nullptr) {
    return lowerCase(*a.text()) == lowerCase(*b.text());
  }
  if (a.list() != nullptr && b.list() != nullptr) {
    return a.list()->labels == b.list()->labels && a.list()->items == b.list()->items;
  }
  if (a.element() != nullptr && b.element() != nullptr) return *a.element() == *b.element();
  return a.value_ == b.value_;
}

}  // namespace qb::scripting
