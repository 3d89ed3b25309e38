#include "QuillboxCommon/views/TextLayout.h"

#include <gmock/gmock.h>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A character of size 10 is 5 points wide and 12 high; the margins take 10 points of the width.
class TextLayoutTest : public testing::Test {
 protected:
  static AttributedString text(const std::string& string, double size = 10) {
    AttributedString result;
    result.append(string, Font::systemFontOfSize(size));
    return result;
  }
  TextLayout layout(const AttributedString& text, double width) {
    return {text, width, platform_.graphics()};
  }
  std::vector<DrawOperation> drawn(const AttributedString& text, double width) {
    RecordingCanvas canvas(Rect::make(0, 0, 1000, 1000));
    layout(text, width).draw(canvas);
    return canvas.operations();
  }
  std::vector<std::string> lines(const std::string& string, double width) {
    std::vector<std::string> all;
    for (const auto& each : drawn(text(string), width)) all.push_back(each.text);
    return all;
  }

  SimulatedPlatform platform_;
};

TEST_F(TextLayoutTest, LinesBreakAfterBlanks) {
  EXPECT_THAT(lines("one two three", 60), ElementsAre("one two ", "three"));
  EXPECT_THAT(lines("one two three", 1000), ElementsAre("one two three"));
  EXPECT_THAT(lines("12345 67890", 60), ElementsAre("12345 ", "67890"));
  EXPECT_THAT(lines("1234567890 a", 60), ElementsAre("1234567890 ", "a"));
}

TEST_F(TextLayoutTest, LongWordsBreakInside) {
  EXPECT_THAT(lines("1234567890abc de", 60), ElementsAre("1234567890", "abc de"));
  EXPECT_THAT(lines("a 1234567890abc", 60), ElementsAre("a ", "1234567890", "abc"));
  EXPECT_THAT(lines("\xc3\xa9\xc3\xa9", 15), ElementsAre("\xc3\xa9", "\xc3\xa9"));
  EXPECT_THAT(lines("ab", 1), ElementsAre("a", "b"));
}

TEST_F(TextLayoutTest, VeryLongWordsBeginALine) {
  const std::string word(1000, 'x');
  const auto all = lines("a " + word, 510);
  ASSERT_EQ(all.size(), 11U);
  EXPECT_EQ(all[0], "a ");
  EXPECT_EQ(all[1], std::string(100, 'x'));
  EXPECT_EQ(all[10], std::string(100, 'x'));
}

TEST_F(TextLayoutTest, EveryEndOfALineEndsOne) {
  EXPECT_THAT(lines("a\nb\rc\r\nd", 1000), ElementsAre("a", "b", "c", "d"));
  const auto operations = drawn(text("a\n\r\nb"), 1000);
  ASSERT_EQ(operations.size(), 2U);
  EXPECT_EQ(operations[0].rect, Rect::make(5, 0, 5, 12));
  EXPECT_EQ(operations[1].rect, Rect::make(5, 24, 5, 12));
}

TEST_F(TextLayoutTest, WhatShowsNothingIsLeftOut) {
  EXPECT_THAT(lines(std::string("a\0b\x01", 4), 1000), ElementsAre("ab"));
  EXPECT_THAT(lines("a\tb", 1000), ElementsAre("a    b"));
  EXPECT_THAT(lines("\n\n", 1000), IsEmpty());
}

TEST_F(TextLayoutTest, LooksStandSideBySideOnOneGround) {
  AttributedString text;
  text.append("big", Font::boldSystemFontOfSize(20), Color::gray());
  text.append("small", Font::systemFontOfSize(10));
  text.append("\nnext", Font::systemFontOfSize(10));
  const auto operations = drawn(text, 1000);
  ASSERT_EQ(operations.size(), 3U);
  EXPECT_EQ(operations[0].rect, Rect::make(5, 0, 30, 24));
  EXPECT_EQ(operations[0].color, Color::gray());
  EXPECT_EQ(operations[0].font, Font::boldSystemFontOfSize(20));
  EXPECT_EQ(operations[1].rect.x(), 35);
  EXPECT_NEAR(operations[1].rect.y(), 9.6, 0.001);
  EXPECT_EQ(operations[2].rect, Rect::make(5, 24, 20, 12));
}

TEST_F(TextLayoutTest, NaturalHeightIsThatOfTheLowestLineWithSomethingInIt) {
  const struct {
    const char* text;
    std::int64_t height;
  } cases[] = {{"", 0},     {"\n", 0},      {"a", 12},
               {" ", 12},   {"a\n", 12},    {"a\n\n", 12},
               {"\na", 24}, {"a\n\nb", 36}, {"one two three", 24}};
  for (const auto& each : cases) {
    EXPECT_EQ(layout(text(each.text), 60).naturalHeight(), each.height) << each.text;
  }
  EXPECT_EQ(layout(text("a", 9), 60).naturalHeight(), 10) << "10.8 points";
}

}  // namespace
}  // namespace qb::test
