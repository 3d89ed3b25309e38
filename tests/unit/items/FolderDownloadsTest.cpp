#include <gmock/gmock.h>

#include <cmath>

#include "Quillbox/Item/folder/Downloads.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "support/FolderItemFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* namesFile = "/home/user/Library/Preferences/com.vorlane.quillbox.downloads";

/// The user's folder of downloads.
class FolderDownloadsTest : public FolderItemFixture {
 protected:
  FolderDownloadsTest() { files().makeFolder(downloads); }

  std::string at(const std::string& name) { return downloads + '/' + name; }
  void put(const std::string& name) { files().putRaw(at(name), "contents"); }
  /// A download that keeps what has come in a folder of its own.
  std::string putPackage(const std::string& name, std::size_t bytes, const PropertyList& total) {
    files().putRaw(at(name) + "/work", std::string(bytes, 'x'));
    files().putPropertyList(
        at(name) + "/Info.plist",
        PropertyList::dictionary({{"DownloadEntryProgressTotalToLoad", total}}));
    return at(name);
  }
  double progress(const std::string& path) {
    return Downloads().downloadProgressPercentForItemAtPath(path);
  }
  /// What has been looked at before is nothing new.
  void lookOnce() { item->configureMenuItems(); }
  Lines recent() {
    Lines titles;
    bool isRecent = false;
    for (const auto& entry : ownEntries(*item)) {
      if (isRecent && entry->isSeparatorItem()) break;
      if (isRecent) titles.push_back(entry->title());
      if (entry->title() == "Recent Items") isRecent = true;
    }
    return titles;
  }

  const std::shared_ptr<FolderItem> item = make(downloads);
};

// The menu.

TEST_F(FolderDownloadsTest, AnEmptyFolderOffersTheSavedOnes) {
  EXPECT_EQ(ownLines(*item), (Lines{"Open Saved Downloads Folder..."}));
}

TEST_F(FolderDownloadsTest, TheWholeMenu) {
  for (const char* name : {"a.zip", "b.zip", "c.zip.crdownload", "d.iso.part"}) put(name);
  putPackage("e.dmg.download", 50, 200);
  EXPECT_EQ(ownLines(*item),
            (Lines{"Open Saved Downloads Folder...", "Move Downloaded Items to Trash... >",
                   "Move Downloaded Items to Saved Downloads Folder...", "-",
                   "Open all 2 Contained Items", "Show all 2 Contained Items in New Tab Row...",
                   "-", "(Active Downloads)", "* c.zip.crdownload", "* d.iso.part", "* e.dmg", "-",
                   "(Recent Items)", "b.zip", "a.zip", "a.zip", "b.zip"}));
}

TEST_F(FolderDownloadsTest, DownloadsAloneAreNoContents) {
  put("a.part");
  EXPECT_EQ(ownLines(*item),
            (Lines{"Open Saved Downloads Folder...", "-", "(Active Downloads)", "* a.part"}));
}

TEST_F(FolderDownloadsTest, ADownloadIsShownWhereItIs) {
  put("a.part");
  const auto entry = entryOf(*item, "a.part");
  EXPECT_EQ(entry->tag(), 935);
  EXPECT_EQ(simulatedImageName(entry->image()), "Spinner");
  EXPECT_EQ(simulatedImageName(entry->onStateImage()), "DownloadingIcon");
  open(ActivationMethodCorner);
  choose(*item, "a.part");
  EXPECT_THAT(platform.fileViewer().selectedFiles(), ElementsAre(at("a.part")));
  EXPECT_THAT(openedFiles(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateInactive);
}

TEST_F(FolderDownloadsTest, EntriesForAllOfThemCarryThem) {
  put("a.zip");
  put("b.part");
  const auto trash = entryOf(*item, "Move Downloaded Items to Trash...");
  EXPECT_EQ(trash->tag(), 7348);
  for (const auto& entry :
       {trash, entryOf(*item, "Move Downloaded Items to Saved Downloads Folder...")}) {
    const auto* const paths = std::any_cast<Lines>(&entry->representedObject());
    ASSERT_NE(paths, nullptr) << entry->title();
    EXPECT_THAT(*paths, ElementsAre(at("a.zip")));
  }
}

// What has newly come.

TEST_F(FolderDownloadsTest, AtTheFirstLookEverythingIsNew) {
  for (int number = 0; number < 10; ++number) put("file " + std::to_string(number));
  EXPECT_EQ(recent(), (Lines{"file 9", "file 8", "file 7", "file 6", "file 5", "file 4", "file 0",
                             "file 1", "file 2", "file 3", "file 4", "file 5"}));
}

TEST_F(FolderDownloadsTest, AFinishedDownloadIsRecentAtTheNextLook) {
  put("a.zip");
  lookOnce();
  quillbox->deleteDictionaryForKey("home.user.Downloads");
  put("b.zip.part");
  EXPECT_THAT(recent(), IsEmpty()) << "it is on its way";
  files().removeItemAtPath(at("b.zip.part"));
  put("b.zip");
  EXPECT_EQ(recent().front(), "b.zip");
  EXPECT_EQ(recent().front(), "b.zip") << "and stays so";
}

TEST_F(FolderDownloadsTest, TheNamesOfTheLastLookAreKept) {
  put("a.zip");
  put("b.part");
  put(".hidden");
  lookOnce();
  EXPECT_EQ(files().propertyList(namesFile), (PropertyList::Array{"a.zip", "b.part"}));
}

TEST_F(FolderDownloadsTest, NothingIsWrittenWhereNothingHasChanged) {
  for (int number = 0; number < 100; ++number) put(std::to_string(number));
  lookOnce();
  const int writes = files().numberOfWrites();
  EXPECT_EQ(writes - files().numberOfWrites(namesFile),
            files().numberOfWrites(quillbox->savedDictionaryPathWithKey("home.user.Downloads")))
      << "nothing else is written";
  EXPECT_EQ(files().numberOfWrites(namesFile), 1);
  lookOnce();
  EXPECT_EQ(files().numberOfWrites(), writes);
}

TEST_F(FolderDownloadsTest, AnyOtherFolderLeavesTheNamesAlone) {
  fill(folder, 2);
  make(folder)->configureMenuItems();
  EXPECT_FALSE(files().propertyList(namesFile));
}

// How far a download has come.

TEST_F(FolderDownloadsTest, ProgressIsWhatHasComeOfTheWhole) {
  EXPECT_EQ(progress(putPackage("a.download", 50, 200)), 0.25);
  EXPECT_EQ(progress(putPackage("b.download", 0, 200)), 0);
  EXPECT_EQ(progress(putPackage("c.download", 300, 200)), 1.5);
  EXPECT_EQ(progress(putPackage("d.download", 50, "100")), 0.5) << "a number in words";
}

TEST_F(FolderDownloadsTest, OfOtherFilesProgressCannotBeTold) {
  for (const char* name : {"a.part", "a.crdownload", "a.zip"}) {
    put(name);
    EXPECT_EQ(progress(at(name)), -1) << name;
  }
}

TEST_F(FolderDownloadsTest, WhatTellsNothingOfItsSizeGivesNoFraction) {
  EXPECT_TRUE(std::isinf(progress(putPackage("a.download", 50, 0))));
  EXPECT_TRUE(std::isnan(progress(putPackage("b.download", 0, 0))));
  files().putRaw(at("c.download/work"), "12345");
  files().putRaw(at("c.download/Info.plist"), "<plist><dict>");
  EXPECT_TRUE(std::isinf(progress(at("c.download")))) << "a damaged list";
  put("d.download");
  EXPECT_TRUE(std::isnan(progress(at("d.download")))) << "a file is no package";
  EXPECT_TRUE(std::isnan(progress(at("missing.download"))));
}

TEST_F(FolderDownloadsTest, TheLastOfSeveralFilesCounts) {
  putPackage("a.download", 50, 200);
  files().putRaw(at("a.download/zz"), std::string(100, 'x'));
  files().putPropertyList(at("a.download/Other.plist"),
                          PropertyList::dictionary({{"DownloadEntryProgressTotalToLoad", 400}}));
  EXPECT_EQ(progress(at("a.download")), 0.25);
}

TEST_F(FolderDownloadsTest, TheSizeIsLookedUpOnceAndTheRestEachTime) {
  const std::string path = putPackage("a.download", 50, 200);
  Downloads known;
  EXPECT_EQ(known.downloadProgressPercentForItemAtPath(path), 0.25);
  putPackage("a.download", 100, 1000);
  EXPECT_EQ(known.downloadProgressPercentForItemAtPath(path), 0.5);
}

struct PieCase {
  std::size_t bytes;
  int total;
  double sweep;
};

TEST_F(FolderDownloadsTest, ThePieFillsClockwiseFromTheTop) {
  const PieCase cases[] = {{0, 200, 0},     {50, 200, 90}, {200, 200, 360},
                           {300, 200, 360}, {50, 0, 0},    {0, 0, 0}};
  for (const PieCase& each : cases) {
    SCOPED_TRACE(testing::Message() << each.bytes << " of " << each.total);
    const Image image =
        Downloads().downloadImageForItemAtPath(putPackage("a.download", each.bytes, each.total));
    EXPECT_EQ(image.size(), (Size{16, 16}));
    const auto drawn = simulatedImageOperations(image);
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[0].kind, DrawOperation::Kind::FillPath);
    EXPECT_EQ(drawn[0].color, Color::colorWithCalibratedRed(1, 0.5, 0, 0.8));
    Path slice;
    slice.moveTo({8, 8});
    slice.arc({8, 8}, 7, -90, each.sweep);
    slice.close();
    EXPECT_EQ(drawn[0].path, slice);
    EXPECT_EQ(drawn[1].kind, DrawOperation::Kind::StrokePath);
  }
}

TEST_F(FolderDownloadsTest, ASizeBelowNothingSpins) {
  const Image image = Downloads().downloadImageForItemAtPath(putPackage("a.download", 50, -200));
  EXPECT_EQ(simulatedImageName(image), "Spinner");
}

// Live, while the menu is open.

TEST_F(FolderDownloadsTest, PiesGrowAtMostFourTimesASecond) {
  const std::string path = putPackage("a.dmg.download", 50, 200);
  openMenu(item, [&](SimulatedMenuUser& user) {
    const auto entry = user.menu()->itemWithTitle("a.dmg");
    user.rest(0.15);
    const Image first = entry->image();
    putPackage("a.dmg.download", 100, 200);
    user.rest(0.1);
    EXPECT_EQ(entry->image(), first);
    user.rest(0.2);
    const auto drawn = simulatedImageOperations(entry->image());
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[0].path.elements().at(1).sweepAngle, 180);
    EXPECT_TRUE(entry->state());
    user.escape();
  });
}

TEST_F(FolderDownloadsTest, AnEndedDownloadBecomesItsFile) {
  put("a.zip.part");
  openMenu(item, [&](SimulatedMenuUser& user) {
    const auto entry = user.menu()->itemWithTitle("a.zip.part");
    files().removeItemAtPath(at("a.zip.part"));
    put("a.zip");
    user.rest(0.35);
    EXPECT_EQ(entry->title(), "a.zip");
    EXPECT_EQ(entry->tag(), 192);
    EXPECT_EQ(pathOfEntry(*entry), at("a.zip"));
    EXPECT_FALSE(entry->state());
    EXPECT_EQ(simulatedImageName(entry->image()), "icon:" + at("a.zip"));
    user.escape();
  });
}

// Behind the entries.

TEST_F(FolderDownloadsTest, AFileHasItsCommands) {
  put("a.txt");
  EXPECT_EQ(linesOf(*item->folderMenu().menuForFile(at("a.txt"))),
            (Lines{"Move to Trash...", "Move to Saved Downloads...", "Show in Finder...",
                   "Share via Email..."}));
}

TEST_F(FolderDownloadsTest, AFolderHasItsCommandsAndNothingElse) {
  files().putRaw(at("folder/a.txt"), "");
  files().putRaw(at("Editor.app/a.txt"), "");
  const auto linesFor = [&](const char* name) {
    return linesOf(*item->folderMenu().menuForFolder(at(name), FolderMenuOptionEntryOfMenu));
  };
  EXPECT_EQ(linesFor("folder"), (Lines{"Move to Trash...", "Move to Saved Downloads..."}));
  EXPECT_EQ(linesFor("Editor.app"),
            (Lines{"Move to Trash...", "Move to Saved Downloads...", "Move to Applications..."}));
}

}  // namespace
}  // namespace qb::test
