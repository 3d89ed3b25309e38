#include "Quillbox/providers/SystemFolder.h"

#include <gmock/gmock.h>

#include "Platform/FileSystem.h"
#include "support/QuillboxFixture.h"
#include "support/SystemFolders.h"

namespace qb {

inline bool operator==(const SystemFolder& a, const SystemFolder& b) {
  return a.path == b.path && a.directoryID == b.directoryID &&
         a.invocationSelector == b.invocationSelector;
}
inline void PrintTo(const SystemFolder& folder, std::ostream* out) {
  *out << folder.path << ' ' << folder.directoryID << ' ' << folder.invocationSelector;
}

namespace test {
namespace {

class SystemFolderTest : public QuillboxFixture {
 protected:
  SystemFolderTest() { makeSystemFolders(platform.fileSystem()); }

  std::vector<std::string> paths() const {
    std::vector<std::string> all;
    for (const SystemFolder& each : systemFolders(*quillbox)) all.push_back(each.path);
    return all;
  }
  bool offers(const std::string& path) const {
    const auto all = paths();
    return std::find(all.begin(), all.end(), path) != all.end();
  }
};

TEST_F(SystemFolderTest, AllOfThemInOrder) {
  EXPECT_EQ(systemFolders(*quillbox),
            (std::vector<SystemFolder>{
                {"/home/user", 6666, "homeButtonPressed"},
                {"/usr/share/applications", 100, "applicationsButtonPressed"},
                {"/home/user/Documents", 9, "documentsButtonPressed"},
                {"/home/user/Desktop", 12, "desktopButtonPressed"},
                {"/home/user/Downloads", 15, "downloadsButtonPressed"},
                {"/home/user/Videos", 17, "moviesButtonPressed"},
                {"/home/user/Music", 18, "musicButtonPressed"},
                {"/home/user/Pictures", 19, "picturesButtonPressed"},
                {"/home/user/Public", 21, "publicButtonPressed"},
                {"/Applications/Utilities", 7777, "utilitiesButtonPressed"},
                {"/home/user/Library", 8888, "libraryButtonPressed"},
            }));
}

TEST_F(SystemFolderTest, TheUsersOwnApplicationsGiveWayToThoseOfAll) {
  platform.fileSystem().makeFolder("/Applications");
  platform.fileSystem().setPathForDirectory(AllApplicationsDirectory, "/home/user/Applications");
  EXPECT_TRUE(offers("/Applications"));
  EXPECT_FALSE(offers("/home/user/Applications"));
}

TEST_F(SystemFolderTest, WhatTheUserHasNotOrHidesIsNotOffered) {
  platform.fileSystem().setPathForDirectory(SharedPublicDirectory, std::nullopt);
  platform.fileSystem().makeFolder("/home/user/.music");
  platform.fileSystem().setPathForDirectory(MusicDirectory, "/home/user/.music");
  platform.fileSystem().removeItemAtPath("/Applications/Utilities");
  EXPECT_EQ(paths().size(), 8U);
  EXPECT_FALSE(offers("/home/user/Public"));
  EXPECT_FALSE(offers("/home/user/.music"));
  EXPECT_FALSE(offers("/Applications/Utilities"));
}

}  // namespace
}  // namespace test
}  // namespace qb
