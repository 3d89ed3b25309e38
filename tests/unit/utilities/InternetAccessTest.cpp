#include "Quillbox/activation/utilities/InternetAccess.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/NetworkReachability/Reachability.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

class InternetAccessTest : public QuillboxFixture {
 protected:
  SimulatedNetworkReachability& network() { return platform.networkReachability(); }
};

TEST_F(InternetAccessTest, IsTheBitOfReachability) {
  struct Row {
    std::optional<std::uint32_t> flags;
    bool hasAccess;
  };
  const Row rows[] = {{2, true},       {0, false},          {1, false}, {4, false},
                      {0x10002, true}, {0xFFFFFFFD, false}, {3, true},  {std::nullopt, false}};
  for (const Row& row : rows) {
    network().setFlags(row.flags);
    EXPECT_EQ(quillbox->hasInternetAccess(), row.hasAccess) << row.flags.value_or(0);
  }
}

TEST_F(InternetAccessTest, AsksForOneWellKnownHost) {
  quillbox->hasInternetAccess();
  EXPECT_THAT(network().hostNames(), ElementsAre("www.debian.org"));
}

TEST_F(InternetAccessTest, AHostWithoutANameCannotBeAskedFor) {
  EXPECT_FALSE(Reachability::reachabilityWithHostName(network(), ""));
  EXPECT_TRUE(Reachability::reachabilityWithHostName(network(), "host"));
}

}  // namespace
}  // namespace qb::test
