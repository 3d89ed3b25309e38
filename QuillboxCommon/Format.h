#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace qb {

/// One argument of `stringWithFormat`.
using FormatArgument = std::variant<std::int64_t, std::uint64_t, double, std::string_view>;

/// Fills a message pattern: "%@" takes any argument in its natural form (a real number by the
/// fewest digits that tell it apart), "%i", "%d", "%u", "%ld", "%li", "%lu" and "%lld" an integer
/// (a boolean counts as 0 or 1), "%f" a number with six decimals, "%s" a string, "%.2f", "%5i" and
/// "%02i" as C's printf, "%%" a percent sign. A conversion without an argument, or with one of the
/// wrong type, shows "(null)"; surplus arguments are ignored; any other letter after a percent sign
/// stands as it is. Never fails, and knows no locale. Any thread.
std::string formatted(std::string_view format, std::initializer_list<FormatArgument> arguments);

namespace detail {
inline FormatArgument formatArgument(bool value) { return std::int64_t{value}; }
template <class T>
requires std::is_integral_v<T> FormatArgument formatArgument(T value) {
  if constexpr (std::is_signed_v<T>) return static_cast<std::int64_t>(value);
  return static_cast<std::uint64_t>(value);
}
inline FormatArgument formatArgument(double value) { return value; }
inline FormatArgument formatArgument(std::string_view value) { return value; }
inline FormatArgument formatArgument(const std::string& value) { return std::string_view(value); }
inline FormatArgument formatArgument(const char* value) {
  return value != nullptr ? std::string_view(value) : std::string_view("(null)");
}
}  // namespace detail

template <class... Arguments>
std::string stringWithFormat(std::string_view format, const Arguments&... arguments) {
  return formatted(format, {detail::formatArgument(arguments)...});
}

}  // namespace qb
