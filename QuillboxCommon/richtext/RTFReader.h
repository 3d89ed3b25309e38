#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/richtext/CodePages.h"
#include "QuillboxCommon/richtext/RTFLexer.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

/// Reads one document, once. Takes time and memory in proportion to its length.
class RTFReader {
 public:
  explicit RTFReader(std::string_view rtf) : lexer_(rtf) {}
  /// None when groups are nested too deep.
  std::optional<AttributedString> read();

 private:
  enum class Content { Text, Fonts, Colors, Nothing };
  /// What ends with its group.
  struct Group {
    Content content = Content::Text;
    Font font = Font::systemFontOfSize(12);
    bool isHidden = false;
    std::size_t color = 0;
    int codePage = codePageWindows1252;
    /// How many signs follow a character by number, for readers that do not know those.
    int fallbackLength = 1;
  };
  struct ColorEntry {
    std::uint8_t red = 0, green = 0, blue = 0;
    /// Otherwise it is the colour that text has by itself.
    bool isSet = false;
  };

  Group& group() { return groups_.back(); }
  void handle(const RTFLexer::Token& token);
  void handleControl(const RTFLexer::Token& token);
  bool handleAppearance(const RTFLexer::Token& token);
  bool handleTables(const RTFLexer::Token& token);
  bool handleDocument(const RTFLexer::Token& token);
  void handleSymbol(char symbol);
  void handleByte(std::uint8_t byte);
  void endGroup();

  void addCharacterByNumber(std::int32_t number);
  void addColorByte(std::uint8_t byte);
  void add(char32_t character);
  void endPendingSurrogate();
  void endRun();
  Color colorAt(std::size_t index) const;
  int codePageOfFont(int font) const;

  RTFLexer lexer_;
  std::vector<Group> groups_;
  std::map<int, int> characterSets_;
  std::vector<ColorEntry> colors_;
  ColorEntry color_;
  int documentCodePage_ = codePageWindows1252;
  int fontInTable_ = 0;
  int fallbacksToSkip_ = 0;
  char32_t highSurrogate_ = 0;

  AttributedString text_;
  std::string run_;
  Font runFont_;
  std::size_t runColor_ = 0;
};

}  // namespace qb
