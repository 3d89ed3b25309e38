#include "PlatformDesktop/session/SilentBus.h"

#include <gtest/gtest.h>

#include "Listener.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

using namespace std::chrono_literals;

TEST(SilentBusTest, OneThatAnswersIsNot) {
  const PrivateBus bus;
  ASSERT_FALSE(bus.address().isEmpty());
  EXPECT_FALSE(isSilentBus(bus.address().toStdString(), 20s));
}

TEST(SilentBusTest, OneThatTakesConnectionsAndSaysNothingIs) {
  const Listener listener(5);
  EXPECT_TRUE(isSilentBus(listener.address(), 1ms));
  EXPECT_TRUE(isSilentBus(listener.address() + ",guid=0123", 1ms));
}

TEST(SilentBusTest, OneWhoseQueueIsFullIsToo) {
  const Listener listener(0);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(isSilentBus(listener.address(), 1ms)) << i;
}

TEST(SilentBusTest, OneThatIsNotThereIsNot) {
  for (const char* address : {"", "disabled:", "unix:", "unix:path=", "unix:path=/no/such/bus",
                              "unix:abstract=no such bus", "tcp:host=localhost", "nonsense"}) {
    EXPECT_FALSE(isSilentBus(address, 1ms)) << address;
  }
  EXPECT_FALSE(isSilentBus("unix:path=/" + std::string(200, 'x'), 1ms));
}

TEST(SilentBusTest, OfSeveralAddressesTheFirstThatTakesAConnectionCounts) {
  const Listener listener(5);
  const PrivateBus bus;
  const std::string silent = listener.address(), answering = bus.address().toStdString();
  EXPECT_TRUE(isSilentBus("unix:path=/no/such/bus;" + silent, 1ms));
  EXPECT_TRUE(isSilentBus(silent + ";" + answering, 1ms));
  EXPECT_FALSE(isSilentBus(answering + ";" + silent, 20s));
}

}  // namespace
}  // namespace qb::test
