#include "QuillboxCommon/ModalSession.h"

#include <gtest/gtest.h>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

class ModalSessionTest : public testing::Test {
 protected:
  SimulatedPlatform platform;
};

TEST_F(ModalSessionTest, RunsInTheModalModeAndAnswersTheFirstResponse) {
  ModalSession session;
  RunLoopMode mode = RunLoopMode::Default;
  platform.schedule(1, [&] {
    mode = platform.runLoop().currentMode();
    session.stop(7);
    session.stop(8);
  });
  EXPECT_EQ(session.run(), 7);
  EXPECT_EQ(mode, RunLoopMode::ModalPanel);
  EXPECT_EQ(platform.runLoop().currentMode(), RunLoopMode::Default);
}

TEST_F(ModalSessionTest, OneStoppedBeforehandDoesNotRun) {
  ModalSession session;
  session.stop();
  EXPECT_EQ(session.run(), ModalResponseStop);
}

TEST_F(ModalSessionTest, TimersOfTheDefaultModeStandStillAndCommonOnesRun) {
  int standing = 0, running = 0;
  const auto inDefault =
      platform.runLoop().scheduleTimer(1, true, [&](RunLoopTimer&) { ++standing; });
  const auto inCommon = platform.runLoop().scheduleTimer(
      1, true, [&](RunLoopTimer&) { ++running; }, RunLoopModes::common());
  ModalSession session;
  platform.schedule(3.5, [&] { session.stop(); });
  session.run();
  EXPECT_EQ(standing, 0);
  EXPECT_EQ(running, 3);
}

TEST_F(ModalSessionTest, AbortEndsTheInnermostOne) {
  ModalSession outer;
  std::int32_t inner = 0;
  platform.schedule(1, [&] {
    ModalSession session;
    platform.schedule(1, [] { ModalSession::abortModal(); });
    inner = session.run();
    EXPECT_FALSE(outer.isStopped());
    outer.stop(5);
  });
  EXPECT_EQ(outer.run(), 5);
  EXPECT_EQ(inner, ModalResponseAbort);
}

TEST_F(ModalSessionTest, AnOuterOneThatIsStoppedUnderAnInnerOneEndsAfterIt) {
  ModalSession outer;
  bool innerHasEnded = false;
  platform.schedule(1, [&] {
    ModalSession inner;
    platform.schedule(1, [&] { outer.stop(3); });
    platform.schedule(2, [&] { inner.stop(); });
    inner.run();
    innerHasEnded = true;
  });
  EXPECT_EQ(outer.run(), 3);
  EXPECT_TRUE(innerHasEnded);
}

TEST_F(ModalSessionTest, AbortWithoutASessionIsHarmless) {
  ModalSession::abortModal();
  EXPECT_EQ(ModalSession::current(), nullptr);
}

}  // namespace
}  // namespace qb::test
