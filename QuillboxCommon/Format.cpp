#include "QuillboxCommon/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

namespace qb {

namespace {

constexpr std::string_view absent = "(null)";
constexpr int defaultDecimals = 6;
/// What a pattern may ask for at most, in characters.
constexpr int longestField = 1000;

/// One conversion of a pattern, between its percent sign and its letter.
struct Conversion {
  bool padsWithZeros = false;
  bool alignsLeft = false;
  bool showsPlus = false;
  int width = 0;
  std::optional<int> precision;
  char letter = 0;
};

bool isDigit(char character) { return character >= '0' && character <= '9'; }

int readNumber(std::string_view text, std::size_t& at) {
  int number = 0;
  for (; at < text.size() && isDigit(text[at]); ++at) {
    number = std::min(number * 10 + (text[at] - '0'), longestField);
  }
  return number;
}

/// Reads the conversion that begins at `at`, behind the percent sign, and moves `at` behind it.
/// Answers none when the pattern ends first.
std::optional<Conversion> readConversion(std::string_view format, std::size_t& at) {
  Conversion conversion;
  for (; at < format.size(); ++at) {
    if (format[at] == '0') {
      conversion.padsWithZeros = true;
    } else if (format[at] == '-') {
      conversion.alignsLeft = true;
    } else if (format[at] == '+') {
      conversion.showsPlus = true;
    } else {
      break;
    }
  }
  conversion.width = readNumber(format, at);
  if (at < format.size() && format[at] == '.') {
    ++at;
    conversion.precision = readNumber(format, at);
  }
  while (at < format.size() && format[at] == 'l') ++at;
  if (at == format.size()) return std::nullopt;
  conversion.letter = format[at++];
  return conversion;
}

std::string naturalForm(double number) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  return {buffer.data(), end};
}

std::string withDecimals(double number, int decimals) {
  // The longest number has 309 digits before the point, and a sign.
  std::string text(
      static_cast<std::size_t>(std::numeric_limits<double>::max_exponent10 + 3 + decimals), '\0');
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, decimals)
                       .ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

/// The text of a number for a numeric conversion, or none for an argument of the wrong type.
struct NumberText {
  const Conversion& conversion;

  std::optional<std::string> operator()(std::string_view) const { return std::nullopt; }
  std::optional<std::string> operator()(double number) const {
    if (conversion.letter != 'f') return std::nullopt;
    return withDecimals(number, conversion.precision.value_or(defaultDecimals));
  }
  template <class Integer>
  std::optional<std::string> operator()(Integer number) const {
    if (conversion.letter == 'f') return (*this)(static_cast<double>(number));
    std::string text = std::to_string(number);
    const std::size_t signs = text.front() == '-' ? 1 : 0;
    const auto digits = static_cast<std::size_t>(conversion.precision.value_or(1)) + signs;
    if (text.size() < digits) text.insert(signs, digits - text.size(), '0');
    return text;
  }
};

struct NaturalText {
  std::string operator()(std::string_view text) const { return std::string(text); }
  std::string operator()(double number) const { return naturalForm(number); }
  template <class Integer>
  std::string operator()(Integer number) const {
    return std::to_string(number);
  }
};

void pad(std::string& text, const Conversion& conversion, bool isNumber) {
  const auto width = static_cast<std::size_t>(conversion.width);
  if (text.size() >= width) return;
  const std::size_t missing = width - text.size();
  if (conversion.alignsLeft) {
    text.append(missing, ' ');
  } else if (isNumber && conversion.padsWithZeros) {
    const bool hasSign = text.front() == '-' || text.front() == '+';
    text.insert(hasSign ? 1 : 0, missing, '0');
  } else {
    text.insert(0, missing, ' ');
  }
}

std::string converted(const Conversion& conversion, const FormatArgument* argument) {
  if (argument == nullptr) return std::string(absent);
  if (conversion.letter == '@') return std::visit(NaturalText{}, *argument);
  if (conversion.letter == 's') {
    const auto* string = std::get_if<std::string_view>(argument);
    std::string text(string != nullptr ? *string : absent);
    pad(text, conversion, false);
    return text;
  }
  auto text = std::visit(NumberText{conversion}, *argument);
  if (!text) return std::string(absent);
  if (conversion.showsPlus && text->front() != '-') text->insert(0, 1, '+');
  pad(*text, conversion, true);
  return *text;
}

}  // namespace

std::string formatted(std::string_view format, std::initializer_list<FormatArgument> arguments) {
  std::string text;
  text.reserve(format.size() + 16 * arguments.size());
  const FormatArgument* next = arguments.begin();
  std::size_t at = 0;
  while (at < format.size()) {
    const std::size_t percent = std::min(format.find('%', at), format.size());
    text.append(format.substr(at, percent - at));
    if (percent == format.size()) break;
    at = percent + 1;
    const auto conversion = readConversion(format, at);
    const std::string_view asWritten = format.substr(percent, at - percent);
    if (!conversion || std::string_view("@idufs%").find(conversion->letter) == std::string::npos) {
      text.append(asWritten);
    } else if (conversion->letter == '%') {
      text.push_back('%');
    } else {
      text.append(converted(*conversion, next != arguments.end() ? next++ : nullptr));
    }
  }
  return text;
}

}  // namespace qb
