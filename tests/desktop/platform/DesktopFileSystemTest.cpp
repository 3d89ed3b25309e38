#include "PlatformDesktop/files/DesktopFileSystem.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "TemporaryFolder.h"

namespace qb {
namespace {

class DesktopFileSystemTest : public ::testing::Test {
 protected:
  static mode_t modeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
  }

  TemporaryFolder folder_;
  DesktopFileSystem files_;
  const PropertyList list_ = PropertyList::dictionary({{"b", 1}, {"a", 2}});
};

TEST_F(DesktopFileSystemTest, TheTildeIsTheHomeOfTheEnvironment) {
  const std::string before = getenv("HOME") ? getenv("HOME") : "";
  setenv("HOME", folder_.path().c_str(), 1);
  EXPECT_EQ(files_.stringByExpandingTildeInPath("~/a"), folder_.path("a"));
  EXPECT_EQ(files_.stringByExpandingTildeInPath("~other/a"), "~other/a");
  setenv("HOME", before.c_str(), 1);
}

TEST_F(DesktopFileSystemTest, OnlyTheUserMayReadWhatIsWritten) {
  folder_.write("a.plist", "<plist><dict/></plist>");
  chmod(folder_.path("a.plist").c_str(), 0644);
  ASSERT_TRUE(files_.writeToFile(list_, folder_.path("a.plist")));
  EXPECT_EQ(modeOf(folder_.path("a.plist")), 0600U);
}

TEST_F(DesktopFileSystemTest, AsMuchAsAClipboardHoldsIsReadBack) {
  PropertyList::Data data(64 << 20);
  for (std::size_t at = 0; at < data.size(); at += 4099) data[at] = static_cast<std::uint8_t>(at);
  const PropertyList list = PropertyList::dictionary({{"Data", std::move(data)}});
  ASSERT_TRUE(files_.writeToFile(list, folder_.path("a.plist")));
  EXPECT_TRUE(files_.dictionaryWithContentsOfFile(folder_.path("a.plist")) == list);
}

TEST_F(DesktopFileSystemTest, ALinkStaysAndItsFileIsReplaced) {
  folder_.write("kept/real.plist", "<plist><dict/></plist>");
  std::filesystem::create_symlink(folder_.path("kept/real.plist"), folder_.path("a.plist"));
  ASSERT_TRUE(files_.writeToFile(list_, folder_.path("a.plist")));
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.path("a.plist")));
  EXPECT_EQ(files_.dictionaryWithContentsOfFile(folder_.path("kept/real.plist")), list_);
}

TEST_F(DesktopFileSystemTest, AFolderInTheFilesPlaceIsLeftAlone) {
  std::filesystem::create_directories(folder_.path("a.plist"));
  EXPECT_FALSE(files_.writeToFile(list_, folder_.path("a.plist")));
  EXPECT_FALSE(files_.dictionaryWithContentsOfFile(folder_.path("a.plist")));
}

TEST_F(DesktopFileSystemTest, APipeIsNoFileToRead) {
  ASSERT_EQ(mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(files_.dictionaryWithContentsOfFile(folder_.path("pipe")));
}

TEST_F(DesktopFileSystemTest, AListWhoseRootIsNoDictionaryIsKeptAside) {
  folder_.write("a.plist", "<plist><array/></plist>");
  EXPECT_FALSE(files_.dictionaryWithContentsOfFile(folder_.path("a.plist")));
  ASSERT_TRUE(files_.writeToFile(list_, folder_.path("a.plist")));
  EXPECT_TRUE(files_.fileExistsAtPath(folder_.path("a.plist.unreadable")));
}

TEST_F(DesktopFileSystemTest, RelativePathsAreRefused) {
  EXPECT_FALSE(files_.writeToFile(list_, "a.plist"));
  EXPECT_FALSE(files_.writeToFile(list_, ""));
}

TEST_F(DesktopFileSystemTest, ALinkCountsAsWhatItLeadsTo) {
  folder_.write("real/a.txt", "text");
  std::filesystem::create_directory_symlink(folder_.path("real"), folder_.path("folder"));
  std::filesystem::create_symlink(folder_.path("real/a.txt"), folder_.path("file"));
  std::filesystem::create_symlink("/no/such/file", folder_.path("dangling"));
  EXPECT_EQ(files_.itemInfoFlagsAtPath(folder_.path("folder")), ItemInfoIsContainer);
  EXPECT_EQ(files_.itemInfoFlagsAtPath(folder_.path("file")), ItemInfoIsPlainFile);
  EXPECT_EQ(files_.itemInfoFlagsAtPath(folder_.path("dangling")), 0U);
}

TEST_F(DesktopFileSystemTest, ADesktopEntryFromAnywhereIsAnApplicationOnlyWhenMarkedSo) {
  const std::string entry =
      folder_.write("letter.desktop", "[Desktop Entry]\nType=Application\nName=Letter\nExec=run\n");
  EXPECT_EQ(files_.itemInfoFlagsAtPath(entry), ItemInfoIsPlainFile);
  chmod(entry.c_str(), 0755);
  EXPECT_EQ(files_.itemInfoFlagsAtPath(entry), ItemInfoIsPlainFile | ItemInfoIsApplication);
  const std::string link =
      folder_.write("link.desktop", "[Desktop Entry]\nType=Link\nName=a\nURL=b\n");
  chmod(link.c_str(), 0755);
  EXPECT_EQ(files_.itemInfoFlagsAtPath(link), ItemInfoIsPlainFile);
}

}  // namespace
}  // namespace qb
