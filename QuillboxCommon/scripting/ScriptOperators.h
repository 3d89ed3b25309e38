#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/scripting/ScriptNode.h"
#include "QuillboxCommon/scripting/ScriptValue.h"

/// What operators and specifiers make of values. Operations throw `ScriptError`.
namespace qb::scripting {

/// All operators but "and" and "or", which may leave their right side alone.
Value applied(BinaryOperator operation, const Value& left, const Value& right);
/// About how many bytes that looks at, before the result is known.
std::size_t effortOf(BinaryOperator operation, const Value& left, const Value& right);
Value coerced(const Value& value, ValueType type);

/// The items of a list, or the pieces of a text; none of anything else.
std::optional<std::vector<Value>> partsOf(const Value& whole, Part::Kind kind);
/// The piece or pieces that `index`, from `index` to `last` or all of them name. Indices count from
/// 1, negative ones from the end; a range may run backwards.
Value chosenParts(const Part& part, const Value& whole, std::int64_t index, std::int64_t last);

Value propertyOf(const std::string& name, const Value& container);

[[noreturn]] void failToCoerce(const Value& value, const std::string& type);
[[noreturn]] void failToGet(const std::string& what);

}  // namespace qb::scripting
