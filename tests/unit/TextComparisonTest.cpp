#include "QuillboxCommon/TextComparison.h"

#include <gtest/gtest.h>

#include <string>

namespace qb::test {
namespace {

struct Comparison {
  std::string a, b;
  int result;
};

TEST(TextComparisonTest, CapitalLettersCountAsSmallOnes) {
  const Comparison table[] = {
      {"", "", 0},
      {"", "a", -1},
      {"a", "ab", -1},
      {"a", "B", -1},
      {"A", "b", -1},
      {"Zebra", "zebra", 0},
      {"notes 10", "notes 9", -1},
      // Between the capital and the small letters; a small letter is what counts.
      {"_", "A", -1},
      {"[", "Z", -1},
      {"\u00c4rger", "\u00e4RGER", 0},
      {"\u00d7", "\u00f7", -1},
      {"\u00df", "SS", 1},
      {"\u0141\u00f3d\u017a", "\u0142\u00d3D\u0179", 0},
      {"\u011e\u015e", "\u011f\u015f", 0},
      {"\u0386\u03a9", "\u03ac\u03c9", 0},
      {"\u038f\u038c", "\u03ce\u03cc", 0},
      {"\u0416\u0443\u043a", "\u0436\u0423\u041a", 0},
      {"\u0401", "\u0451", 0},
      {"\u0535", "\u0565", 0},
      {"\u1ea4", "\u1ea5", 0},
      {"\uff21", "\uff41", 0},
      {"\u0436", "\u0437", -1},
      {"\U0001f600", "\U0001f601", -1},
      {"z", "\u00e4", -1},
  };
  for (const Comparison& each : table) {
    EXPECT_EQ(caseInsensitiveCompare(each.a, each.b), each.result) << each.a << " " << each.b;
    EXPECT_EQ(caseInsensitiveCompare(each.b, each.a), -each.result) << each.b << " " << each.a;
  }
}

TEST(TextComparisonTest, BytesThatAreNoTextComeLast) {
  const std::string odd[] = {"\xff",    "\x80", "\xc3", "\xe2\x82", "\xc3(", "\xf5\x80\x80\x80",
                             "\xc0\xaf"};
  for (const std::string& text : odd) {
    EXPECT_EQ(caseInsensitiveCompare(text, "\U0010ffff"), 1) << text;
    EXPECT_EQ(caseInsensitiveCompare(text, text), 0) << text;
  }
  EXPECT_EQ(caseInsensitiveCompare("\xfe", "\xff"), -1);
  EXPECT_EQ(caseInsensitiveCompare("a\xff", "ab"), 1);
}

}  // namespace
}  // namespace qb::test
