#include "QuillboxCommon/PropertyList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace qb {
namespace {

constexpr auto greatestLong = std::numeric_limits<std::int64_t>::max();
constexpr auto leastLong = std::numeric_limits<std::int64_t>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
using Kind = PropertyList::Kind;

TEST(PropertyListTest, KnowsItsKind) {
  EXPECT_EQ(PropertyList().kind(), Kind::None);
  EXPECT_EQ(PropertyList(true).kind(), Kind::Boolean);
  EXPECT_EQ(PropertyList(1).kind(), Kind::Integer);
  EXPECT_EQ(PropertyList(1L).kind(), Kind::Integer);
  EXPECT_EQ(PropertyList(1LL).kind(), Kind::Integer);
  EXPECT_EQ(PropertyList(1.0).kind(), Kind::Real);
  EXPECT_EQ(PropertyList("a").kind(), Kind::String);
  EXPECT_EQ(PropertyList(std::string("a")).kind(), Kind::String);
  EXPECT_EQ(PropertyList(std::string_view("a")).kind(), Kind::String);
  EXPECT_EQ(PropertyList(PropertyList::Date{1}).kind(), Kind::DateTime);
  EXPECT_EQ(PropertyList(PropertyList::Data{1}).kind(), Kind::Data);
  EXPECT_EQ(PropertyList::array().kind(), Kind::Array);
  EXPECT_EQ(PropertyList::dictionary().kind(), Kind::Dictionary);
}

TEST(PropertyListTest, NumbersCoerce) {
  const struct {
    PropertyList value;
    bool asBool;
    std::int64_t asLong;
    double asDouble;
  } rows[] = {
      {{}, false, 0, 0},
      {true, true, 1, 1},
      {false, false, 0, 0},
      {7, true, 7, 7},
      {-7, true, -7, -7},
      {0, false, 0, 0},
      {greatestLong, true, greatestLong, 9223372036854775807.0},
      {2.9, true, 2, 2.9},
      {-2.9, true, -2, -2.9},
      {0.5, true, 0, 0.5},
      {0.0, false, 0, 0},
      {1e300, true, greatestLong, 1e300},
      {-1e300, true, leastLong, -1e300},
      {9223372036854775808.0, true, greatestLong, 9223372036854775808.0},
      {infinity, true, greatestLong, infinity},
      {-infinity, true, leastLong, -infinity},
      {PropertyList::Date{5}, false, 0, 0},
      {PropertyList::Data{1, 2}, false, 0, 0},
      {PropertyList::Array{1}, false, 0, 0},
      {PropertyList::dictionary({{"a", 1}}), false, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.asDouble);
    EXPECT_EQ(row.value.boolValue(), row.asBool);
    EXPECT_EQ(row.value.longValue(), row.asLong);
    EXPECT_EQ(row.value.doubleValue(), row.asDouble);
  }
}

TEST(PropertyListTest, ARealThatIsNoNumberIsFalseAndZero) {
  const PropertyList value = std::nan("");
  EXPECT_FALSE(value.boolValue());
  EXPECT_EQ(value.longValue(), 0);
  EXPECT_TRUE(std::isnan(value.doubleValue()));
  EXPECT_TRUE(std::isnan(value.floatValue()));
}

TEST(PropertyListTest, StringsCoerce) {
  const struct {
    const char* text;
    bool asBool;
    std::int64_t asLong;
    double asDouble;
  } rows[] = {
      {"", false, 0, 0},
      {"12ab", true, 12, 12},
      {"  12", true, 12, 12},
      {"\t\r\n-12.75x", true, -12, -12.75},
      {"+5", true, 5, 5},
      {"+-5", false, 0, 0},
      {"- 5", false, 0, 0},
      {"007", true, 7, 7},
      {"0", false, 0, 0},
      {"-0001", true, -1, -1},
      {"0.5", false, 0, 0.5},
      {".5", false, 0, 0.5},
      {".", false, 0, 0},
      {"1e3", true, 1, 1000},
      {"1e", true, 1, 1},
      {"0x10", false, 0, 0},
      {"YES", true, 0, 0},
      {"yes", true, 0, 0},
      {"True", true, 0, 0},
      {"tomorrow", true, 0, 0},
      {"00Y", true, 0, 0},
      {"-t", true, 0, 0},
      {"NO", false, 0, 0},
      {"on", false, 0, 0},
      {"infinity", false, 0, 0},
      {"nan", false, 0, 0},
      {"9223372036854775807", true, greatestLong, 9223372036854775807.0},
      {"9223372036854775808", true, greatestLong, 9223372036854775808.0},
      {"-9223372036854775808", true, leastLong, -9223372036854775808.0},
      {"-99999999999999999999", true, leastLong, -99999999999999999999.0},
      {"1e999", true, 1, std::numeric_limits<double>::max()},
      {"-1e999zz", true, -1, -std::numeric_limits<double>::max()},
      {"1e-999", true, 1, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const PropertyList value = row.text;
    EXPECT_EQ(value.boolValue(), row.asBool);
    EXPECT_EQ(value.longValue(), row.asLong);
    EXPECT_EQ(value.doubleValue(), row.asDouble);
  }
}

TEST(PropertyListTest, FloatsSaturate) {
  EXPECT_EQ(PropertyList(0.33).floatValue(), 0.33F);
  EXPECT_EQ(PropertyList(1e300).floatValue(), std::numeric_limits<float>::max());
  EXPECT_EQ(PropertyList(-1e300).floatValue(), std::numeric_limits<float>::lowest());
  EXPECT_EQ(PropertyList(infinity).floatValue(), std::numeric_limits<float>::infinity());
  EXPECT_EQ(PropertyList("0.25").floatValue(), 0.25F);
}

TEST(PropertyListTest, OtherReadingsAnswerNothingForOtherKinds) {
  const PropertyList number = 3;
  EXPECT_EQ(number.stringValue(), "");
  EXPECT_TRUE(number.dataValue().empty());
  EXPECT_TRUE(number.arrayValue().empty());
  EXPECT_TRUE(number.dictionaryValue().empty());
  EXPECT_EQ(number.dateValue(), PropertyList::Date{});
  EXPECT_TRUE(number.objectForKey("a").isNone());
  EXPECT_FALSE(number.hasKey("a"));
}

TEST(PropertyListTest, ReadingsAnswerWhatIsHeld) {
  EXPECT_EQ(PropertyList("text").stringValue(), "text");
  EXPECT_EQ(PropertyList(PropertyList::Data{1, 2}).dataValue(), (PropertyList::Data{1, 2}));
  EXPECT_EQ(PropertyList(PropertyList::Date{2.5}).dateValue().seconds, 2.5);
}

TEST(PropertyListTest, AnAbsentKeyReadsAsFalseOrZero) {
  const auto list = PropertyList::dictionary();
  EXPECT_FALSE(list.boolForKey("absent"));
  EXPECT_EQ(list.longForKey("absent"), 0);
  EXPECT_EQ(list.floatForKey("absent"), 0.0F);
  EXPECT_FALSE(list.hasKey("absent"));
}

TEST(PropertyListTest, ConveniencesStoreNumbersOfTheirKind) {
  PropertyList list;
  list.setBool(true, "bool");
  list.setLong(greatestLong, "long");
  list.setFloat(0.33F, "float");
  EXPECT_EQ(list.objectForKey("bool").kind(), Kind::Boolean);
  EXPECT_EQ(list.objectForKey("long").kind(), Kind::Integer);
  EXPECT_EQ(list.objectForKey("float").kind(), Kind::Real);
  EXPECT_TRUE(list.boolForKey("bool"));
  EXPECT_EQ(list.longForKey("long"), greatestLong);
  EXPECT_EQ(list.floatForKey("float"), 0.33F);
  EXPECT_EQ(list.objectForKey("float").doubleValue(), static_cast<double>(0.33F));
}

TEST(PropertyListTest, KeysStayInTheOrderInWhichTheyWereFirstSet) {
  auto list = PropertyList::dictionary({{"b", 1}, {"a", 2}});
  list.setObject(3, "c");
  list.setObject(4, "b");
  std::vector<std::string> keys;
  for (const auto& entry : list.dictionaryValue()) keys.push_back(entry.key);
  EXPECT_EQ(keys, (std::vector<std::string>{"b", "a", "c"}));
  EXPECT_EQ(list.longForKey("b"), 4);
}

TEST(PropertyListTest, SettingNoneRemoves) {
  auto list = PropertyList::dictionary({{"a", 1}, {"b", 2}, {"c", PropertyList()}});
  EXPECT_EQ(list.dictionaryValue().size(), 2U);
  list.setObject(PropertyList(), "a");
  EXPECT_FALSE(list.hasKey("a"));
  list.setObject(PropertyList(), "never there");
  EXPECT_EQ(list, PropertyList::dictionary({{"b", 2}}));
}

TEST(PropertyListTest, SettingTurnsOtherKindsIntoDictionaries) {
  PropertyList list = "text";
  list.setObject(1, "a");
  EXPECT_EQ(list, PropertyList::dictionary({{"a", 1}}));
  PropertyList other = 5;
  other.setObject(PropertyList(), "a");
  EXPECT_EQ(other, PropertyList::dictionary());
}

TEST(PropertyListTest, RemovesByAViewOfTheEntrysOwnKey) {
  auto list = PropertyList::dictionary({{"a", 1}, {"b", 2}, {"c", 3}});
  list.removeObjectForKey(list.dictionaryValue()[0].key);
  EXPECT_EQ(list, PropertyList::dictionary({{"b", 2}, {"c", 3}}));
  list.removeObjectForKey("absent");
  PropertyList text = "text";
  text.removeObjectForKey("a");
  EXPECT_EQ(text, PropertyList("text"));
}

TEST(PropertyListTest, AppendsAndTurnsOtherKindsIntoArrays) {
  PropertyList list;
  list.append(1);
  list.append("two");
  EXPECT_EQ(list, PropertyList(PropertyList::Array{1, "two"}));
  list.append(list);
  EXPECT_EQ(list.arrayValue().size(), 3U);
  EXPECT_EQ(list.arrayValue()[2].arrayValue().size(), 2U);
}

TEST(PropertyListTest, EqualityIsExactByKindAndValue) {
  EXPECT_EQ(PropertyList(), PropertyList());
  EXPECT_EQ(PropertyList(1), PropertyList(1L));
  EXPECT_NE(PropertyList(1), PropertyList(1.0));
  EXPECT_NE(PropertyList(1), PropertyList(true));
  EXPECT_NE(PropertyList(1), PropertyList("1"));
  EXPECT_NE(PropertyList(), PropertyList(false));
  EXPECT_NE(PropertyList::array(), PropertyList::dictionary());
  EXPECT_EQ(PropertyList(PropertyList::Date{1}), PropertyList(PropertyList::Date{1}));
  EXPECT_NE(PropertyList(PropertyList::Date{1}), PropertyList(PropertyList::Date{2}));
  EXPECT_NE(PropertyList(PropertyList::Array{1, 2}), PropertyList(PropertyList::Array{2, 1}));
}

TEST(PropertyListTest, DictionariesAreEqualInAnyOrder) {
  const auto one = PropertyList::dictionary({{"a", 1}, {"b", PropertyList::Array{true}}});
  const auto two = PropertyList::dictionary({{"b", PropertyList::Array{true}}, {"a", 1}});
  EXPECT_EQ(one, two);
  EXPECT_EQ(PropertyList(PropertyList::Array{one}), PropertyList(PropertyList::Array{two}));
  EXPECT_NE(one, PropertyList::dictionary({{"a", 1}}));
  EXPECT_NE(one, PropertyList::dictionary({{"a", 1}, {"c", PropertyList::Array{true}}}));
  EXPECT_NE(one, PropertyList::dictionary({{"a", 2}, {"b", PropertyList::Array{true}}}));
}

TEST(PropertyListTest, CopiesAreDeep) {
  auto original = PropertyList::dictionary({{"inner", PropertyList::dictionary({{"a", 1}})}});
  const PropertyList copy = original;
  auto inner = original.objectForKey("inner");
  inner.setObject(2, "a");
  original.setObject(inner, "inner");
  EXPECT_EQ(copy.objectForKey("inner").longForKey("a"), 1);
  EXPECT_EQ(original.objectForKey("inner").longForKey("a"), 2);
}

}  // namespace
}  // namespace qb
