#include <gmock/gmock.h>

#include "QuillboxCommon/richtext/RichText.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

using Piece = AttributedString::Run;

Font font(double size, bool bold = false, bool italic = false) { return {size, bold, italic}; }

std::string document(const std::string& body) { return "{\\rtf1\\ansi\\deff0 " + body + "}"; }

/// "no text" when there is none.
std::string textOf(const std::string& rtf) {
  const auto text = attributedStringWithRTF(rtf);
  return text ? text->string() : "no text";
}

std::vector<Piece> runsOf(const std::string& body) {
  return attributedStringWithRTF(document(body)).value_or(AttributedString()).runs();
}

TEST(RTFReaderTest, TextOfADocument) {
  const struct {
    const char* body;
    const char* text;
  } cases[] = {
      {"plain", "plain"},
      {"", ""},
      {"one\r\n two\nthree", "one twothree"},
      {"a\\par b\\line c\\\nd\\\r e\\page f\\sect g", "a\nb\nc\nd\n e\nf\ng"},
      {"a\\tab b\\\tc\td", "a\tb\tc\td"},
      {"\\trowd a\\cell b\\cell\\row c", "a\tb\t\nc"},
      {"\\\\ \\{ \\}", "\\ { }"},
      {"a\\~b\\_c\\-d",
       "a\xc2\xa0"
       "b\xe2\x80\x91"
       "cd"},
      {"\\lquote a\\rquote\\ldblquote b\\rdblquote",
       "\xe2\x80\x98"
       "a\xe2\x80\x99\xe2\x80\x9c"
       "b\xe2\x80\x9d"},
      {"\\endash\\emdash\\bullet", "\xe2\x80\x93\xe2\x80\x94\xe2\x80\xa2"},
      {"\\emspace\\enspace", "\xe2\x80\x83\xe2\x80\x82"},
      {"{a{b}c}d", "abcd"},
      {"a\\unknownword b\\unknown12 c\\unknown-3d", "abcd"},
      {"\\b1word", "word"},
      {"\\b  two blanks", " two blanks"},
      {"a\\v hidden\\v0 b{\\v hidden}c", "abc"},
      {"\\v hidden\\plain shown", "shown"},
      {"a\\bin5 {}}}}b", "ab"},
  };
  for (const auto& each : cases) EXPECT_EQ(textOf(document(each.body)), each.text) << each.body;
}

TEST(RTFReaderTest, GroupsThatAreNoTextOfTheDocument) {
  const char* const bodies[] = {
      "a{\\fonttbl{\\f0\\fnil Helvetica;}}b",
      "a{\\colortbl;\\red255\\green0\\blue0;}b",
      "a{\\stylesheet{\\s1 heading;}}b",
      "a{\\info{\\author Someone}{\\title Something}}b",
      "a{\\pict\\pngblip 89504e470d0a}b",
      "a{\\*\\generator Something 1.0;}b",
      "a{\\*\\shppict{\\pict 00}}{\\nonshppict{\\pict 00}}b",
      "a{\\header top}{\\footerr bottom}b",
      "a{\\footnote note}b",
      "a{\\upr{}{\\*\\ud{ud}}}b",
      "a{\\field{\\*\\fldinst HYPERLINK x}{\\fldrslt b}}",
      "a{\\object{\\*\\objdata 00}{\\result b}}",
      "a{{\\NeXTGraphic picture.tiff \\width10 \\height20\n}\\'ac}b",
      "a{\\*\\unknown \\b x\\par\\u8364?\\'e9{y}}b",
  };
  for (const char* body : bodies) EXPECT_EQ(textOf(document(body)), "ab") << body;
}

TEST(RTFReaderTest, BytesInTheirCodePages) {
  const struct {
    const char* document;
    const char* text;
  } cases[] = {
      {"{\\rtf1\\ansi\\ansicpg1252 \\'e9\\'80\\'93}", "\xc3\xa9\xe2\x82\xac\xe2\x80\x9c"},
      {"{\\rtf1 \\'E9}", "\xc3\xa9"},
      {"{\\rtf1 \xe9}", "\xc3\xa9"},
      {"{\\rtf1 \\'81}", "\xef\xbf\xbd"},
      {"{\\rtf1\\ansicpg1250 \\'b9}", "\xc4\x85"},
      {"{\\rtf1\\ansicpg1251 \\'c0}", "\xd0\x90"},
      {"{\\rtf1\\mac \\'8e}", "\xc3\xa9"},
      {"{\\rtf1\\ansicpg10000 \\'8e}", "\xc3\xa9"},
      {"{\\rtf1\\ansicpg932 \\'41\\'e9}", "A\xef\xbf\xbd"},
      {"{\\rtf1{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset204 B;}}\\f0\\'c0\\f1\\'c0}",
       "\xc3\x80\xd0\x90"},
      {"{\\rtf1{\\fonttbl{\\f0\\fcharset77 A;}}{\\f0\\'8e}\\'e9}", "\xc3\xa9\xc3\xa9"},
      {"{\\rtf1{\\fonttbl{\\f0\\fcharset238 A;}}\\f0\\'b9\\plain\\'e9}", "\xc4\x85\xc3\xa9"},
      {"{\\rtf1{\\fonttbl{\\f0\\fcharset128 A;}}\\f0\\'82}", "\xef\xbf\xbd"},
      {"{\\rtf1 \\'zz\\'e", "zze"},
  };
  for (const auto& each : cases) EXPECT_EQ(textOf(each.document), each.text) << each.document;
}

TEST(RTFReaderTest, CharactersByNumberAndWhatFollowsThem) {
  const struct {
    const char* body;
    const char* text;
  } cases[] = {
      {"\\u8364?b",
       "\xe2\x82\xac"
       "b"},
      {"\\u8364 ?b",
       "\xe2\x82\xac"
       "b"},
      {"\\u8364\\'80b",
       "\xe2\x82\xac"
       "b"},
      {"\\uc0\\u8364b",
       "\xe2\x82\xac"
       "b"},
      {"\\uc2\\u8364\\'80?b",
       "\xe2\x82\xac"
       "b"},
      {"\\uc3\\u8364 ab\\tab c",
       "\xe2\x82\xac"
       "c"},
      {"{\\uc0\\u8364 b}\\u8364?b",
       "\xe2\x82\xac"
       "b\xe2\x82\xac"
       "b"},
      {"\\uc5{\\u8364 a}b",
       "\xe2\x82\xac"
       "b"},
      {"\\uc5\\u8364 a{b}",
       "\xe2\x82\xac"
       "b"},
      {"\\uc9\\u8364\\u8364", "\xe2\x82\xac\xe2\x82\xac"},
      {"\\u-3913?", "\xef\x82\xb7"},
      {"\\u-10179?\\u-8704?b",
       "\xf0\x9f\x98\x80"
       "b"},
      {"\\uc0\\u55357\\u56832", "\xf0\x9f\x98\x80"},
      {"\\uc0\\u128512", "\xf0\x9f\x98\x80"},
      {"\\uc0\\u55357 b",
       "\xef\xbf\xbd"
       "b"},
      {"{\\uc0\\u55357}b",
       "\xef\xbf\xbd"
       "b"},
      {"\\uc0\\u55357", "\xef\xbf\xbd"},
      {"\\uc0\\u56832", "\xef\xbf\xbd"},
      {"\\uc0\\u55357\\u55357\\u56832", "\xef\xbf\xbd\xf0\x9f\x98\x80"},
  };
  for (const auto& each : cases) EXPECT_EQ(textOf(document(each.body)), each.text) << each.body;
}

TEST(RTFReaderTest, LooksEndWithTheirGroup) {
  EXPECT_THAT(runsOf("a{\\b b{\\i c}}d"),
              ElementsAre(Piece{"a", font(12)}, Piece{"b", font(12, true)},
                          Piece{"c", font(12, true, true)}, Piece{"d", font(12)}));
  EXPECT_THAT(runsOf("\\b\\i a\\b0 b\\i0 c"),
              ElementsAre(Piece{"a", font(12, true, true)}, Piece{"b", font(12, false, true)},
                          Piece{"c", font(12)}));
  EXPECT_THAT(runsOf("\\fs28 a\\fs27 b\\b\\fs40 c\\plain d"),
              ElementsAre(Piece{"a", font(14)}, Piece{"b", font(13.5)}, Piece{"c", font(20, true)},
                          Piece{"d", font(12)}));
}

TEST(RTFReaderTest, WhatLooksTheSameIsOneRun) {
  EXPECT_THAT(runsOf("a{\\b}b{c}\\fs24 d\\cf0\\cf9 e"),
              ElementsAre(Piece{"abcd", font(12)}, Piece{"e", font(12)}));
  EXPECT_THAT(runsOf("a\\par{b}"), ElementsAre(Piece{"a\nb", font(12)}));
}

TEST(RTFReaderTest, ColorsComeFromTheTable) {
  const Color red = Color::colorWithCalibratedRed(1, 0, 0, 1);
  const Color part = Color::colorWithCalibratedRed(0, 0.2, 1, 1);
  EXPECT_THAT(
      runsOf(
          "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green51\\blue999;}a\\cf1 b\\cf2 c\\cf0 d"),
      ElementsAre(Piece{"a", font(12)}, Piece{"b", font(12), red}, Piece{"c", font(12), part},
                  Piece{"d", font(12)}));
  EXPECT_THAT(
      runsOf("{\\colortbl\\red255;}\\cf0 a\\cf1 b\\cf-1 c"),
      ElementsAre(Piece{"a", font(12), red}, Piece{"b", font(12)}, Piece{"c", font(12), red}));
}

TEST(RTFReaderTest, HugeNumbersDoNoHarm) {
  EXPECT_THAT(runsOf("\\fs99999999999999999999 a"), ElementsAre(Piece{"a", font(400)}));
  EXPECT_THAT(runsOf("\\fs1 a\\fs0 b\\fs-8 c"), ElementsAre(Piece{"abc", font(1)}));
  EXPECT_THAT(runsOf("\\cf4294967296 a"), ElementsAre(Piece{"a", font(12)}));
  EXPECT_EQ(textOf(document("\\uc99999999999 \\u8364 abc")), "\xe2\x82\xac");
  EXPECT_EQ(textOf(document("\\uc-5\\u8364 abc")),
            "\xe2\x82\xac"
            "abc");
  EXPECT_EQ(textOf(document("\\uc0\\u99999999999 a\\u-99999999999 b")),
            "\xef\xbf\xbd"
            "a\xef\xbf\xbd"
            "b");
  EXPECT_EQ(textOf(document("a\\bin99999999999 bc")), "a");
  EXPECT_EQ(textOf(document("a\\bin-7 bc")), "abc");
}

TEST(RTFReaderTest, DamageCostsTheTextWhereItIs) {
  const struct {
    const char* rtf;
    const char* text;
  } cases[] = {
      {"", "no text"},
      {"plain text", "no text"},
      {"{\\rt", "no text"},
      {" {\\rtf1 a}", "no text"},
      {"{\\rtf", ""},
      {"{\\rtf1 a", "a"},
      {"{\\rtf1 a{\\b b", "ab"},
      {"{\\rtf1 a\\", "a"},
      {"{\\rtf1 a\\'", "a"},
      {"{\\rtf1 a\\'4", "a4"},
      {"{\\rtf1 a\\u", "a"},
      {"{\\rtf1 a}}b", "a"},
      {"{\\rtf1 a}trailing", "a"},
      {"{\\rtf1 a{\\fonttbl b", "a"},
      {"{\\rtf1 a{\\colortbl\\red1", "a"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(textOf(each.rtf), each.text) << each.rtf;
  }
}

TEST(RTFReaderTest, GroupsMayBeNestedButNotWithoutBounds) {
  const auto nested = [](std::size_t depth) {
    return document(std::string(depth, '{') + "deep" + std::string(depth, '}') + "end");
  };
  EXPECT_EQ(textOf(nested(499)), "deepend");
  EXPECT_EQ(textOf(nested(500)), "no text");
  EXPECT_EQ(textOf("{\\rtf1 " + std::string(1'000'000, '{')), "no text");
}

TEST(RTFReaderTest, LooksAreManyButNotWithoutBounds) {
  std::string body;
  for (int i = 0; i < 100'010; ++i) body += i % 2 == 0 ? "\\b x" : "\\b0 x";
  const auto text = attributedStringWithRTF(document(body));
  ASSERT_TRUE(text);
  EXPECT_THAT(text->runs(), SizeIs(100'001));
  EXPECT_EQ(text->length(), 100'010U);
}

}  // namespace
}  // namespace qb::test
