#include <gtest/gtest.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

struct Row {
  const char* system;
  bool hasVariant;
  const char* name;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.system << (row.hasVariant ? "" : " without a variant");
}

class NamedImagesTest : public testing::TestWithParam<Row> {};

TEST_P(NamedImagesTest, LaterSystemsHaveTheirVariantWhereThereIsOne) {
  SimulatedPlatform platform;
  platform.applicationControl().setOperatingSystemVersionString(GetParam().system);
  if (!GetParam().hasVariant) platform.graphics().setImageMissing("GearYosemite");
  const auto appDelegate = AppDelegate::create(platform);
  noteLaunchedBefore(platform);
  appDelegate->applicationDidFinishLaunching();
  EXPECT_EQ(simulatedImageName(quillbox->imageNamed("Gear")), GetParam().name);
  appDelegate->applicationWillTerminate();
}

INSTANTIATE_TEST_SUITE_P(Systems, NamedImagesTest,
                         testing::Values(Row{"Version 10.9", true, "Gear"},
                                         Row{"Version 10.10", true, "GearYosemite"},
                                         Row{"Version 10.11.6", true, "GearYosemite"},
                                         Row{"Version 10.10", false, "Gear"},
                                         Row{"Version 11.0", true, "Gear"}));

}  // namespace
}  // namespace qb::test
