#include "PlatformDesktop/files/PropertyListReader.h"

#include <gmock/gmock.h>

#include <clocale>
#include <limits>

#include "PlatformDesktop/files/PropertyListWriter.h"

namespace qb {
namespace {

std::optional<PropertyList> readXml(const std::string& content) {
  return readPropertyList("<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" +
                          content + "</plist>");
}

std::string roundTrip(const std::string& text) {
  return readPropertyList(xmlPropertyList(PropertyList(text)))->stringValue();
}

TEST(PropertyListReader, RealsReadBackExactly) {
  for (const double value : {0.1, 0.125, 1.0 / 3, 1e300, -5e-324, 0.33000001311302185}) {
    EXPECT_EQ(readPropertyList(xmlPropertyList(PropertyList(value))), PropertyList(value));
  }
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(readPropertyList(xmlPropertyList(PropertyList(-infinity))), PropertyList(-infinity));
}

TEST(PropertyListReader, TheLocaleDoesNotMatter) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  // Where it is not installed the test says nothing.
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP();
  EXPECT_EQ(readXml("<real>0.125</real>"), PropertyList(0.125));
  EXPECT_THAT(xmlPropertyList(PropertyList(0.125)), ::testing::HasSubstr("<real>0.125</real>"));
  std::setlocale(LC_ALL, before.c_str());
}

TEST(PropertyListReader, TextKeepsItsLineEndsAndMarks) {
  for (const char* text : {"a\rb", "a\r\nb", "a\n\tb", "<&>\"'", " blanks ", ""}) {
    EXPECT_EQ(roundTrip(text), text);
  }
}

TEST(PropertyListReader, WhatXmlCannotHoldIsLeftOut) {
  EXPECT_EQ(roundTrip(std::string("a\x01") + "b"), "ab");
  EXPECT_TRUE(readPropertyList(xmlPropertyList(PropertyList("\xff\xfe"))));
}

struct IntegerCase {
  const char* text;
  std::int64_t value;
};
class PropertyListInteger : public ::testing::TestWithParam<IntegerCase> {};

TEST_P(PropertyListInteger, IsRead) {
  EXPECT_EQ(readXml(std::string("<integer>") + GetParam().text + "</integer>"),
            PropertyList(static_cast<long long>(GetParam().value)));
}

INSTANTIATE_TEST_SUITE_P(Forms, PropertyListInteger,
                         ::testing::Values(IntegerCase{"0", 0}, IntegerCase{"-12", -12},
                                           IntegerCase{"+7", 7}, IntegerCase{" 5 ", 5},
                                           IntegerCase{"0x1F", 31},
                                           IntegerCase{"9223372036854775807", INT64_MAX},
                                           IntegerCase{"-9223372036854775808", INT64_MIN}));

class UnreadablePropertyList : public ::testing::TestWithParam<std::string> {};

TEST_P(UnreadablePropertyList, IsNone) { EXPECT_FALSE(readPropertyList(GetParam())); }

INSTANTIATE_TEST_SUITE_P(
    Contents, UnreadablePropertyList,
    ::testing::Values("", "not a list", "{ a = b; }", "<dict></dict>", "<plist></plist>",
                      "<plist><dict><key>a</key></dict></plist>",
                      "<plist><dict><string>a</string><true/></dict></plist>",
                      "<plist><dict></plist>", "<plist><true/>",
                      "<plist><integer>x</integer></plist>", "<plist><real></real></plist>",
                      "<plist><date>soon</date></plist>", "<plist><what/></plist>", "bplist00",
                      "bplist00" + std::string(40, '\xff')));

TEST(PropertyListReader, NestingHasAnEnd) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<array>";
  EXPECT_FALSE(readXml(deep));
  std::string shallow = "<true/>";
  for (int i = 0; i < 100; ++i) shallow = "<array>" + shallow + "</array>";
  EXPECT_TRUE(readXml(shallow));
}

/// A binary list by hand: objects, their offsets in one byte each, the trailer.
std::string binaryList(const std::vector<std::string>& objects) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (const std::string& object : objects) {
    offsets += static_cast<char>(bytes.size());
    bytes += object;
  }
  const auto table = static_cast<char>(bytes.size());
  bytes += offsets + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') +
           static_cast<char>(objects.size()) + std::string(8, '\0') + std::string(7, '\0') + table;
  return bytes;
}

TEST(PropertyListReader, ReadsTheBinaryForm) {
  using namespace std::string_literals;
  const std::string list = binaryList({
      "\xd4\x01\x02\x03\x04\x05\x06\x07\x08"s,
      "\x51"
      "a"s,
      "\x51"
      "b"s,
      "\x51"
      "c"s,
      "\x51"
      "d"s,
      "\x09"s,
      "\x11\x01\x02"s,
      "\x62\0\xe9\0!"s,
      "\x22\x3e\0\0\0"s,
  });
  const auto read = readPropertyList(list);
  ASSERT_TRUE(read);
  EXPECT_EQ(*read,
            PropertyList::dictionary({{"a", true}, {"b", 258}, {"c", "\xc3\xa9!"}, {"d", 0.125}}));
}

TEST(PropertyListReader, ABinaryListThatHoldsItselfIsNone) {
  EXPECT_FALSE(readPropertyList(binaryList({std::string("\xa1\x00", 2)})));
}

TEST(PropertyListReader, ABinaryListThatGrowsWithoutMeasureIsNone) {
  // Twenty levels, each naming the next one eight times.
  std::vector<std::string> objects;
  for (char level = 1; level <= 20; ++level) objects.push_back('\xa8' + std::string(8, level));
  objects.emplace_back("\x09");
  EXPECT_FALSE(readPropertyList(binaryList(objects)));
}

}  // namespace
}  // namespace qb
