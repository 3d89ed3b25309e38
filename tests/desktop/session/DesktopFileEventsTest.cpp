#include "PlatformDesktop/files/DesktopFileEvents.h"

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>

#include <QTemporaryDir>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "EventWait.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "QuillboxCommon/Log.h"

namespace qb::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::StartsWith;

class DesktopFileEventsTest : public ::testing::Test, public LogSink {
 protected:
  DesktopFileEventsTest() {
    host_.setRunLoop(&loop_);
    setLogSink(this);
  }
  ~DesktopFileEventsTest() override {
    setLogSink(nullptr);
    host_.setRunLoop(nullptr);
  }
  void write(std::string_view text) override { log_.emplace_back(text); }
  bool standardErrorIsTerminal() const override { return false; }

  std::string path(const std::string& name) const {
    return home_.path().toStdString() + "/" + name;
  }
  Subscription watch(const std::string& folder) {
    return events_.watchFolder(folder, 0.01, [this] { ++told_; });
  }
  bool isTold() {
    const bool told = waitFor([this] { return told_ > 0; });
    told_ = 0;
    return told;
  }

  QTemporaryDir home_;
  QtRunLoopHost host_;
  RunLoop loop_{host_};
  DesktopFileEvents events_;
  std::vector<std::string> log_;
  int told_ = 0;
};

TEST_F(DesktopFileEventsTest, WhatCannotBeWatchedIsSaidOnceAndKeepsNothingElseFromBeingWatched) {
  const std::string tooLong = path(std::string(300, 'x'));
  const Subscription hopeless = watch(tooLong);
  const Subscription watcher = watch(home_.path().toStdString());
  std::ofstream(path("a.txt")) << "text";
  EXPECT_TRUE(isTold());
  fs::create_directory(path("folder"));
  EXPECT_TRUE(isTold());
  EXPECT_THAT(log_, ElementsAre(StartsWith(tooLong + " cannot be watched, ")));
}

TEST_F(DesktopFileEventsTest, AFileInAFoldersPlaceIsNoFolder) {
  std::ofstream(path("place")) << "text";
  const Subscription watcher = watch(path("place"));
  fs::remove(path("place"));
  fs::create_directory(path("place"));
  EXPECT_TRUE(isTold());
  std::ofstream(path("place/a.txt")) << "text";
  EXPECT_TRUE(isTold());
  EXPECT_TRUE(log_.empty());
}

TEST_F(DesktopFileEventsTest, AVolumeThatIsMountedInAFolderOrOverItIsTold) {
  setenv("HOME", home_.path().toUtf8().constData(), 1);
  fs::create_directories(path("media/stick"));
  if (unshare(CLONE_NEWNS) != 0 ||
      mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
    GTEST_SKIP() << "nothing can be mounted here";
  }
  const Subscription watcher = watch(path("media"));
  const auto mountOn = [](const std::string& place) {
    return mount("none", place.c_str(), "tmpfs", 0, nullptr) == 0;
  };
  ASSERT_TRUE(mountOn(path("media/stick")));
  EXPECT_TRUE(isTold());
  ASSERT_EQ(umount(path("media/stick").c_str()), 0);
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(mountOn(path("media")));
  EXPECT_TRUE(isTold());
  std::ofstream(path("media/a.txt")) << "text";
  EXPECT_TRUE(isTold());
  ASSERT_EQ(umount(path("media").c_str()), 0);
  EXPECT_TRUE(isTold());
}

}  // namespace
}  // namespace qb::test
