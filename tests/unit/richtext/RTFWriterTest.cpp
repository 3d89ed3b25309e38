#include <gmock/gmock.h>

#include "QuillboxCommon/richtext/RichText.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using Piece = AttributedString::Run;

AttributedString plain(const std::string& text) {
  AttributedString result;
  result.append(text, Font::systemFontOfSize(12));
  return result;
}

AttributedString mixed() {
  AttributedString text;
  text.append("bold", {14, true}, Color::colorWithCalibratedRed(1, 0, 0, 1));
  text.append(" and ", {13.5, false, true});
  text.append("red", {12, true, true}, Color::colorWithCalibratedRed(1, 0, 0, 1));
  text.append(" and blue", {12}, Color::colorWithCalibratedRed(0, 0, 1, 1));
  return text;
}

TEST(RTFWriterTest, WritesWholeDocuments) {
  EXPECT_EQ(rtfFromAttributedString(plain("a")),
            "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n"
            "{\\fonttbl{\\f0\\fswiss\\fcharset0 Helvetica;}}\n"
            "{\\colortbl;}\n"
            "\\f0\\b0\\i0\\fs24\\cf0 a}");
  EXPECT_EQ(rtfFromAttributedString({}),
            "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n"
            "{\\fonttbl{\\f0\\fswiss\\fcharset0 Helvetica;}}\n"
            "{\\colortbl;}\n"
            "\\f0}");
}

TEST(RTFWriterTest, LooksAreReadAgain) {
  EXPECT_EQ(attributedStringWithRTF(rtfFromAttributedString(mixed())), mixed());
  EXPECT_EQ(attributedStringWithRTFD(rtfdFromAttributedString(mixed())), mixed());
}

TEST(RTFWriterTest, AllCharactersAreReadAgain) {
  const std::string texts[] = {
      "",           "\\ { } ; \\par \\'e9",
      "a\tb\nc\n",  "\xc3\xa9 \xe2\x82\xac \xef\xbf\xbd \xef\x82\xb7 \xf0\x9f\x98\x80",
      "\x01\x7f",   std::string("a\0b", 3),
      "  blanks  ", "1 after a number",
      "-",
  };
  for (const std::string& text : texts) {
    const std::string rtf = rtfFromAttributedString(plain(text));
    EXPECT_EQ(attributedStringWithRTF(rtf)->string(), text);
    for (const char c : rtf) EXPECT_GE(c, 0) << "only ASCII";
  }
}

TEST(RTFWriterTest, EveryEndOfALineBecomesTheSame) {
  AttributedString text = plain("a\rb\r\nc\r");
  text.append("\nd\n\n\re", Font::boldSystemFontOfSize(12));
  EXPECT_EQ(attributedStringWithRTF(rtfFromAttributedString(text))->string(), "a\nb\nc\nd\n\n\ne");
}

TEST(RTFWriterTest, BytesThatAreNoTextAreReplaced) {
  EXPECT_EQ(attributedStringWithRTF(rtfFromAttributedString(plain("a\xff")))->string(),
            "a\xef\xbf\xbd");
}

TEST(RTFWriterTest, OpacityIsLostAndColorsAreOfEightBits) {
  AttributedString text;
  text.append("a", {12}, Color::colorWithCalibratedRed(0.5, 2, -1, 0.25));
  const auto read = attributedStringWithRTF(rtfFromAttributedString(text));
  const Color expected = Color::colorWithCalibratedRed(128 / 255.0, 1, 0, 1);
  EXPECT_THAT(read->runs(), ElementsAre(Piece{"a", {12}, expected}));
}

// The container.

std::string number(unsigned value) {
  return {static_cast<char>(value), static_cast<char>(value >> 8U), static_cast<char>(value >> 16U),
          static_cast<char>(value >> 24U)};
}
std::string rtfdWith(const std::vector<std::pair<std::string, std::string>>& files) {
  std::string all = "rtfd" + number(0) + number(3) + number(static_cast<unsigned>(files.size()));
  for (const auto& [name, contents] : files) {
    all += number(static_cast<unsigned>(name.size())) + name;
  }
  for (const auto& [name, contents] : files) {
    all += number(static_cast<unsigned>(contents.size()));
  }
  for (const auto& [name, contents] : files) all += contents;
  return all;
}
std::string textOf(const std::string& rtfd) {
  const auto text = attributedStringWithRTFD(rtfd);
  return text ? text->string() : "no text";
}

TEST(RTFDTest, IsWrittenWithOneFile) {
  const AttributedString text = plain("a");
  EXPECT_EQ(rtfdFromAttributedString(text), rtfdWith({{"TXT.rtf", rtfFromAttributedString(text)}}));
}

TEST(RTFDTest, TheTextIsTheFileOfThatName) {
  EXPECT_EQ(textOf(rtfdWith({{"a.rtf", "{\\rtf1 other}"}, {"TXT.rtf", "{\\rtf1 text}"}})), "text");
  EXPECT_EQ(textOf(rtfdWith({{"TXT.rtf", "{\\rtf1 text}"}, {"a.png", "\x89PNG"}})), "text");
}

TEST(RTFDTest, AnyOtherOrderGivesItsFirstText) {
  EXPECT_EQ(textOf("rtfd and something else{\\rtf1 text} and more"), "text");
  EXPECT_EQ(textOf(rtfdWith({{"a.rtf", "{\\rtf1 other}"}})), "other");
  EXPECT_EQ(textOf(rtfdWith({{"TXT.rtf", "no rich text"}, {"b", "{\\rtf1 b}"}})), "b");
  EXPECT_EQ(textOf("{\\rtf1 by itself}"), "by itself");
}

TEST(RTFDTest, DamageGivesWhatThereIsOrNoText) {
  const std::string whole = rtfdWith({{"TXT.rtf", "{\\rtf1 text}"}});
  for (std::size_t length = 0; length < whole.size() - 7; ++length) {
    const std::string text = textOf(whole.substr(0, length));
    EXPECT_TRUE(text == "no text" || text.empty()) << length << text;
  }
  EXPECT_EQ(textOf(whole.substr(0, whole.size() - 2)), "tex");
  EXPECT_EQ(textOf("rtfd" + number(0) + number(3) + number(0xFFFFFFFF)), "no text");
  EXPECT_EQ(textOf("rtfd" + number(0) + number(3) + number(1) + number(0xFFFFFFFF)), "no text");
  EXPECT_EQ(textOf("rtfd" + number(0) + number(3) + number(1000)), "no text");
  EXPECT_EQ(textOf(""), "no text");
  EXPECT_EQ(textOf("text"), "no text");
}

}  // namespace
}  // namespace qb::test
