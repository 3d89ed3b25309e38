#include "PlatformDesktop/InstanceLock.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <QByteArray>
#include <future>
#include <utility>

#include "XServer.h"

namespace qb::test {
namespace {

using Acquired = std::pair<std::unique_ptr<InstanceLock>, InstanceLock::Failure>;

class InstanceLockTest : public ::testing::Test {
 protected:
  InstanceLockTest() : before_(qgetenv("DISPLAY")) {
    qputenv("DISPLAY", server_.display().c_str());
  }
  ~InstanceLockTest() override { qputenv("DISPLAY", before_); }

  static Acquired acquire() {
    InstanceLock::Failure failure{};
    auto lock = InstanceLock::acquire(failure);
    return {std::move(lock), failure};
  }
  /// Whether another instance asks, some time soon.
  static bool isAsked(const InstanceLock& lock) {
    pollfd descriptor{.fd = lock.descriptor(), .events = POLLIN, .revents = 0};
    return poll(&descriptor, 1, 30000) == 1;
  }

 private:
  const XServer server_;
  const QByteArray before_;
};

TEST_F(InstanceLockTest, TheFirstHasTheRightAndNobodyAsks) {
  const auto [first, failure] = acquire();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->answerOtherStarts(), 0);
}

TEST_F(InstanceLockTest, TheSecondHandsItsStartOver) {
  const auto [first, none] = acquire();
  ASSERT_TRUE(first);
  auto second = std::async(std::launch::async, acquire);
  int starts = 0;
  while (starts == 0 && isAsked(*first)) starts = first->answerOtherStarts();
  EXPECT_EQ(starts, 1);
  const auto [lock, failure] = second.get();
  EXPECT_FALSE(lock);
  EXPECT_EQ(failure, InstanceLock::Failure::HandedOver);
}

TEST_F(InstanceLockTest, TheRightPassesOnFromOneThatEndsWithoutAnAnswer) {
  auto [first, none] = acquire();
  ASSERT_TRUE(first);
  auto second = std::async(std::launch::async, acquire);
  ASSERT_TRUE(isAsked(*first));
  first.reset();
  const auto [lock, failure] = second.get();
  EXPECT_TRUE(lock);
}

TEST_F(InstanceLockTest, WithoutAServerThereIsNoDisplay) {
  qputenv("DISPLAY", ":4711");
  const auto [lock, failure] = acquire();
  EXPECT_FALSE(lock);
  EXPECT_EQ(failure, InstanceLock::Failure::NoDisplay);
}

}  // namespace
}  // namespace qb::test
