#include "Platform/FileEvents.h"

#include "ContractTest.h"
#include "Platform/FileSystem.h"

namespace qb {
namespace {

constexpr TimeInterval latency = 0.25;

class FileEventsContract : public ContractTest {
 protected:
  void TearDown() override {
    other_.cancel();
    ContractTest::TearDown();
  }
  FileSystem& files() { return platform_.fileSystem(); }
  std::string path(const std::string& name) { return desktop_->folder() + "/" + name; }
  Subscription watch(const std::string& folder) {
    return platform_.fileEvents().watchFolder(folder, latency, [this] { ++told_; });
  }
  /// Whether what was done since the last time is told of.
  bool isTold() {
    const bool told = waitUntil([this] { return told_ > 0; });
    told_ = 0;
    return told;
  }
  /// What happens in the other folder last is told last.
  bool othersAreTold() {
    desktop_->writeRawFile(path("other/" + std::to_string(++number_)), "");
    return waitUntil([this] { return otherTold_ >= number_; });
  }
  void watchOther() {
    files().createDirectoryAtPath(path("other"));
    other_ = platform_.fileEvents().watchFolder(path("other"), latency, [this] { ++otherTold_; });
  }

  int told_ = 0;
  int otherTold_ = 0, number_ = 0;
  Subscription other_;
};

TEST_F(FileEventsContract, WhatIsCreatedRenamedAndRemovedIsTold) {
  const Subscription watcher = watch(desktop_->folder());
  desktop_->writeRawFile(path("a.txt"), "text");
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().moveItemAtPath(path("a.txt"), path("b.txt")));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().createDirectoryAtPath(path("folder")));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().moveItemAtPath(path("b.txt"), path("folder/b.txt")));
  EXPECT_TRUE(isTold());
  desktop_->makeLink(path("link"), path("folder"));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().removeItemAtPath(path("folder")));
  EXPECT_TRUE(isTold());
}

TEST_F(FileEventsContract, WhatIsWrittenAndWhatHappensBelowIsNoNews) {
  ASSERT_TRUE(files().createDirectoryAtPath(path("folder/below")));
  desktop_->writeRawFile(path("folder/a.txt"), "text");
  const Subscription watcher = watch(path("folder"));
  watchOther();
  desktop_->writeRawFile(path("folder/a.txt"), "longer text");
  desktop_->writeRawFile(path("folder/below/b.txt"), "text");
  ASSERT_TRUE(othersAreTold());
  EXPECT_EQ(told_, 0);
}

TEST_F(FileEventsContract, ManyChangesAreToldAtMostOnceInTheTimeOfTheLatency) {
  std::vector<Moment> moments;
  const Subscription watcher = platform_.fileEvents().watchFolder(
      desktop_->folder(), latency, [&] { moments.push_back(RunLoop::main().now()); });
  const Moment start = RunLoop::main().now();
  ASSERT_TRUE(waitUntil([&] {
    desktop_->writeRawFile(path(std::to_string(++number_)), "");
    return moments.size() >= 3;
  }));
  // The loop counts in whole microseconds.
  constexpr TimeInterval shortest = latency - 1e-5;
  EXPECT_GE(moments[0] - start, shortest);
  EXPECT_GE(moments[1] - moments[0], shortest);
  EXPECT_GE(moments[2] - moments[1], shortest);
}

TEST_F(FileEventsContract, AFolderMayComeLater) {
  const Subscription watcher = watch(path("late/folder"));
  ASSERT_TRUE(files().createDirectoryAtPath(path("late/folder")));
  EXPECT_TRUE(isTold());
  desktop_->writeRawFile(path("late/folder/a.txt"), "text");
  EXPECT_TRUE(isTold());
}

TEST_F(FileEventsContract, AFolderMayGoAndComeBack) {
  ASSERT_TRUE(files().createDirectoryAtPath(path("place/folder")));
  const Subscription watcher = watch(path("place/folder"));
  ASSERT_TRUE(files().removeItemAtPath(path("place")));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().createDirectoryAtPath(path("place/folder")));
  EXPECT_TRUE(isTold());
  desktop_->writeRawFile(path("place/folder/a.txt"), "text");
  EXPECT_TRUE(isTold());
}

TEST_F(FileEventsContract, AFolderGoesWithThePlaceThatItIsIn) {
  ASSERT_TRUE(files().createDirectoryAtPath(path("place/folder")));
  desktop_->writeRawFile(path("place/folder/a.txt"), "text");
  const Subscription watcher = watch(path("place/folder"));
  ASSERT_TRUE(files().moveItemAtPath(path("place"), path("elsewhere")));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().moveItemAtPath(path("elsewhere"), path("place")));
  EXPECT_TRUE(isTold());
  ASSERT_TRUE(files().removeItemAtPath(path("place/folder/a.txt")));
  EXPECT_TRUE(isTold());
}

TEST_F(FileEventsContract, EveryWatcherOfAFolderIsTold) {
  int others = 0;
  const Subscription watcher = watch(desktop_->folder());
  Subscription second =
      platform_.fileEvents().watchFolder(desktop_->folder(), latency, [&others] { ++others; });
  desktop_->writeRawFile(path("a.txt"), "text");
  EXPECT_TRUE(isTold());
  EXPECT_TRUE(waitUntil([&] { return others > 0; }));
  second.cancel();
  desktop_->writeRawFile(path("b.txt"), "text");
  EXPECT_TRUE(isTold());
}

TEST_F(FileEventsContract, WhoHasEndedItHearsNoMore) {
  Subscription watcher = watch(desktop_->folder());
  watchOther();
  ASSERT_TRUE(isTold());
  desktop_->writeRawFile(path("a.txt"), "text");
  watcher.cancel();
  ASSERT_TRUE(othersAreTold());
  EXPECT_EQ(told_, 0);
}

TEST_F(FileEventsContract, AWatcherMayEndItselfAsItIsTold) {
  int told = 0;
  Subscription watcher;
  watcher = platform_.fileEvents().watchFolder(desktop_->folder(), latency, [&] {
    ++told;
    watcher.cancel();
  });
  desktop_->writeRawFile(path("a.txt"), "text");
  EXPECT_TRUE(waitUntil([&] { return told == 1; }));
}

}  // namespace
}  // namespace qb
