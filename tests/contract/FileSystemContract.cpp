#include "ContractTest.h"
#include "Platform/FileSystem.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FileSystemContract : public ContractTest {
 protected:
  FileSystem& files() { return platform_.fileSystem(); }
  std::string path(const std::string& name) { return desktop_->folder() + "/" + name; }

  const PropertyList old_ = PropertyList::dictionary({{"age", 1}});
  const PropertyList new_ = PropertyList::dictionary({{"age", 2}});
  const std::string damaged_ = "<plist><dict><key>age</key>";
};

TEST_F(FileSystemContract, ALeadingTildeIsTheHomeFolder) {
  const std::string home = files().stringByExpandingTildeInPath("~");
  ASSERT_TRUE(home.starts_with("/"));
  EXPECT_EQ(files().stringByExpandingTildeInPath("~/Library/a"), home + "/Library/a");
  EXPECT_EQ(files().stringByExpandingTildeInPath("/a/~/b"), "/a/~/b");
  EXPECT_EQ(files().stringByExpandingTildeInPath("a~"), "a~");
  EXPECT_EQ(files().stringByExpandingTildeInPath(""), "");
}

TEST_F(FileSystemContract, WhatIsWrittenIsRead) {
  const PropertyList dictionary = PropertyList::dictionary({
      {"boolean", true},
      {"integer", -1234567890123},
      {"real", 0.1},
      {"string", "a < b & \"c\" \xc3\xa9"},
      {"empty", ""},
      {"date", PropertyList::Date{721692800}},
      {"data", PropertyList::Data{0, 255, 128}},
      {"array", PropertyList::Array{1, "two", PropertyList::dictionary({{"three", 3}})}},
      {"dictionary", PropertyList::dictionary({{"b", 1}, {"a", false}})},
  });
  ASSERT_TRUE(files().writeToFile(dictionary, path("all.plist")));
  const auto read = files().dictionaryWithContentsOfFile(path("all.plist"));
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, dictionary);
  ASSERT_EQ(read->dictionaryValue().size(), dictionary.dictionaryValue().size());
  for (std::size_t at = 0; at < read->dictionaryValue().size(); ++at) {
    EXPECT_EQ(read->dictionaryValue()[at].key, dictionary.dictionaryValue()[at].key);
  }
}

TEST_F(FileSystemContract, WritingReplacesAndLeavesNothingElseBehind) {
  ASSERT_TRUE(files().writeToFile(old_, path("a.plist")));
  ASSERT_TRUE(files().writeToFile(new_, path("a.plist")));
  EXPECT_EQ(files().dictionaryWithContentsOfFile(path("a.plist")), new_);
  EXPECT_THAT(desktop_->filesIn(desktop_->folder()), ElementsAre("a.plist"));
}

TEST_F(FileSystemContract, AFileIsReadAsItIs) {
  const std::string bytes("a\r\0\xff\n", 5);
  desktop_->writeRawFile(path("a.txt"), bytes);
  EXPECT_EQ(files().stringWithContentsOfFile(path("a.txt")), bytes);
  desktop_->writeRawFile(path("empty.txt"), "");
  EXPECT_EQ(files().stringWithContentsOfFile(path("empty.txt")), "");
  EXPECT_EQ(files().stringWithContentsOfFile(path("none.txt")), std::nullopt);
  EXPECT_EQ(files().stringWithContentsOfFile(desktop_->folder()), std::nullopt);
}

TEST_F(FileSystemContract, AMissingFileIsNone) {
  EXPECT_FALSE(files().fileExistsAtPath(path("none.plist")));
  EXPECT_FALSE(files().dictionaryWithContentsOfFile(path("none.plist")));
  EXPECT_FALSE(files().removeItemAtPath(path("none.plist")));
}

TEST_F(FileSystemContract, AnUnreadableFileIsNoneAndStaysAsItIs) {
  desktop_->writeRawFile(path("a.plist"), damaged_);
  EXPECT_TRUE(files().fileExistsAtPath(path("a.plist")));
  EXPECT_FALSE(files().dictionaryWithContentsOfFile(path("a.plist")));
  EXPECT_TRUE(desktop_->rawFileHas(path("a.plist"), damaged_));
}

TEST_F(FileSystemContract, AnUnreadableFileIsKeptAsideBeforeItsNameIsTaken) {
  desktop_->writeRawFile(path("a.plist"), damaged_);
  ASSERT_TRUE(files().writeToFile(new_, path("a.plist")));
  EXPECT_EQ(files().dictionaryWithContentsOfFile(path("a.plist")), new_);
  EXPECT_TRUE(desktop_->rawFileHas(path("a.plist.unreadable"), damaged_));
}

TEST_F(FileSystemContract, ASecondUnreadableFileIsKeptBesideTheFirst) {
  desktop_->writeRawFile(path("a.plist"), damaged_);
  ASSERT_TRUE(files().writeToFile(new_, path("a.plist")));
  desktop_->writeRawFile(path("a.plist"), "more damage");
  ASSERT_TRUE(files().writeToFile(new_, path("a.plist")));
  EXPECT_TRUE(desktop_->rawFileHas(path("a.plist.unreadable"), damaged_));
  const auto names = desktop_->filesIn(desktop_->folder());
  ASSERT_THAT(names, SizeIs(3));
  EXPECT_TRUE(desktop_->rawFileHas(path(names[2]), "more damage"));
}

TEST_F(FileSystemContract, FoldersOnTheWayAreMade) {
  const std::string deep = path("Library/Application Support/a.plist");
  ASSERT_TRUE(files().writeToFile(new_, deep));
  EXPECT_EQ(files().dictionaryWithContentsOfFile(deep), new_);
  EXPECT_TRUE(files().fileExistsAtPath(path("Library")));
}

TEST_F(FileSystemContract, AFileOnTheWayFailsTheWrite) {
  ASSERT_TRUE(files().writeToFile(old_, path("a.plist")));
  EXPECT_FALSE(files().writeToFile(new_, path("a.plist/b.plist")));
  EXPECT_EQ(files().dictionaryWithContentsOfFile(path("a.plist")), old_);
}

TEST_F(FileSystemContract, AFullDiskLeavesTheOldFileAndNothingElse) {
  ASSERT_TRUE(files().writeToFile(old_, path("a.plist")));
  desktop_->setDiskIsFull(true);
  EXPECT_FALSE(files().writeToFile(new_, path("a.plist")));
  EXPECT_FALSE(files().writeToFile(new_, path("b.plist")));
  desktop_->setDiskIsFull(false);
  EXPECT_EQ(files().dictionaryWithContentsOfFile(path("a.plist")), old_);
  EXPECT_THAT(desktop_->filesIn(desktop_->folder()), ElementsAre("a.plist"));
}

TEST_F(FileSystemContract, AFullDiskLeavesAnUnreadableFileInItsPlace) {
  desktop_->writeRawFile(path("a.plist"), damaged_);
  desktop_->setDiskIsFull(true);
  EXPECT_FALSE(files().writeToFile(new_, path("a.plist")));
  desktop_->setDiskIsFull(false);
  EXPECT_TRUE(desktop_->rawFileHas(path("a.plist"), damaged_));
}

TEST_F(FileSystemContract, RemovingTakesTheFile) {
  ASSERT_TRUE(files().writeToFile(old_, path("a.plist")));
  EXPECT_TRUE(files().fileExistsAtPath(path("a.plist")));
  EXPECT_TRUE(files().removeItemAtPath(path("a.plist")));
  EXPECT_FALSE(files().fileExistsAtPath(path("a.plist")));
  EXPECT_THAT(desktop_->filesIn(desktop_->folder()), IsEmpty());
}

}  // namespace
}  // namespace qb
