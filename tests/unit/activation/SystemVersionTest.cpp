#include "Quillbox/activation/SystemVersion.h"

#include <gtest/gtest.h>

#include "PlatformSimulated/SimulatedApplicationControl.h"

namespace qb::test {
namespace {

struct Row {
  const char* words;
  int major, minor, revision;
  bool mountainLionOrEarlier, yosemiteOrLater, elCapitanOrLater;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.words; }

class SystemVersionTest : public testing::TestWithParam<Row> {};

TEST_P(SystemVersionTest, IsReadFromTheSystemsWords) {
  const Row& row = GetParam();
  SimulatedApplicationControl application;
  application.setOperatingSystemVersionString(row.words);
  SystemVersion version(application);
  std::int16_t major = -7, minor = -7, revision = -7;
  version.systemVersionMajor(&major, &minor, &revision);
  EXPECT_EQ(major, row.major);
  EXPECT_EQ(minor, row.minor);
  EXPECT_EQ(revision, row.revision);
  EXPECT_EQ(version.isMountainLionOrEarlier(), row.mountainLionOrEarlier);
  EXPECT_EQ(version.isMavericksOrLater(), !row.mountainLionOrEarlier);
  EXPECT_EQ(version.isYosemiteOrLater(), row.yosemiteOrLater);
  EXPECT_EQ(version.isElCapitanOrLater(), row.elCapitanOrLater);
}

constexpr int untouched = -7;
INSTANTIATE_TEST_SUITE_P(
    All, SystemVersionTest,
    testing::Values(Row{"Version 10.8.5 (Build 12F45)", 10, 8, 5, true, false, false},
                    Row{"Version 10.7 (Build 11A511)", 10, 7, untouched, true, false, false},
                    Row{"Version 10.9 (Build 13A603)", 10, 9, untouched, false, false, false},
                    Row{"Version 10.10.1 (Build 14B25)", 10, 10, 1, false, true, false},
                    Row{"Version 10.11.6 (Build 15G31)", 10, 11, 6, false, true, true},
                    // Later, and yet not by the minor number.
                    Row{"Version 11.0 (Build 20A1)", 11, 0, untouched, false, false, false},
                    Row{"9.9.9.9", 9, 9, 9, false, false, false},
                    Row{"10.9 11.1", 10, 9, untouched, false, false, false},
                    Row{"no version", 10, 8, 0, true, false, false},
                    Row{"", 10, 8, 0, true, false, false}));

TEST(SystemVersionAnswers, AreFoundOnce) {
  SimulatedApplicationControl application;
  SystemVersion version(application);
  EXPECT_TRUE(version.isMavericksOrLater());
  application.setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  EXPECT_TRUE(version.isMavericksOrLater());
}

TEST(SystemVersionAnswers, OnlyTheOutputsThatAreGivenAreSet) {
  SimulatedApplicationControl application;
  std::int16_t minor = 0;
  SystemVersion(application).systemVersionMajor(nullptr, &minor, nullptr);
  EXPECT_EQ(minor, 9);
}

}  // namespace
}  // namespace qb::test
