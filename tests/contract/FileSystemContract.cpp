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

TEST_F(FileSystemContract, AnyBytesCanBeWritten) {
  const std::string bytes("\0\xff{\n", 4);
  const PropertyList::Data data(bytes.begin(), bytes.end());
  ASSERT_TRUE(files().writeDataToFile(data, path("new/a.rtf")));
  EXPECT_TRUE(desktop_->rawFileHas(path("new/a.rtf"), bytes));
  ASSERT_TRUE(files().writeDataToFile({'b'}, path("new/a.rtf")));
  EXPECT_TRUE(desktop_->rawFileHas(path("new/a.rtf"), "b"));
  EXPECT_THAT(desktop_->filesIn(path("new")), ElementsAre("a.rtf")) << "nothing is kept aside";
  EXPECT_FALSE(files().writeDataToFile(data, path("new")));
  EXPECT_FALSE(files().writeDataToFile(data, path("new/a.rtf/b")));
  desktop_->setDiskIsFull(true);
  EXPECT_FALSE(files().writeDataToFile(data, path("new/a.rtf")));
  desktop_->setDiskIsFull(false);
  EXPECT_TRUE(desktop_->rawFileHas(path("new/a.rtf"), "b"));
}

TEST_F(FileSystemContract, AnArrayIsWrittenAndReadLikeADictionary) {
  const PropertyList names = PropertyList::Array{"a.txt", "b & c.zip"};
  ASSERT_TRUE(files().writeToFile(names, path("names.plist")));
  EXPECT_EQ(files().arrayWithContentsOfFile(path("names.plist")), names);
  EXPECT_FALSE(files().dictionaryWithContentsOfFile(path("names.plist")));
  ASSERT_TRUE(files().writeToFile(new_, path("a.plist")));
  EXPECT_FALSE(files().arrayWithContentsOfFile(path("a.plist")));
  EXPECT_FALSE(files().arrayWithContentsOfFile(path("none.plist")));
  EXPECT_FALSE(files().writeToFile("neither", path("text.plist")));
}

TEST_F(FileSystemContract, ADictionaryIsKeptAsideBeforeAnArrayTakesItsName) {
  ASSERT_TRUE(files().writeToFile(old_, path("a.plist")));
  ASSERT_TRUE(files().writeToFile(PropertyList::Array{"a"}, path("a.plist")));
  EXPECT_EQ(files().dictionaryWithContentsOfFile(path("a.plist.unreadable")), old_);
}

TEST_F(FileSystemContract, AttributesAreTheSizeAndTheDateOfMaking) {
  desktop_->writeRawFile(path("a.txt"), "12345");
  const auto attributes = files().attributesOfItemAtPath(path("a.txt"));
  ASSERT_TRUE(attributes);
  EXPECT_EQ(attributes->size, 5);
  // The clocks of the files and of the program need not agree to the last digit.
  constexpr TimeInterval minute = 60;
  EXPECT_LT(attributes->creationDate, RunLoop::main().date() + minute);
  EXPECT_GT(attributes->creationDate, RunLoop::main().date() - 10 * minute);
  EXPECT_TRUE(files().attributesOfItemAtPath(desktop_->folder()));
  EXPECT_FALSE(files().attributesOfItemAtPath(path("none.txt")));
  EXPECT_FALSE(files().attributesOfItemAtPath(""));
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

TEST_F(FileSystemContract, ALongFileIsReadFromItsBeginning) {
  const std::string bytes("a\r\0\xff\n", 5);
  desktop_->writeRawFile(path("a.txt"), bytes);
  EXPECT_EQ(files().stringWithBeginningOfFile(path("a.txt"), 3), bytes.substr(0, 3));
  EXPECT_EQ(files().stringWithBeginningOfFile(path("a.txt"), 5), bytes);
  EXPECT_EQ(files().stringWithBeginningOfFile(path("a.txt"), 100), bytes);
  EXPECT_EQ(files().stringWithBeginningOfFile(path("a.txt"), 0), "");
  EXPECT_EQ(files().stringWithBeginningOfFile(path("none.txt"), 3), std::nullopt);
  EXPECT_EQ(files().stringWithBeginningOfFile(desktop_->folder(), 3), std::nullopt);
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

TEST_F(FileSystemContract, APrivateFolderIsOnlyTheUsers) {
  ASSERT_TRUE(files().createDirectoryAtPath(path("usual")));
  EXPECT_TRUE(desktop_->othersCanLookInto(path("usual")));
  ASSERT_TRUE(files().createDirectoryAtPath(path("way/private"), FolderAccess::Private));
  EXPECT_FALSE(desktop_->othersCanLookInto(path("way/private")));
  EXPECT_TRUE(desktop_->othersCanLookInto(path("way")));
  ASSERT_TRUE(files().createDirectoryAtPath(path("usual"), FolderAccess::Private));
  EXPECT_FALSE(desktop_->othersCanLookInto(path("usual")));
  ASSERT_TRUE(files().createDirectoryAtPath(path("usual")));
  EXPECT_FALSE(desktop_->othersCanLookInto(path("usual"))) << "it stays as it is";
  desktop_->writeRawFile(path("file"), "text");
  EXPECT_FALSE(files().createDirectoryAtPath(path("file"), FolderAccess::Private));
  EXPECT_TRUE(desktop_->rawFileHas(path("file"), "text"));
}

TEST_F(FileSystemContract, WhatThingsAreIsToldByTheirFlags) {
  desktop_->writeRawFile(path("a.txt"), "text");
  desktop_->writeRawFile(path(".hidden"), "text");
  for (const char* folder : {"folder", "letter.rtfd"}) {
    ASSERT_TRUE(files().createDirectoryAtPath(path(folder)));
  }
  EXPECT_EQ(files().itemInfoFlagsAtPath(path("a.txt")), ItemInfoIsPlainFile);
  EXPECT_EQ(files().itemInfoFlagsAtPath(path(".hidden")),
            ItemInfoIsPlainFile | ItemInfoIsInvisible);
  EXPECT_EQ(files().itemInfoFlagsAtPath(path("folder")), ItemInfoIsContainer);
  EXPECT_EQ(files().itemInfoFlagsAtPath(path("letter.rtfd")),
            ItemInfoIsContainer | ItemInfoIsPackage);
  EXPECT_EQ(files().itemInfoFlagsAtPath(desktop_->clientPath()),
            ItemInfoIsPlainFile | ItemInfoIsApplication);
  EXPECT_EQ(files().itemInfoFlagsAtPath("/"), ItemInfoIsContainer | ItemInfoIsVolume);
  EXPECT_EQ(files().itemInfoFlagsAtPath(path("none")), 0U);
  EXPECT_EQ(files().itemInfoFlagsAtPath(""), 0U);
}

TEST_F(FileSystemContract, ALinkIsAFileWhateverItLeadsTo) {
  desktop_->writeRawFile(path("a.txt"), "text");
  ASSERT_TRUE(files().createDirectoryAtPath(path("folder")));
  desktop_->makeLink(path("to folder"), path("folder"));
  desktop_->makeLink(path("to nothing"), path("none"));
  for (const auto& [name, isDirectory] :
       {std::pair("a.txt", false), {"folder", true}, {"to folder", false}, {"to nothing", false}}) {
    const auto attributes = files().attributesOfItemAtPath(path(name));
    ASSERT_TRUE(attributes) << name;
    EXPECT_EQ(attributes->isDirectory, isDirectory) << name;
  }
  EXPECT_FALSE(files().fileExistsAtPath(path("to nothing")));
}

TEST_F(FileSystemContract, TheModificationDateMovesOnAsAFileIsWritten) {
  desktop_->writeRawFile(path("a.txt"), "old");
  const auto old = files().attributesOfItemAtPath(path("a.txt"));
  ASSERT_TRUE(old);
  EXPECT_GE(old->modificationDate, old->creationDate);
  // Files are stamped by a coarse clock.
  EXPECT_TRUE(waitUntil([&] {
    desktop_->writeRawFile(path("a.txt"), "changed");
    const auto changed = files().attributesOfItemAtPath(path("a.txt"));
    return changed && changed->modificationDate > old->modificationDate;
  }));
}

TEST_F(FileSystemContract, AFolderListsTheNamesOfAllThatIsInIt) {
  EXPECT_THAT(files().contentsOfDirectoryAtPath(desktop_->folder()), IsEmpty());
  for (const char* name : {"b", "a.txt", ".hidden"}) desktop_->writeRawFile(path(name), "text");
  ASSERT_TRUE(files().createDirectoryAtPath(path("folder/inside")));
  EXPECT_THAT(files().contentsOfDirectoryAtPath(desktop_->folder()),
              ElementsAre(".hidden", "a.txt", "b", "folder"));
  EXPECT_THAT(files().contentsOfDirectoryAtPath(path("none")), IsEmpty());
  EXPECT_THAT(files().contentsOfDirectoryAtPath(path("b")), IsEmpty());
}

TEST_F(FileSystemContract, EveryUserHasTheUsualFolders) {
  const std::string home = files().stringByExpandingTildeInPath("~");
  for (const SearchPathDirectory directory :
       {DocumentDirectory, DesktopDirectory, DownloadsDirectory, MoviesDirectory, MusicDirectory,
        PicturesDirectory, SharedPublicDirectory}) {
    const auto folder = files().pathForDirectory(directory);
    ASSERT_TRUE(folder) << directory;
    EXPECT_TRUE(folder->starts_with(home + "/")) << *folder;
  }
  EXPECT_EQ(files().pathForDirectory(DesktopDirectory), home + "/Desktop");
  const auto applications = files().pathForDirectory(AllApplicationsDirectory);
  ASSERT_TRUE(applications);
  EXPECT_TRUE(applications->ends_with("/applications"));
  EXPECT_EQ(files().pathForDirectory(ApplicationDirectory), applications);
  EXPECT_FALSE(files().pathForDirectory(static_cast<SearchPathDirectory>(4711)));
}

class PlacingFilesContract : public FileSystemContract {
 protected:
  PlacingFilesContract() {
    desktop_->writeRawFile(path("a.txt"), "new");
    files().createDirectoryAtPath(path("there"));
  }
  void makeFolderWithFile(const std::string& folder, const std::string& contents) {
    files().createDirectoryAtPath(path(folder));
    desktop_->writeRawFile(path(folder + "/inside.txt"), contents);
  }
  bool move(const std::string& from, const std::string& to,
            PresentItem presentItem = PresentItem::Stays) {
    return files().moveItemAtPath(path(from), path(to), presentItem);
  }
  bool copy(const std::string& from, const std::string& to,
            PresentItem presentItem = PresentItem::Stays) {
    return files().copyItemAtPath(path(from), path(to), presentItem);
  }
  bool has(const std::string& name, const std::string& contents) {
    return desktop_->rawFileHas(path(name), contents);
  }
  bool exists(const std::string& name) { return files().fileExistsAtPath(path(name)); }
  std::vector<std::string> namesIn(const std::string& folder) {
    return files().contentsOfDirectoryAtPath(folder.empty() ? desktop_->folder() : path(folder));
  }
};

TEST_F(PlacingFilesContract, WhatIsThereCanBeDeleted) {
  makeFolderWithFile("folder/deep", "kept");
  desktop_->makeLink(path("link"), path("none"));
  for (const char* name : {"a.txt", "there", "folder", "link"}) {
    EXPECT_TRUE(files().isDeletableFileAtPath(path(name))) << name;
  }
  EXPECT_FALSE(files().isDeletableFileAtPath(path("none")));
  EXPECT_FALSE(files().isDeletableFileAtPath(path("none/a.txt")));
  EXPECT_FALSE(files().isDeletableFileAtPath(""));
  EXPECT_TRUE(has("folder/deep/inside.txt", "kept"));
}

TEST_F(PlacingFilesContract, AMovedFileHasLeft) {
  ASSERT_TRUE(move("a.txt", "there/a.txt"));
  EXPECT_TRUE(has("there/a.txt", "new"));
  EXPECT_THAT(namesIn(""), ElementsAre("there"));
  EXPECT_THAT(namesIn("there"), ElementsAre("a.txt"));
}

TEST_F(PlacingFilesContract, ACopiedFileIsInBothPlaces) {
  ASSERT_TRUE(copy("a.txt", "there/a.txt"));
  EXPECT_TRUE(has("a.txt", "new"));
  EXPECT_TRUE(has("there/a.txt", "new"));
  EXPECT_THAT(namesIn("there"), ElementsAre("a.txt"));
}

TEST_F(PlacingFilesContract, FoldersGoWithAllThatIsInThem) {
  makeFolderWithFile("folder/deep", "kept");
  ASSERT_TRUE(copy("folder", "there/copy"));
  ASSERT_TRUE(move("folder", "there/moved"));
  EXPECT_TRUE(has("there/copy/deep/inside.txt", "kept"));
  EXPECT_TRUE(has("there/moved/deep/inside.txt", "kept"));
  EXPECT_FALSE(exists("folder"));
}

TEST_F(PlacingFilesContract, WhatIsThereStaysUnlessToldOtherwise) {
  desktop_->writeRawFile(path("there/a.txt"), "old");
  EXPECT_FALSE(move("a.txt", "there/a.txt"));
  EXPECT_FALSE(copy("a.txt", "there/a.txt"));
  EXPECT_TRUE(has("a.txt", "new"));
  EXPECT_TRUE(has("there/a.txt", "old"));
}

TEST_F(PlacingFilesContract, AFileReplacesAFile) {
  desktop_->writeRawFile(path("there/a.txt"), "old");
  ASSERT_TRUE(copy("a.txt", "there/a.txt", PresentItem::IsReplaced));
  EXPECT_TRUE(has("a.txt", "new"));
  EXPECT_TRUE(has("there/a.txt", "new"));
  desktop_->writeRawFile(path("there/a.txt"), "old");
  ASSERT_TRUE(move("a.txt", "there/a.txt", PresentItem::IsReplaced));
  EXPECT_FALSE(exists("a.txt"));
  EXPECT_TRUE(has("there/a.txt", "new"));
  EXPECT_THAT(namesIn("there"), ElementsAre("a.txt"));
}

TEST_F(PlacingFilesContract, AFolderReplacesAFolderAsAWhole) {
  makeFolderWithFile("folder", "new");
  makeFolderWithFile("there/folder", "old");
  desktop_->writeRawFile(path("there/folder/another.txt"), "old");
  ASSERT_TRUE(move("folder", "there/folder", PresentItem::IsReplaced));
  EXPECT_THAT(namesIn("there/folder"), ElementsAre("inside.txt"));
  EXPECT_TRUE(has("there/folder/inside.txt", "new"));
  EXPECT_THAT(namesIn("there"), ElementsAre("folder"));
  EXPECT_FALSE(exists("folder"));
}

TEST_F(PlacingFilesContract, ACopiedFolderReplacesAFileAndTheOtherWayRound) {
  makeFolderWithFile("folder", "new");
  desktop_->writeRawFile(path("there/folder"), "old");
  ASSERT_TRUE(copy("folder", "there/folder", PresentItem::IsReplaced));
  EXPECT_TRUE(has("there/folder/inside.txt", "new"));
  ASSERT_TRUE(copy("a.txt", "there/folder", PresentItem::IsReplaced));
  EXPECT_TRUE(has("there/folder", "new"));
  EXPECT_THAT(namesIn("there"), ElementsAre("folder"));
}

TEST_F(PlacingFilesContract, OntoItselfNothingHappens) {
  for (const PresentItem presentItem : {PresentItem::Stays, PresentItem::IsReplaced}) {
    EXPECT_TRUE(move("a.txt", "a.txt", presentItem));
    EXPECT_TRUE(copy("a.txt", "a.txt", presentItem));
    EXPECT_TRUE(has("a.txt", "new"));
  }
  EXPECT_FALSE(move("none", "none", PresentItem::IsReplaced));
}

TEST_F(PlacingFilesContract, NoFolderGoesIntoItself) {
  makeFolderWithFile("folder/deep", "kept");
  for (const PresentItem presentItem : {PresentItem::Stays, PresentItem::IsReplaced}) {
    EXPECT_FALSE(move("folder", "folder/folder", presentItem));
    EXPECT_FALSE(copy("folder", "folder/deep/folder", presentItem));
  }
  EXPECT_TRUE(has("folder/deep/inside.txt", "kept"));
  EXPECT_THAT(namesIn("folder"), ElementsAre("deep"));
  EXPECT_THAT(namesIn("folder/deep"), ElementsAre("inside.txt"));
}

TEST_F(PlacingFilesContract, NothingReplacesTheFolderThatItIsIn) {
  makeFolderWithFile("folder/folder", "kept");
  EXPECT_FALSE(move("folder/folder", "folder", PresentItem::IsReplaced));
  EXPECT_FALSE(copy("folder/folder/inside.txt", "folder", PresentItem::IsReplaced));
  EXPECT_TRUE(has("folder/folder/inside.txt", "kept"));
}

TEST_F(PlacingFilesContract, AMissingFileReplacesNothing) {
  EXPECT_FALSE(move("none", "a.txt", PresentItem::IsReplaced));
  EXPECT_FALSE(copy("none", "a.txt", PresentItem::IsReplaced));
  EXPECT_TRUE(has("a.txt", "new"));
}

TEST_F(PlacingFilesContract, IntoAMissingFolderNothingGoes) {
  EXPECT_FALSE(move("a.txt", "none/a.txt"));
  EXPECT_FALSE(copy("a.txt", "none/a.txt"));
  EXPECT_FALSE(move("a.txt", "a.txt/a.txt"));
  EXPECT_TRUE(has("a.txt", "new"));
  EXPECT_FALSE(exists("none"));
}

TEST_F(PlacingFilesContract, OnAFullDiskWhatWasThereStays) {
  desktop_->writeRawFile(path("there/a.txt"), "old");
  makeFolderWithFile("folder", "new");
  makeFolderWithFile("there/folder", "old");
  desktop_->setDiskIsFull(true);
  EXPECT_FALSE(copy("a.txt", "there/a.txt", PresentItem::IsReplaced));
  EXPECT_FALSE(copy("folder", "there/folder", PresentItem::IsReplaced));
  EXPECT_FALSE(copy("a.txt", "there/b.txt"));
  desktop_->setDiskIsFull(false);
  EXPECT_TRUE(has("there/a.txt", "old"));
  EXPECT_TRUE(has("there/folder/inside.txt", "old"));
  EXPECT_TRUE(has("a.txt", "new"));
  EXPECT_THAT(namesIn("there"), ElementsAre("a.txt", "folder"));
}

TEST_F(PlacingFilesContract, AMoveNeedsNoRoomOnTheDisk) {
  desktop_->writeRawFile(path("there/a.txt"), "old");
  desktop_->setDiskIsFull(true);
  EXPECT_TRUE(move("a.txt", "there/a.txt", PresentItem::IsReplaced));
  desktop_->setDiskIsFull(false);
  EXPECT_TRUE(has("there/a.txt", "new"));
}

}  // namespace
}  // namespace qb
