#include "PlatformDesktop/processes/FolderWatch.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <memory>

#include "EventWait.h"

namespace qb::test {
namespace {

namespace fs = std::filesystem;

class FolderWatchTest : public ::testing::Test {
 protected:
  void watch(const std::string& folder, bool isDeep = true) {
    watch_ = std::make_unique<FolderWatch>(
        std::vector<FolderWatch::Folder>{{path(folder), isDeep}},
        [this](std::string_view name) {
          lastName_ = name;
          return name.ends_with(".desktop");
        },
        [this] { ++changes_; });
  }
  std::string path(const std::string& name) const {
    return home_.path().toStdString() + "/" + name;
  }
  void makeFolder(const std::string& name) const { fs::create_directories(path(name)); }
  void write(const std::string& name) const { std::ofstream(path(name)) << name; }
  /// Whether what was done just now is noticed.
  bool isNoticed() {
    const bool noticed = waitFor([this] { return changes_ > 0; });
    // What one change says several times is all here by now.
    QCoreApplication::processEvents();
    changes_ = 0;
    return noticed;
  }

  QTemporaryDir home_;
  std::unique_ptr<FolderWatch> watch_;
  std::string lastName_;
  int changes_ = 0;
};

TEST_F(FolderWatchTest, NoticesFilesThatAreWrittenMovedAndDeleted) {
  makeFolder("applications");
  watch("applications");
  write("applications/a.desktop");
  EXPECT_TRUE(isNoticed());
  write("applications/a.desktop");
  EXPECT_TRUE(isNoticed()) << "in place";
  fs::rename(path("applications/a.desktop"), path("applications/b.desktop"));
  EXPECT_TRUE(isNoticed());
  fs::create_symlink("b.desktop", path("applications/c.desktop"));
  EXPECT_TRUE(isNoticed());
  fs::remove(path("applications/b.desktop"));
  EXPECT_TRUE(isNoticed());
}

TEST_F(FolderWatchTest, OtherFilesDoNotCount) {
  makeFolder("applications");
  watch("applications");
  write("applications/notes.txt");
  fs::remove(path("applications/notes.txt"));
  ASSERT_TRUE(waitFor([this] { return lastName_ == "notes.txt"; }));
  EXPECT_EQ(changes_, 0);
}

TEST_F(FolderWatchTest, AFolderMayComeLater) {
  watch("share/applications");
  makeFolder("share");
  makeFolder("share/applications");
  EXPECT_TRUE(isNoticed());
  write("share/applications/a.desktop");
  EXPECT_TRUE(isNoticed());
}

TEST_F(FolderWatchTest, AFolderMayGoAndComeBack) {
  makeFolder("share/applications");
  write("share/applications/a.desktop");
  watch("share/applications");
  fs::remove_all(path("share"));
  EXPECT_TRUE(isNoticed());
  makeFolder("share/applications");
  EXPECT_TRUE(isNoticed());
  write("share/applications/b.desktop");
  EXPECT_TRUE(isNoticed());
}

TEST_F(FolderWatchTest, FoldersBelowCountWhereThatIsWanted) {
  makeFolder("applications/suite");
  watch("applications");
  write("applications/suite/a.desktop");
  EXPECT_TRUE(isNoticed());
  makeFolder("applications/other");
  EXPECT_TRUE(isNoticed());
  write("applications/other/b.desktop");
  EXPECT_TRUE(isNoticed());
}

TEST_F(FolderWatchTest, FoldersBelowDoNotCountWhereThatIsNotWanted) {
  makeFolder("applications/suite");
  watch("applications", false);
  write("applications/suite/a.desktop");
  makeFolder("applications/other");
  write("applications/last.txt");
  ASSERT_TRUE(waitFor([this] { return lastName_ == "last.txt"; }));
  EXPECT_EQ(changes_, 0);
}

}  // namespace
}  // namespace qb::test
