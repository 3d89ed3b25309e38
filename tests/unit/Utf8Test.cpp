#include "QuillboxCommon/Utf8.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/views/Text.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

TEST(Utf8Test, CharactersOfAllLengthsAreWrittenAndRead) {
  const struct {
    char32_t codePoint;
    const char* bytes;
  } cases[] = {
      {'a', "a"},
      {0x7F, "\x7f"},
      {0x80, "\xc2\x80"},
      {0x7FF, "\xdf\xbf"},
      {0x800, "\xe0\xa0\x80"},
      {0xD7FF, "\xed\x9f\xbf"},
      {0xE000, "\xee\x80\x80"},
      {0xFFFF, "\xef\xbf\xbf"},
      {0x10000, "\xf0\x90\x80\x80"},
      {0x10FFFF, "\xf4\x8f\xbf\xbf"},
  };
  for (const auto& each : cases) {
    std::string text;
    appendUtf8(text, each.codePoint);
    EXPECT_EQ(text, each.bytes);
    std::string_view rest = text;
    EXPECT_EQ(takeCodePoint(rest), each.codePoint);
    EXPECT_TRUE(rest.empty());
  }
}

TEST(Utf8Test, WhatIsNoCharacterIsReplaced) {
  std::string text;
  for (const char32_t none : {0xD800, 0xDFFF, 0x110000}) appendUtf8(text, none);
  EXPECT_EQ(text, "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd");
}

TEST(Utf8Test, BytesThatAreNone) {
  const std::string cases[] = {"\x80",
                               "\xc3",
                               "\xc3"
                               "a",
                               "\xc0\x80",
                               "\xff",
                               "\xe2\x82",
                               "\xe0\x80\x80",
                               "\xed\xa0\x80",
                               "\xf0\x80\x80\x80",
                               "\xf4\x90\x80\x80",
                               "\xf8\x88\x80\x80\x80"};
  for (const std::string& bytes : cases) {
    EXPECT_FALSE(isUtf8(bytes));
    EXPECT_FALSE(isUtf8("a" + bytes + "b"));
    std::string_view rest = bytes;
    EXPECT_EQ(takeCodePoint(rest), std::nullopt);
    EXPECT_EQ(rest.size(), bytes.size() - 1);
  }
  EXPECT_TRUE(isUtf8(""));
  EXPECT_TRUE(isUtf8(std::string("a\0b", 3)));
  EXPECT_TRUE(isUtf8("\xf0\x9f\x98\x80"));
}

TEST(Utf8Test, CharactersAreCounted) {
  EXPECT_EQ(numberOfCharacters(""), 0U);
  EXPECT_EQ(numberOfCharacters("a\xc3\xa9\xf0\x9f\x98\x80"), 3U);
  EXPECT_EQ(numberOfCharacters("\xff\xfe"), 2U);
  EXPECT_EQ(firstCharacters("a\xc3\xa9x", 2), "a\xc3\xa9");
  EXPECT_EQ(firstCharacters("ab", 5), "ab");
  EXPECT_EQ(firstCharacters("ab", 0), "");
}

TEST(AttributedStringTest, PartsKeepTheirLooks) {
  AttributedString text;
  text.append("a\xc3\xa9", {12, true});
  text.append("", {13});
  text.append("xyz", {14}, Color::white());
  EXPECT_EQ(text.length(), 5U);
  using Piece = AttributedString::Run;
  EXPECT_THAT(text.attributedSubstringFromRange(0, 1).runs(), ElementsAre(Piece{"a", {12, true}}));
  EXPECT_THAT(text.attributedSubstringFromRange(1, 2).runs(),
              ElementsAre(Piece{"\xc3\xa9", {12, true}}, Piece{"x", {14}, Color::white()}));
  EXPECT_THAT(text.attributedSubstringFromRange(3, 99).runs(),
              ElementsAre(Piece{"yz", {14}, Color::white()}));
  EXPECT_TRUE(text.attributedSubstringFromRange(5, 1).isEmpty());
  EXPECT_TRUE(text.attributedSubstringFromRange(0, 0).isEmpty());
}

}  // namespace
}  // namespace qb::test
