#include "QuillboxCommon/Utf8.h"

#include <iterator>

namespace qb {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t largest = 0x10FFFF;
constexpr unsigned bitsOfFollower = 6;

bool isSurrogate(char32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

/// How the first byte of a character begins, and the least character that takes so many bytes.
struct Form {
  unsigned char mask, mark;
  std::size_t followers;
  char32_t least;
};
constexpr Form forms[] = {
    {0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

}  // namespace

std::optional<char32_t> takeCodePoint(std::string_view& text) {
  const std::string_view all = text;
  const auto first = static_cast<unsigned char>(all.front());
  text.remove_prefix(1);
  for (const Form& form : forms) {
    if ((first & form.mask) != form.mark) continue;
    if (all.size() <= form.followers) return std::nullopt;
    char32_t codePoint = first & static_cast<unsigned char>(~form.mask);
    for (std::size_t at = 1; at <= form.followers; ++at) {
      const auto byte = static_cast<unsigned char>(all[at]);
      if ((byte & 0xC0U) != 0x80U) return std::nullopt;
      codePoint = codePoint << bitsOfFollower | (byte & 0x3FU);
    }
    if (codePoint < form.least || codePoint > largest || isSurrogate(codePoint)) {
      return std::nullopt;
    }
    text.remove_prefix(form.followers);
    return codePoint;
  }
  return std::nullopt;
}

void appendUtf8(std::string& text, char32_t codePoint) {
  if (codePoint > largest || isSurrogate(codePoint)) codePoint = replacement;
  const Form* form = std::begin(forms);
  while (form + 1 != std::end(forms) && codePoint >= form[1].least) ++form;
  std::size_t shift = form->followers * bitsOfFollower;
  text += static_cast<char>(form->mark | codePoint >> shift);
  while (shift > 0) {
    shift -= bitsOfFollower;
    text += static_cast<char>(0x80U | (codePoint >> shift & 0x3FU));
  }
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    if (!takeCodePoint(text)) return false;
  }
  return true;
}

std::size_t numberOfCharacters(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) takeCodePoint(text);
  return count;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  std::string_view rest = text;
  for (; count > 0 && !rest.empty(); --count) takeCodePoint(rest);
  return text.substr(0, text.size() - rest.size());
}

}  // namespace qb
