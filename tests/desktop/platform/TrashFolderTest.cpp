#include "PlatformDesktop/files/TrashFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PlatformDesktop/processes/DesktopFolders.h"
#include "TemporaryFolder.h"

namespace qb {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// Has a home of its own, on the volume of the temporary folders.
class TrashFolderTest : public ::testing::Test {
 protected:
  TrashFolderTest() { setenv("XDG_DATA_HOME", home_.path("data").c_str(), 1); }
  ~TrashFolderTest() override {
    if (before_) {
      setenv("XDG_DATA_HOME", before_->c_str(), 1);
    } else {
      unsetenv("XDG_DATA_HOME");
    }
  }

  static std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    if (!fs::exists(folder)) return names;
    for (const auto& entry : fs::directory_iterator(folder))
      names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string inTrash(const std::string& name = "") const {
    return home_.path("data/Trash") + (name.empty() ? "" : '/' + name);
  }

  TemporaryFolder home_;
  const std::optional<std::string> before_ =
      getenv("XDG_DATA_HOME") ? std::optional<std::string>(getenv("XDG_DATA_HOME")) : std::nullopt;
};

TEST_F(TrashFolderTest, ANoteTellsWhereItWasAndWhen) {
  const std::string path = home_.write("a folder/50% \xc3\xa9.txt", "contents");
  EXPECT_EQ(moveToTrash(path), std::nullopt);
  EXPECT_EQ(contentsOfFile(inTrash("files/50% \xc3\xa9.txt")), "contents");
  const std::string note = contentsOfFile(inTrash("info/50% \xc3\xa9.txt.trashinfo"));
  EXPECT_THAT(note, StartsWith("[Trash Info]\nPath=" + fs::canonical(home_.path()).string() +
                               "/a%20folder/50%25%20%C3%A9.txt\nDeletionDate="));
  EXPECT_THAT(note, MatchesRegex("(.|\n)*DeletionDate=[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:"
                                 "[0-9]{2}\n"));
}

TEST_F(TrashFolderTest, OnlyTheUserSeesIt) {
  ASSERT_EQ(moveToTrash(home_.write("a", "")), std::nullopt);
  struct stat status {};
  ASSERT_EQ(stat(inTrash().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(TrashFolderTest, ALinkGoesAndWhatItLeadsToStays) {
  const std::string target = home_.write("target.txt", "contents");
  fs::create_symlink(target, home_.path("link"));
  fs::create_symlink(home_.path("gone"), home_.path("broken"));
  EXPECT_EQ(moveToTrash(home_.path("link")), std::nullopt);
  EXPECT_EQ(moveToTrash(home_.path("broken")), std::nullopt);
  EXPECT_TRUE(fs::exists(target));
  EXPECT_TRUE(fs::is_symlink(inTrash("files/link")));
  EXPECT_TRUE(fs::is_symlink(inTrash("files/broken")));
}

TEST_F(TrashFolderTest, ASlashAtTheEndOfAFolderIsIgnored) {
  home_.write("things/one.txt", "");
  EXPECT_EQ(moveToTrash(home_.path("things/")), std::nullopt);
  EXPECT_THAT(namesIn(inTrash("files")), ElementsAre("things"));
}

TEST_F(TrashFolderTest, NamesakesGetNumbersInFilesAndNotes) {
  for (int round = 0; round < 3; ++round) {
    ASSERT_EQ(moveToTrash(home_.write("same", std::to_string(round))), std::nullopt);
  }
  EXPECT_THAT(namesIn(inTrash("files")), ElementsAre("same", "same.2", "same.3"));
  EXPECT_THAT(namesIn(inTrash("info")),
              ElementsAre("same.2.trashinfo", "same.3.trashinfo", "same.trashinfo"));
  EXPECT_EQ(contentsOfFile(inTrash("files/same.2")), "1");
}

TEST_F(TrashFolderTest, ALeftoverWithoutANoteIsNotReplaced) {
  home_.write("data/Trash/files/same", "leftover");
  EXPECT_EQ(moveToTrash(home_.write("same", "new")), std::nullopt);
  EXPECT_EQ(contentsOfFile(inTrash("files/same")), "leftover");
  EXPECT_EQ(contentsOfFile(inTrash("files/same.2")), "new");
  EXPECT_THAT(namesIn(inTrash("info")), ElementsAre("same.2.trashinfo"));
}

TEST_F(TrashFolderTest, TheLongestNameLeavesRoomForItsNote) {
  std::string name;
  while (name.size() < 254) name += "\xc3\xa9";
  EXPECT_EQ(moveToTrash(home_.write(name, "contents")), std::nullopt);
  const auto names = namesIn(inTrash("files"));
  ASSERT_THAT(names, SizeIs(1));
  EXPECT_THAT(name, StartsWith(names[0]));
  EXPECT_THAT(names[0], EndsWith("\xc3\xa9"));
}

TEST_F(TrashFolderTest, WhatIsMissingIsTold) {
  EXPECT_EQ(moveToTrash(home_.path("nowhere.txt")),
            "\"nowhere.txt\" could not be moved to the Trash: it is not there.");
  EXPECT_NE(moveToTrash(""), std::nullopt);
  EXPECT_NE(moveToTrash("/"), std::nullopt);
  EXPECT_NE(moveToTrash("relative.txt"), std::nullopt);
}

TEST_F(TrashFolderTest, ATrashThatIsALinkIsNotTrusted) {
  const std::string path = home_.write("a", "contents");
  home_.write("elsewhere/b", "");
  home_.write("data/c", "");
  fs::create_symlink(home_.path("elsewhere"), inTrash());
  // It may go to the volume's own trash, or nowhere.
  moveToTrash(path);
  EXPECT_THAT(namesIn(home_.path("elsewhere")), ElementsAre("b"));
}

TEST_F(TrashFolderTest, AFailureLeavesEverythingInItsPlace) {
  // A folder cannot go into itself.
  home_.write("data/kept", "contents");
  const auto reason = moveToTrash(home_.path("data"));
  ASSERT_TRUE(reason);
  EXPECT_THAT(*reason, StartsWith("\"data\" could not be moved to the Trash: "));
  EXPECT_EQ(contentsOfFile(home_.path("data/kept")), "contents");
  EXPECT_THAT(namesIn(inTrash("info")), IsEmpty());
}

/// Another volume, when the machine has one that tests may write to.
class TrashOfAnotherVolumeTest : public TrashFolderTest {
 protected:
  TrashOfAnotherVolumeTest() {
    struct stat volume {
    }, temporary{};
    if (stat("/dev/shm", &volume) == 0 && stat(home_.path().c_str(), &temporary) == 0 &&
        volume.st_dev != temporary.st_dev && access("/dev/shm", W_OK) == 0) {
      char name[] = "/dev/shm/quillbox-test-XXXXXX";
      if (mkdtemp(name) != nullptr) folder_ = name;
    }
  }
  ~TrashOfAnotherVolumeTest() override {
    if (folder_.empty()) return;
    fs::remove_all(folder_);
    fs::remove(trash_ + "/files/" + name());
    fs::remove(trash_ + "/info/" + name() + ".trashinfo");
    // These go only when they are empty.
    for (const char* folder : {"/files", "/info", ""}) rmdir((trash_ + folder).c_str());
  }
  /// Like nothing else.
  std::string name() const { return fs::path(folder_).filename().string() + ".txt"; }

  std::string folder_;
  const std::string trash_ = "/dev/shm/.Trash-" + std::to_string(geteuid());
};

TEST_F(TrashOfAnotherVolumeTest, KeepsItOnItsVolume) {
  if (folder_.empty()) GTEST_SKIP() << "There is no other volume.";
  const std::string path = folder_ + '/' + name();
  std::ofstream(path) << "contents";
  EXPECT_EQ(moveToTrash(path), std::nullopt);
  EXPECT_FALSE(fs::exists(path));
  EXPECT_THAT(namesIn(inTrash("files")), IsEmpty());
  EXPECT_EQ(contentsOfFile(trash_ + "/files/" + name()), "contents");
  EXPECT_THAT(contentsOfFile(trash_ + "/info/" + name() + ".trashinfo"),
              StartsWith("[Trash Info]\nPath=" + fs::path(folder_).filename().string() + '/' +
                         name() + '\n'));
}

}  // namespace
}  // namespace qb
