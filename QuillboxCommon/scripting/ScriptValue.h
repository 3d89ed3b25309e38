#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "QuillboxCommon/scripting/ScriptDescriptor.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb::scripting {

class Value;

/// What values have no name for: a command that answers nothing.
struct NoValue {
  friend bool operator==(const NoValue&, const NoValue&) = default;
};
struct MissingValue {
  friend bool operator==(const MissingValue&, const MissingValue&) = default;
};
/// The script itself.
struct Me {
  friend bool operator==(const Me&, const Me&) = default;
};
/// A word that only commands understand, such as "command down".
struct Constant {
  std::string_view name;
  EventFlags flag = 0;
  friend bool operator==(const Constant&, const Constant&) = default;
};
struct List;

/// One value of a running script. Cheap to copy: what is large is shared and never changes.
class Value {
 public:
  using Text = std::shared_ptr<const std::string>;
  using Items = std::shared_ptr<const List>;
  using Element = std::shared_ptr<const ScriptElement>;

  Value() = default;
  explicit Value(bool value) : value_(value) {}
  explicit Value(std::int64_t value) : value_(value) {}
  explicit Value(double value) : value_(value) {}
  explicit Value(std::string value)
      : value_(std::make_shared<const std::string>(std::move(value))) {}
  explicit Value(const char* value) : Value(std::string(value)) {}
  explicit Value(MissingValue value) : value_(value) {}
  explicit Value(Me value) : value_(value) {}
  explicit Value(Constant value) : value_(value) {}
  explicit Value(ScriptElement element)
      : value_(std::make_shared<const ScriptElement>(std::move(element))) {}
  /// Throws when the list would be too deep: sharing makes deep ones cheap to build.
  static Value list(std::vector<Value> items);
  /// A list whose items have names.
  static Value record(std::vector<std::string> labels, std::vector<Value> items);

  bool isNone() const { return std::holds_alternative<NoValue>(value_); }
  const bool* boolean() const { return std::get_if<bool>(&value_); }
  const std::int64_t* integer() const { return std::get_if<std::int64_t>(&value_); }
  const double* real() const { return std::get_if<double>(&value_); }
  const Constant* constant() const { return std::get_if<Constant>(&value_); }
  bool isMe() const { return std::holds_alternative<Me>(value_); }
  /// Null for any other kind, as are the next two.
  const std::string* text() const;
  const List* list() const;
  const ScriptElement* element() const;

  /// An integer or a real as a real.
  std::optional<double> number() const;
  /// What a text, number or boolean reads as; a list of such, one after the other.
  std::optional<std::string> coercedText() const;
  /// What an integer, a real without fraction or a text of one reads as.
  std::optional<std::int64_t> coercedInteger() const;
  std::optional<double> coercedNumber() const;

  /// How much there is of it, shared parts counted as often as they occur. In bytes, roughly.
  std::size_t weight() const;
  int depth() const;
  /// As a script would write it, in messages; shortened where it is long.
  std::string source() const;
  ScriptDescriptor descriptor() const;

  /// As scripts compare: text without regard to case, numbers by value.
  friend bool operator==(const Value& a, const Value& b);

 private:
  std::variant<NoValue, MissingValue, Me, bool, std::int64_t, double, Constant, Text, Items,
               Element>
      value_;
};

struct List {
  std::vector<Value> items;
  /// Empty for a plain list, else one for each item.
  std::vector<std::string> labels;
  std::size_t weight = 0;
  int depth = 1;

  bool isRecord() const { return !labels.empty(); }
};

/// ASCII letters in lower case; all else as it is.
std::string lowerCase(std::string_view text);

}  // namespace qb::scripting
