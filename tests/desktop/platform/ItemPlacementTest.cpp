// What the contract of file systems cannot ask of every platform: links, attributes, other volumes.
#include "PlatformDesktop/files/ItemPlacement.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <set>

#include "PlatformDesktop/processes/DesktopFolders.h"
#include "TemporaryFolder.h"

namespace qb {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ItemPlacementTest : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return folder_.path(name); }
  std::string write(const std::string& name, const std::string& contents) const {
    return folder_.write(name, contents);
  }
  static std::set<std::string> namesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  static struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
  }

  TemporaryFolder folder_;
};

TEST_F(ItemPlacementTest, ALinkIsMovedAndCopiedAsALink) {
  write("real.txt", "real");
  fs::create_directories(path("there"));
  fs::create_symlink("../real.txt", path("link"));
  fs::create_symlink("/no/such/file", path("dangling"));
  ASSERT_TRUE(placeByCopying(path("link"), path("there/copy"), PresentItem::Stays));
  ASSERT_TRUE(placeByMoving(path("link"), path("there/moved"), PresentItem::Stays));
  ASSERT_TRUE(placeByCopying(path("dangling"), path("there/dangling"), PresentItem::Stays));
  EXPECT_EQ(fs::read_symlink(path("there/copy")), "../real.txt");
  EXPECT_EQ(fs::read_symlink(path("there/moved")), "../real.txt");
  EXPECT_EQ(fs::read_symlink(path("there/dangling")), "/no/such/file");
  EXPECT_EQ(contentsOfFile(path("real.txt")), "real");
}

TEST_F(ItemPlacementTest, WhatReplacesALinkLeavesWhatItLeadsTo) {
  write("real/inside.txt", "kept");
  write("there/a", "new");
  fs::create_directory_symlink(path("real"), path("a"));
  ASSERT_TRUE(placeByMoving(path("there/a"), path("a"), PresentItem::IsReplaced));
  EXPECT_EQ(contentsOfFile(path("a")), "new");
  EXPECT_FALSE(fs::is_symlink(path("a")));
  EXPECT_EQ(contentsOfFile(path("real/inside.txt")), "kept");
}

TEST_F(ItemPlacementTest, AFolderThatIsReachedByALinkIsStillTheSame) {
  write("real/a.txt", "kept");
  fs::create_directory_symlink(path("real"), path("link"));
  EXPECT_TRUE(placeByMoving(path("real/a.txt"), path("link/a.txt"), PresentItem::IsReplaced));
  EXPECT_TRUE(placeByCopying(path("link/a.txt"), path("real/a.txt"), PresentItem::IsReplaced));
  EXPECT_EQ(contentsOfFile(path("real/a.txt")), "kept");
  EXPECT_FALSE(placeByMoving(path("real"), path("link/real"), PresentItem::Stays));
  EXPECT_FALSE(placeByCopying(path("real"), path("link/real"), PresentItem::Stays));
  EXPECT_EQ(namesIn(path("real")), (std::set<std::string>{"a.txt"}));
}

TEST_F(ItemPlacementTest, OfTwoNamesOfOneFileTheMovedOneGoes) {
  write("a.txt", "kept");
  fs::create_directories(path("there"));
  fs::create_hard_link(path("a.txt"), path("there/b.txt"));
  ASSERT_TRUE(placeByMoving(path("a.txt"), path("there/b.txt"), PresentItem::IsReplaced));
  EXPECT_FALSE(fs::exists(path("a.txt")));
  EXPECT_EQ(contentsOfFile(path("there/b.txt")), "kept");
}

TEST_F(ItemPlacementTest, ACopyHasModesDatesAndTags) {
  write("folder/a.sh", "#!/bin/sh");
  chmod(path("folder/a.sh").c_str(), 0751);
  const bool hasTags = setxattr(path("folder/a.sh").c_str(), "user.xdg.tags", "red", 3, 0) == 0;
  const std::array<timespec, 2> dates{timespec{1000000000, 5}, timespec{1100000000, 7}};
  utimensat(AT_FDCWD, path("folder/a.sh").c_str(), dates.data(), 0);
  utimensat(AT_FDCWD, path("folder").c_str(), dates.data(), 0);
  chmod(path("folder").c_str(), 0555);
  ASSERT_TRUE(placeByCopying(path("folder"), path("copy"), PresentItem::Stays));
  EXPECT_EQ(statusOf(path("copy/a.sh")).st_mode & 07777, 0751U);
  EXPECT_EQ(statusOf(path("copy")).st_mode & 07777, 0555U);
  EXPECT_EQ(statusOf(path("copy/a.sh")).st_mtim.tv_sec, 1100000000);
  EXPECT_EQ(statusOf(path("copy")).st_mtim.tv_sec, 1100000000);
  if (hasTags) {
    char value[8] = {};
    EXPECT_EQ(getxattr(path("copy/a.sh").c_str(), "user.xdg.tags", value, sizeof value), 3);
    EXPECT_STREQ(value, "red");
  }
  chmod(path("folder").c_str(), 0755);
  chmod(path("copy").c_str(), 0755);
}

TEST_F(ItemPlacementTest, APipeIsCopiedAndNotRead) {
  fs::create_directories(path("folder"));
  ASSERT_EQ(mkfifo(path("folder/pipe").c_str(), 0600), 0);
  ASSERT_TRUE(placeByCopying(path("folder"), path("copy"), PresentItem::Stays));
  EXPECT_TRUE(fs::is_fifo(path("copy/pipe")));
}

TEST_F(ItemPlacementTest, WhatCannotBeCopiedLeavesNothingBehind) {
  write("folder/deep/a.txt", "kept");
  chmod(path("folder/deep").c_str(), 0555);
  ASSERT_EQ(mknod(path("folder/z socket").c_str(), S_IFSOCK | 0600, 0), 0);
  write("there/folder/old.txt", "old");
  EXPECT_FALSE(placeByCopying(path("folder"), path("there/folder"), PresentItem::IsReplaced));
  EXPECT_EQ(namesIn(path("there")), (std::set<std::string>{"folder"}));
  EXPECT_EQ(contentsOfFile(path("there/folder/old.txt")), "old");
  chmod(path("folder/deep").c_str(), 0755);
}

TEST_F(ItemPlacementTest, ALargeFileIsWhole) {
  std::string contents(3 << 20, 'x');
  for (std::size_t i = 0; i < contents.size(); i += 4093) contents[i] = static_cast<char>(i);
  write("large", contents);
  ASSERT_TRUE(placeByCopying(path("large"), path("copy"), PresentItem::Stays));
  EXPECT_EQ(contentsOfFile(path("copy"), 4 << 20), contents);
}

TEST_F(ItemPlacementTest, AFileThatIsMadeUpAsItIsReadIsWhole) {
  ASSERT_TRUE(placeByCopying("/proc/self/cmdline", path("copy"), PresentItem::Stays));
  EXPECT_EQ(contentsOfFile(path("copy")), contentsOfFile("/proc/self/cmdline"));
}

TEST_F(ItemPlacementTest, WhereNothingCanBeWrittenNothingGoes) {
  write("a.txt", "kept");
  EXPECT_FALSE(placeByMoving(path("a.txt"), "/proc/self/a.txt", PresentItem::IsReplaced));
  EXPECT_FALSE(placeByCopying(path("a.txt"), "/proc/self/a.txt", PresentItem::Stays));
  EXPECT_FALSE(placeByMoving("/proc/self/cmdline", path("cmdline"), PresentItem::Stays));
  EXPECT_EQ(contentsOfFile(path("a.txt")), "kept");
}

TEST_F(ItemPlacementTest, RelativePathsAreRefused) {
  write("a.txt", "kept");
  EXPECT_FALSE(placeByMoving(path("a.txt"), "a.txt", PresentItem::Stays));
  EXPECT_FALSE(placeByCopying("", path("b.txt"), PresentItem::Stays));
  EXPECT_EQ(namesIn(folder_.path()), (std::set<std::string>{"a.txt"}));
}

TEST_F(ItemPlacementTest, ASlashAtTheEndDoesNotLeadThroughALink) {
  write("real/inside.txt", "kept");
  fs::create_directory_symlink(path("real"), path("link"));
  ASSERT_TRUE(placeByMoving(path("link/"), path("moved/"), PresentItem::Stays));
  EXPECT_TRUE(fs::is_symlink(path("moved")));
  EXPECT_EQ(contentsOfFile(path("real/inside.txt")), "kept");
}

/// The memory's own file system, where there is one.
class AnotherVolumeTest : public ItemPlacementTest {
 protected:
  void SetUp() override {
    std::string name = "/dev/shm/quillbox-test-XXXXXX";
    if (mkdtemp(name.data()) != nullptr) other_ = name;
    if (other_.empty() || statusOf(other_).st_dev == statusOf(folder_.path()).st_dev) {
      GTEST_SKIP() << "there is no other volume here";
    }
  }
  ~AnotherVolumeTest() override {
    std::error_code error;
    if (!other_.empty()) fs::remove_all(other_, error);
  }
  std::string other(const std::string& name) const { return other_ + '/' + name; }

 private:
  std::string other_;
};

TEST_F(AnotherVolumeTest, AFolderMovesThereWithAllThatIsInIt) {
  write("folder/deep/a.txt", "kept");
  chmod(path("folder/deep/a.txt").c_str(), 0640);
  ASSERT_TRUE(placeByMoving(path("folder"), other("folder"), PresentItem::Stays));
  EXPECT_EQ(contentsOfFile(other("folder/deep/a.txt")), "kept");
  EXPECT_EQ(statusOf(other("folder/deep/a.txt")).st_mode & 07777, 0640U);
  EXPECT_THAT(namesIn(folder_.path()), IsEmpty());
}

TEST_F(AnotherVolumeTest, WhatIsReplacedThereGoesOnlyForAWholeOne) {
  write("folder/a.txt", "new");
  fs::create_directories(other("folder"));
  std::ofstream(other("folder/a.txt")) << "old";
  ASSERT_EQ(mknod(path("folder/z socket").c_str(), S_IFSOCK | 0600, 0), 0);
  EXPECT_FALSE(placeByMoving(path("folder"), other("folder"), PresentItem::IsReplaced));
  EXPECT_EQ(contentsOfFile(other("folder/a.txt")), "old");
  EXPECT_EQ(contentsOfFile(path("folder/a.txt")), "new");
  fs::remove(path("folder/z socket"));
  ASSERT_TRUE(placeByMoving(path("folder"), other("folder"), PresentItem::IsReplaced));
  EXPECT_EQ(contentsOfFile(other("folder/a.txt")), "new");
  EXPECT_FALSE(fs::exists(path("folder")));
  EXPECT_EQ(namesIn(other("")), (std::set<std::string>{"folder"}));
}

TEST_F(AnotherVolumeTest, WhatIsThereStaysUnlessToldOtherwise) {
  write("a.txt", "new");
  std::ofstream(other("a.txt")) << "old";
  EXPECT_FALSE(placeByMoving(path("a.txt"), other("a.txt"), PresentItem::Stays));
  EXPECT_EQ(contentsOfFile(other("a.txt")), "old");
  EXPECT_EQ(contentsOfFile(path("a.txt")), "new");
}

}  // namespace
}  // namespace qb
