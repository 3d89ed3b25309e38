#include "PlatformDesktop/session/SilentBus.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstring>

#include "PrivateBus.h"

namespace qb::test {
namespace {

using namespace std::chrono_literals;

/// A socket on which somebody listens who never takes a connection.
class Listener {
 public:
  explicit Listener(int backlog) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_ = folder_.filePath("a bus").toStdString();
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(socket_, backlog), 0);
  }
  ~Listener() { close(socket_); }
  std::string address() const { return "unix:path=" + folder_.path().toStdString() + "/a%20bus"; }

 private:
  QTemporaryDir folder_;
  std::string path_;
  int socket_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

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
