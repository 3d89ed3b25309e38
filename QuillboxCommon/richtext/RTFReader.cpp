#include "QuillboxCommon/richtext/RTFReader.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "QuillboxCommon/Utf8.h"

namespace qb {

namespace {

using Token = RTFLexer::Token;

constexpr std::size_t mostGroups = 500;
constexpr double largestSize = 400;
constexpr double defaultSize = 12;
constexpr int longestFallback = 100;
/// Text beyond that looks like the last of them.
constexpr std::size_t mostRuns = 100'000;

/// Groups that are known by more than a star not to hold text of the document.
constexpr std::array groupsWithoutText = {std::string_view("NeXTGraphic"),
                                          std::string_view("annotation"),
                                          std::string_view("atnauthor"),
                                          std::string_view("atnid"),
                                          std::string_view("bkmkend"),
                                          std::string_view("bkmkstart"),
                                          std::string_view("filetbl"),
                                          std::string_view("fldinst"),
                                          std::string_view("footer"),
                                          std::string_view("footerf"),
                                          std::string_view("footerl"),
                                          std::string_view("footerr"),
                                          std::string_view("footnote"),
                                          std::string_view("header"),
                                          std::string_view("headerf"),
                                          std::string_view("headerl"),
                                          std::string_view("headerr"),
                                          std::string_view("info"),
                                          std::string_view("listoverridetable"),
                                          std::string_view("listtable"),
                                          std::string_view("nonshppict"),
                                          std::string_view("objclass"),
                                          std::string_view("objdata"),
                                          std::string_view("pict"),
                                          std::string_view("private"),
                                          std::string_view("revtbl"),
                                          std::string_view("rsidtbl"),
                                          std::string_view("stylesheet"),
                                          std::string_view("tc"),
                                          std::string_view("themedata"),
                                          std::string_view("xe")};

struct NamedCharacter {
  std::string_view word;
  char32_t character;
};
constexpr NamedCharacter namedCharacters[] = {
    {"par", '\n'},      {"line", '\n'},      {"sect", '\n'},        {"page", '\n'},
    {"row", '\n'},      {"tab", '\t'},       {"cell", '\t'},        {"emdash", 0x2014},
    {"endash", 0x2013}, {"emspace", 0x2003}, {"enspace", 0x2002},   {"bullet", 0x2022},
    {"lquote", 0x2018}, {"rquote", 0x2019},  {"ldblquote", 0x201C}, {"rdblquote", 0x201D},
    {"zwj", 0x200D},    {"zwnj", 0x200C}};

bool isOn(const Token& token) { return !token.hasNumber || token.number != 0; }

std::uint8_t colorComponent(const Token& token) {
  return static_cast<std::uint8_t>(std::clamp(token.number, 0, 255));
}

}  // namespace

std::optional<AttributedString> RTFReader::read() {
  while (true) {
    const Token token = lexer_.next();
    if (token.kind == Token::Kind::End) break;
    if (token.kind == Token::Kind::GroupBegin) {
      if (groups_.size() == mostGroups) return std::nullopt;
      groups_.push_back(groups_.empty() ? Group() : group());
      fallbacksToSkip_ = 0;
    } else if (token.kind == Token::Kind::GroupEnd) {
      endGroup();
      if (groups_.empty()) break;
    } else {
      handle(token);
    }
  }
  if (!groups_.empty()) endPendingSurrogate();
  endRun();
  return std::move(text_);
}

void RTFReader::endGroup() {
  endPendingSurrogate();
  groups_.pop_back();
  fallbacksToSkip_ = 0;
}

void RTFReader::handle(const Token& token) {
  const bool isCharacterByNumber = token.kind == Token::Kind::Control && token.word == "u";
  if (fallbacksToSkip_ > 0 && !isCharacterByNumber) {
    --fallbacksToSkip_;
    return;
  }
  switch (token.kind) {
    case Token::Kind::Control:
      handleControl(token);
      break;
    case Token::Kind::Symbol:
      handleSymbol(static_cast<char>(token.byte));
      break;
    default:
      handleByte(token.byte);
      break;
  }
}

void RTFReader::handleControl(const Token& token) {
  if (group().content == Content::Nothing) return;
  if (std::find(groupsWithoutText.begin(), groupsWithoutText.end(), token.word) !=
      groupsWithoutText.end()) {
    group().content = Content::Nothing;
    // The sign after the group stands for the picture.
    if (token.word == "NeXTGraphic" && groups_.size() > 2) {
      groups_[groups_.size() - 2].content = Content::Nothing;
    }
    return;
  }
  if (handleTables(token) || handleAppearance(token) || handleDocument(token)) return;
  const auto* const named =
      std::find_if(std::begin(namedCharacters), std::end(namedCharacters),
                   [&token](const NamedCharacter& each) { return each.word == token.word; });
  if (named != std::end(namedCharacters)) add(named->character);
}

bool RTFReader::handleTables(const Token& token) {
  const std::string_view word = token.word;
  if (word == "fonttbl") {
    group().content = Content::Fonts;
  } else if (word == "colortbl") {
    group().content = Content::Colors;
  } else if (word == "fcharset") {
    characterSets_[fontInTable_] = token.number;
  } else if (word == "red" || word == "green" || word == "blue") {
    const std::uint8_t value = colorComponent(token);
    (word == "red" ? color_.red : word == "green" ? color_.green : color_.blue) = value;
    color_.isSet = true;
  } else {
    return false;
  }
  return true;
}

bool RTFReader::handleAppearance(const Token& token) {
  const std::string_view word = token.word;
  Group& present = group();
  if (word == "b") {
    present.font.bold = isOn(token);
  } else if (word == "i") {
    present.font.italic = isOn(token);
  } else if (word == "v") {
    present.isHidden = isOn(token);
  } else if (word == "fs") {
    if (token.number > 0) present.font.size = std::clamp(token.number / 2.0, 1.0, largestSize);
  } else if (word == "cf") {
    present.color = static_cast<std::size_t>(std::max(token.number, 0));
  } else if (word == "f") {
    if (present.content == Content::Fonts) {
      fontInTable_ = token.number;
    } else {
      present.codePage = codePageOfFont(token.number);
    }
  } else if (word == "plain") {
    present.font = Font::systemFontOfSize(defaultSize);
    present.isHidden = false;
    present.color = 0;
    present.codePage = documentCodePage_;
  } else {
    return false;
  }
  return true;
}

bool RTFReader::handleDocument(const Token& token) {
  const std::string_view word = token.word;
  if (word == "u") {
    if (token.hasNumber) addCharacterByNumber(token.number);
  } else if (word == "uc") {
    group().fallbackLength = std::clamp(token.number, 0, longestFallback);
  } else if (word == "ansicpg" || word == "mac") {
    documentCodePage_ = group().codePage = word == "mac" ? codePageMacRoman : token.number;
  } else {
    return false;
  }
  return true;
}

void RTFReader::handleSymbol(char symbol) {
  switch (symbol) {
    case '*':
      // A kind of group that readers may leave out; there is none with text of the document.
      group().content = Content::Nothing;
      break;
    case '\r':
    case '\n':
      add('\n');
      break;
    case '\t':
      add('\t');
      break;
    case '~':
      add(0x00A0);
      break;
    case '_':
      add(0x2011);
      break;
    case '\\':
    case '{':
    case '}':
      add(static_cast<char32_t>(symbol));
      break;
    default:
      break;
  }
}

void RTFReader::handleByte(std::uint8_t byte) {
  if (group().content == Content::Colors) {
    addColorByte(byte);
  } else {
    add(codePointOfByte(byte, group().codePage));
  }
}

void RTFReader::addColorByte(std::uint8_t byte) {
  if (byte != ';') return;
  colors_.push_back(color_);
  color_ = {};
}

void RTFReader::addCharacterByNumber(std::int32_t number) {
  constexpr std::int32_t numbersOfShort = 0x10000;
  constexpr char32_t firstHigh = 0xD800, firstLow = 0xDC00, lastLow = 0xDFFF;
  if (number < 0) number += numbersOfShort;
  const auto character = static_cast<char32_t>(number);
  fallbacksToSkip_ = group().fallbackLength;
  if (highSurrogate_ != 0 && character >= firstLow && character <= lastLow) {
    const char32_t high = std::exchange(highSurrogate_, 0);
    add(static_cast<char32_t>(numbersOfShort) + ((high - firstHigh) << 10) +
        (character - firstLow));
  } else if (character >= firstHigh && character < firstLow) {
    endPendingSurrogate();
    highSurrogate_ = character;
  } else {
    add(character);
  }
}

void RTFReader::endPendingSurrogate() {
  // Appended as what it is, none.
  if (const char32_t high = std::exchange(highSurrogate_, 0)) add(high);
}

void RTFReader::add(char32_t character) {
  endPendingSurrogate();
  const Group& present = group();
  if (present.content != Content::Text || present.isHidden) return;
  const bool looksOther = present.font != runFont_ || present.color != runColor_;
  if (looksOther && text_.runs().size() < mostRuns) {
    endRun();
    runFont_ = present.font;
    runColor_ = present.color;
  }
  appendUtf8(run_, character);
}

void RTFReader::endRun() {
  if (!run_.empty()) text_.append(std::exchange(run_, {}), runFont_, colorAt(runColor_));
}

Color RTFReader::colorAt(std::size_t index) const {
  constexpr double full = 255;
  if (index >= colors_.size() || !colors_[index].isSet) return Color::black();
  const ColorEntry& entry = colors_[index];
  return Color::colorWithCalibratedRed(entry.red / full, entry.green / full, entry.blue / full, 1);
}

int RTFReader::codePageOfFont(int font) const {
  const auto found = characterSets_.find(font);
  if (found == characterSets_.end()) return documentCodePage_;
  return codePageOfCharacterSet(found->second, documentCodePage_);
}

}  // namespace qb
