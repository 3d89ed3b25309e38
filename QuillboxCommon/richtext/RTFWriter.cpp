#include "QuillboxCommon/richtext/RTFWriter.h"

#include <algorithm>
#include <cmath>

#include "QuillboxCommon/Utf8.h"

namespace qb {

namespace {

constexpr char32_t replacement = 0xFFFD;

int inByte(double component) {
  return static_cast<int>(std::lround(255 * std::clamp(component, 0.0, 1.0)));
}

/// The number of a character counts as one with a sign, of 16 bits.
std::string numbered(std::uint32_t unit) {
  const auto number = static_cast<int>(unit);
  return "\\u" + std::to_string(number > 0x7FFF ? number - 0x10000 : number) + '?';
}

}  // namespace

std::string RTFWriter::write(const AttributedString& text) {
  std::vector<std::size_t> colors;
  for (const auto& run : text.runs()) colors.push_back(indexOfColor(run.color));
  rtf_ =
      "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n{\\fonttbl{\\f0\\fswiss\\fcharset0 Helvetica;}}\n";
  writeColors();
  rtf_ += "\\f0";
  for (std::size_t at = 0; at < colors.size(); ++at) {
    const AttributedString::Run& run = text.runs()[at];
    if (run.text.empty()) continue;
    writeAppearance(run.font, colors[at]);
    writeText(run.text);
  }
  rtf_ += '}';
  return std::move(rtf_);
}

std::size_t RTFWriter::indexOfColor(const Color& color) {
  const Components components{inByte(color.red()), inByte(color.green()), inByte(color.blue())};
  if (components == Components{0, 0, 0}) return 0;
  const auto known = std::find(colors_.begin(), colors_.end(), components);
  const auto index = static_cast<std::size_t>(known - colors_.begin());
  if (known == colors_.end()) colors_.push_back(components);
  return index + 1;
}

void RTFWriter::writeColors() {
  rtf_ += "{\\colortbl;";
  for (const Components& each : colors_) {
    rtf_ += "\\red" + std::to_string(each.red);
    rtf_ += "\\green" + std::to_string(each.green);
    rtf_ += "\\blue" + std::to_string(each.blue) + ';';
  }
  rtf_ += "}\n";
}

void RTFWriter::writeAppearance(const Font& font, std::size_t color) {
  rtf_ += font.bold ? "\\b" : "\\b0";
  rtf_ += font.italic ? "\\i" : "\\i0";
  rtf_ += "\\fs" + std::to_string(std::lround(2 * font.size));
  rtf_ += "\\cf" + std::to_string(color) + ' ';
}

void RTFWriter::writeText(std::string_view text) {
  while (!text.empty()) writeCharacter(takeCodePoint(text).value_or(replacement));
}

void RTFWriter::writeCharacter(char32_t character) {
  constexpr char32_t firstBeyondShort = 0x10000, firstBeyondAscii = 0x7F;
  const bool isSecondOfTwo = followsReturn_ && character == '\n';
  followsReturn_ = character == '\r';
  if (isSecondOfTwo) return;
  if (character == '\n' || character == '\r') {
    rtf_ += "\\par\n";
  } else if (character == '\t') {
    rtf_ += "\\tab ";
  } else if (character == '\\' || character == '{' || character == '}') {
    rtf_ += {'\\', static_cast<char>(character)};
  } else if (character >= ' ' && character < firstBeyondAscii) {
    rtf_ += static_cast<char>(character);
  } else if (character < firstBeyondShort) {
    rtf_ += numbered(character);
  } else {
    const std::uint32_t offset = character - firstBeyondShort;
    rtf_ += numbered(0xD800 + (offset >> 10)) + numbered(0xDC00 + (offset & 0x3FF));
  }
}

}  // namespace qb
