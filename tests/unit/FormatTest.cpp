#include "QuillboxCommon/Format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace qb {
namespace {

TEST(FormatTest, AnObjectTakesEverythingInItsNaturalForm) {
  EXPECT_EQ(stringWithFormat("%@", "text"), "text");
  EXPECT_EQ(stringWithFormat("%@", std::string("text")), "text");
  EXPECT_EQ(stringWithFormat("%@", std::string_view("text")), "text");
  EXPECT_EQ(stringWithFormat("%@", -3), "-3");
  EXPECT_EQ(stringWithFormat("%@", true), "1");
  EXPECT_EQ(stringWithFormat("%@", 0.1), "0.1");
  EXPECT_EQ(stringWithFormat("%@", 3.0), "3");
  EXPECT_EQ(stringWithFormat("%@", 0.33F), "0.33000001311302185");
}

TEST(FormatTest, Integers) {
  EXPECT_EQ(stringWithFormat("%i %d %ld %li %lld", 1, -2, 3L, -4L, 5LL), "1 -2 3 -4 5");
  EXPECT_EQ(stringWithFormat("%u %lu", 1U, std::numeric_limits<std::uint64_t>::max()),
            "1 18446744073709551615");
  EXPECT_EQ(stringWithFormat("%ld", std::numeric_limits<std::int64_t>::min()),
            "-9223372036854775808");
  EXPECT_EQ(stringWithFormat("%i%i", true, false), "10");
}

TEST(FormatTest, Reals) {
  EXPECT_EQ(stringWithFormat("%f", 1.5), "1.500000");
  EXPECT_EQ(stringWithFormat("%f", -0.0000004), "-0.000000");
  EXPECT_EQ(stringWithFormat("%f", 2), "2.000000");
  EXPECT_EQ(stringWithFormat("%.2f|%.0f|%.3f", 1.005, 2.5, 1e3), "1.00|2|1000.000");
  EXPECT_EQ(stringWithFormat("%f", std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(stringWithFormat("%f", std::numeric_limits<double>::max()).size(), 309U + 7);
  EXPECT_EQ(stringWithFormat("%.12f", -std::numeric_limits<double>::max()).size(), 310U + 13);
}

TEST(FormatTest, WidthsAndFlags) {
  EXPECT_EQ(stringWithFormat("%02i", 7), "07");
  EXPECT_EQ(stringWithFormat("%02i", 123), "123");
  EXPECT_EQ(stringWithFormat("%04i", -7), "-007");
  EXPECT_EQ(stringWithFormat("%5i|%-5i|", 42, 42), "   42|42   |");
  EXPECT_EQ(stringWithFormat("%+i %+i", 3, -3), "+3 -3");
  EXPECT_EQ(stringWithFormat("%+04i", 3), "+003");
  EXPECT_EQ(stringWithFormat("%.3i %.3i", 5, -5), "005 -005");
  EXPECT_EQ(stringWithFormat("%8.2f|%08.2f", 3.14159, -3.14159), "    3.14|-0003.14");
  EXPECT_EQ(stringWithFormat("%5s|%-5s|", "ab", "ab"), "   ab|ab   |");
}

TEST(FormatTest, APercentSignIsDoubled) {
  EXPECT_EQ(stringWithFormat("100%%"), "100%");
  EXPECT_EQ(stringWithFormat("%i%% of %@", 5, "it"), "5% of it");
}

TEST(FormatTest, WhatIsMissingOrOfTheWrongTypeShows) {
  EXPECT_EQ(stringWithFormat("%@ %i %f %s"), "(null) (null) (null) (null)");
  EXPECT_EQ(stringWithFormat("%i", "text"), "(null)");
  EXPECT_EQ(stringWithFormat("%i", 1.5), "(null)");
  EXPECT_EQ(stringWithFormat("%f", "text"), "(null)");
  EXPECT_EQ(stringWithFormat("%s", 3), "(null)");
  EXPECT_EQ(stringWithFormat("%@", static_cast<const char*>(nullptr)), "(null)");
}

TEST(FormatTest, AWrongArgumentIsUsedUp) {
  EXPECT_EQ(stringWithFormat("%i %i", "text", 2), "(null) 2");
}

TEST(FormatTest, SurplusArgumentsAreIgnored) { EXPECT_EQ(stringWithFormat("a", 1, "b"), "a"); }

TEST(FormatTest, WhatIsNoConversionStandsAsItIs) {
  EXPECT_EQ(stringWithFormat("100% sure %", 1), "100% sure %");
  EXPECT_EQ(stringWithFormat("%y%5", 1), "%y%5");
  EXPECT_EQ(stringWithFormat("%2F%@", "x"), "%2Fx");
  EXPECT_EQ(stringWithFormat(""), "");
}

TEST(FormatTest, ArgumentsAreNotReadAsPatterns) {
  EXPECT_EQ(stringWithFormat("%@ %@", "%@", "b"), "%@ b");
}

TEST(FormatTest, HugeWidthsAreHeldInCheck) {
  EXPECT_EQ(stringWithFormat("%99999999999999999999i", 1).size(), 1000U);
  EXPECT_EQ(stringWithFormat("%.99999999999999999999f", 1.5).size(), 1002U);
}

TEST(FormatTest, ReturnsAndOtherBytesPassThrough) {
  EXPECT_EQ(stringWithFormat("a\r\n%@\r", "Zoë"), "a\r\nZoë\r");
}

}  // namespace
}  // namespace qb
