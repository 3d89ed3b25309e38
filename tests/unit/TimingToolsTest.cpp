#include "QuillboxCommon/TimingTools.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingLog.h"
#include "support/VirtualHost.h"

namespace qb {
namespace {

class TimingToolsTest : public testing::Test {
 protected:
  test::VirtualHost host_;
  RunLoop loop_{host_};
  test::RecordingLog log_;
};

TEST_F(TimingToolsTest, TellsHowLongSomethingTook) {
  TimingTools::startTimer("draw");
  host_.advance(1.5);
  EXPECT_DOUBLE_EQ(TimingTools::endTimer("draw"), 1.5);
  EXPECT_EQ(log_.entries,
            std::vector<std::string>{"Timer --------------- draw took 1.500000 seconds"});
}

TEST_F(TimingToolsTest, OfTwoStartsTheLaterWins) {
  TimingTools::startTimer("draw");
  host_.advance(2);
  TimingTools::startTimer("draw");
  host_.advance(0.25);
  EXPECT_DOUBLE_EQ(TimingTools::endTimer("draw"), 0.25);
}

TEST_F(TimingToolsTest, AnUnknownNameTookNoTimeAndLogsNothing) {
  EXPECT_EQ(TimingTools::endTimer("never started"), 0.0);
  EXPECT_TRUE(log_.entries.empty());
}

TEST_F(TimingToolsTest, AnEndedNameIsForgotten) {
  TimingTools::startTimer("draw");
  host_.advance(1);
  TimingTools::endTimer("draw");
  EXPECT_EQ(TimingTools::endTimer("draw"), 0.0);
  EXPECT_EQ(log_.entries.size(), 1U);
}

TEST_F(TimingToolsTest, NamesAreTimedApart) {
  TimingTools::startTimer("outer");
  host_.advance(1);
  TimingTools::startTimer("inner");
  host_.advance(1);
  EXPECT_DOUBLE_EQ(TimingTools::endTimer("inner"), 1);
  EXPECT_DOUBLE_EQ(TimingTools::endTimer("outer"), 2);
}

}  // namespace
}  // namespace qb
