// The work of the input thread done by hand, so that the test says what comes before what.
#include <gtest/gtest.h>

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/input/InputWorker.h"
#include "XClient.h"
#include "XServer.h"

namespace qb::test {
namespace {

class Worker : public ::testing::Test {
 protected:
  Worker() { user_.openBypassWindow(0, 0, 100, 100); }
  InputConnection open() const {
    return std::get<InputConnection>(InputConnection::open(server_.display().c_str()));
  }
  void handleAll() {
    user_.sync();
    while (worker_.handleNextEvent() || worker_.handleDueWork()) {
    }
  }
  void setEveryKeyDown(bool everyKeyDown) {
    TapRules rules;
    rules.everyKeyDown = everyKeyDown;
    worker_.setRules(rules);
  }
  bool keyboardIsFree() {
    if (!user_.grabKeyboard()) return false;
    user_.ungrabKeyboard();
    user_.sync();
    return true;
  }
  /// The requests of the worker's connection are on their way.
  bool keyboardGetsFree() {
    return waitUntil({}, [this] { return keyboardIsFree(); });
  }

  const XServer server_;
  XClient user_{server_.display()};
  InputConnection connection_ = open();
  InputQueue queue_{[] {}};
  InputWorker worker_{connection_, queue_};
};

TEST_F(Worker, KeepsTheKeyboardWhileTheRulesSaySo) {
  setEveryKeyDown(true);
  EXPECT_FALSE(keyboardIsFree());
  setEveryKeyDown(false);
  EXPECT_TRUE(keyboardGetsFree());
}

TEST_F(Worker, APressThatIsOnItsWayWhenTheKeyboardGoesDoesNotKeepItTheNextTime) {
  setEveryKeyDown(true);
  user_.press(KeyCodeQ);
  user_.sync();
  setEveryKeyDown(false);
  ASSERT_TRUE(keyboardGetsFree());
  // The release is another program's.
  user_.release(KeyCodeQ);
  handleAll();
  setEveryKeyDown(true);
  EXPECT_FALSE(keyboardIsFree());
  setEveryKeyDown(false);
  EXPECT_TRUE(keyboardGetsFree());
}

}  // namespace
}  // namespace qb::test
