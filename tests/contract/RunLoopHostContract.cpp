#include <string>
#include <vector>

#include "ContractTest.h"

namespace qb {
namespace {

using ::testing::ElementsAre;

class RunLoopHostContract : public ContractTest {
 protected:
  RunLoop& loop() { return RunLoop::main(); }
};

TEST_F(RunLoopHostContract, TheClockReachesADeadlineBeforeItsWorkRuns) {
  const Moment start = loop().now();
  Moment fired = 0;
  loop().performAfterDelay(this, "fire", 0.05, [&] { fired = loop().now(); });
  ASSERT_TRUE(waitUntil([&] { return fired > 0; }));
  EXPECT_GE(fired - start, 0.0499);
}

TEST_F(RunLoopHostContract, BothClocksRunAlike) {
  const Moment moment = loop().now();
  const Date date = loop().date();
  ASSERT_TRUE(waitUntil([&] { return loop().now() >= moment + 0.1; }));
  EXPECT_NEAR(loop().date() - date, loop().now() - moment, 0.05);
}

TEST_F(RunLoopHostContract, ARunUntilAMomentServesWhatComesDueMeanwhile) {
  std::vector<std::string> order;
  loop().performAfterDelay(this, "early", 0.02, [&] { order.push_back("early"); });
  loop().performAfterDelay(this, "late", 0.2, [&] { order.push_back("late"); });
  const Moment end = loop().now() + 0.1;
  loop().runUntilDate(end);
  EXPECT_GE(loop().now(), end - 0.0001);
  order.push_back("returned");
  ASSERT_TRUE(waitUntil([&] { return order.size() == 3; }));
  EXPECT_THAT(order, ElementsAre("early", "returned", "late"));
}

TEST_F(RunLoopHostContract, ANestedRunInAnotherModeLeavesTheWorkOfTheDefaultModeAlone) {
  std::vector<std::string> order;
  bool done = false;
  loop().performAfterDelay(this, "default", 0, [&] { order.push_back("default mode"); });
  executeBlockAfterDelay(
      [&] {
        order.push_back("main queue");
        done = true;
      },
      0.02);
  loop().runInMode(RunLoopMode::ModalPanel, [&] { return done; });
  ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
  EXPECT_THAT(order, ElementsAre("main queue", "default mode"));
}

TEST_F(RunLoopHostContract, BackgroundWorkComesBackOnTheMainQueue) {
  std::vector<std::string> order;
  executeBlockInBackground([&] { executeBlockAfterDelay([&] { order.push_back("back"); }, 0); });
  order.push_back("sent");
  ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
  EXPECT_THAT(order, ElementsAre("sent", "back"));
}

TEST_F(RunLoopHostContract, ARestingTimerIsWokenByTheKeyboard) {
  int firings = 0;
  const auto timer = loop().scheduleTimer(0.02, true, [&](RunLoopTimer& fired) {
    ++firings;
    fired.restUntilSignalled({&platform_.keyboard().keysChanged()});
  });
  ASSERT_TRUE(waitUntil([&] { return firings == 1; }));
  loop().runUntilDate(loop().now() + 0.1);
  EXPECT_EQ(firings, 1);
  desktop_->pressKey(KeyCodeLeftCommand);
  EXPECT_TRUE(waitUntil([&] { return firings >= 2; }));
  desktop_->releaseKey(KeyCodeLeftCommand);
  timer->invalidate();
}

}  // namespace
}  // namespace qb
