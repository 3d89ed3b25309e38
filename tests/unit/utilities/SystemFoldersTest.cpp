#include "Quillbox/activation/utilities/SystemFolders.h"

#include <gmock/gmock.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SystemFoldersTest : public QuillboxFixture {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }
};

TEST_F(SystemFoldersTest, EachIdHasAFolderOfTheUser) {
  struct Row {
    std::int32_t folderID;
    const char* path;
  };
  const Row rows[] = {
      {9, "/home/user/Documents"},      {12, "/home/user/Desktop"},
      {15, "/home/user/Downloads"},     {17, "/home/user/Videos"},
      {18, "/home/user/Music"},         {19, "/home/user/Pictures"},
      {21, "/home/user/Public"},        {4711, ""},
      {100, "/usr/share/applications"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.folderID);
    EXPECT_EQ(quillbox->filePathForSystemFolderWithID(row.folderID), row.path);
  }
}

TEST_F(SystemFoldersTest, AFolderForApplicationsOfTheUsersOwnGivesWayToThatOfAll) {
  files().setPathForDirectory(AllApplicationsDirectory, "/home/user/Applications");
  EXPECT_EQ(quillbox->filePathForSystemFolderWithID(100), "/Applications");
}

TEST_F(SystemFoldersTest, ContentsAreTheNamesThatAreNotHidden) {
  for (const char* name : {"b.txt", ".hidden", "a.txt"}) {
    files().putRaw(std::string("/home/user/Desktop/") + name, "");
  }
  EXPECT_THAT(quillbox->contentsForSystemFolderWithID(12), ElementsAre("a.txt", "b.txt"));
}

TEST_F(SystemFoldersTest, AFolderThatIsNotThereHasNoContents) {
  EXPECT_THAT(quillbox->contentsForSystemFolderWithID(12), IsEmpty());
  files().putRaw("/in the root", "");
  EXPECT_THAT(quillbox->contentsForSystemFolderWithID(4711), IsEmpty());
}

TEST_F(SystemFoldersTest, PathsOfAnotherUserLeadToTheFoldersOfThisOne) {
  struct Row {
    const char* path;
    const char* reconciled;
  };
  const Row rows[] = {
      {"/Users/other/Desktop", "/home/user/Desktop"},
      {"/Users/other/Movies", "/home/user/Videos"},
      {"/Users/other/Music", "/home/user/Music"},
      {"/Users/other/Pictures", "/home/user/Pictures"},
      {"/Users/other/Public", "/home/user/Public"},
      {"/Users/other/Downloads", "/home/user/Downloads"},
      {"/Users/other/Documents", "/home/user/Documents"},
      {"/Applications", "/usr/share/applications"},
      {"/Volumes/Disk/Applications/Utilities", "/Applications/Utilities"},
      {"/Users/other/Desktop.old", "/home/user/Desktop"},
      {"/Users/other/desktop", "/Users/other/desktop"},
      {"/Users/other/Videos", "/Users/other/Videos"},
      {"/Users/other/Desktop/folder", "/Users/other/Desktop/folder"},
      {"", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(quillbox->reconcileBogusFolderPath(row.path), row.reconciled) << row.path;
  }
}

TEST_F(SystemFoldersTest, APathToAFolderThatTheUserDoesWithoutStays) {
  files().setPathForDirectory(MusicDirectory, std::nullopt);
  EXPECT_EQ(quillbox->reconcileBogusFolderPath("/Users/other/Music"), "/Users/other/Music");
}

}  // namespace
}  // namespace qb::test
