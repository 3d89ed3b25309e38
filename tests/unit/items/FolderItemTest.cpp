#include "Quillbox/Item/FolderItem.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/VolumeItem.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/providers/FolderContentsProvider.h"
#include "Quillbox/rows/TabRow.h"
#include "support/FolderItemFixture.h"
#include "support/MenuTitles.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const Rect cell = Rect::make(0, 0, 42, 42);

class FolderItemTest : public FolderItemFixture {
 protected:
  void keepAsRecent(const Lines& paths) {
    PropertyList list = PropertyList::array();
    for (const std::string& path : paths) list.append(path);
    quillbox->saveDictionary(PropertyList::dictionary({{"RecentlyAccessedItems", list}}),
                             "home.user.Work");
  }
  Lines recentPaths() {
    Lines paths;
    const auto saved = quillbox->loadDictionaryForKey("home.user.Work");
    if (!saved) return paths;
    for (const auto& path : saved->objectForKey("RecentlyAccessedItems").arrayValue()) {
      paths.push_back(path.stringValue());
    }
    return paths;
  }

  const std::shared_ptr<FolderItem> item = make(folder);
};

// The item.

TEST_F(FolderItemTest, IsAFolderNamedAfterItsPath) {
  EXPECT_EQ(item->type(), 4);
  EXPECT_TRUE(item->decorateable());
  EXPECT_EQ(item->name(), "Work");
  EXPECT_EQ(FolderItem::create(cell, "Mine", folder)->name(), "Mine");
}

TEST_F(FolderItemTest, AVolumeIsAFolderOfAnotherType) {
  files().mountVolume("/media/disk");
  files().putRaw("/media/disk/a.txt", "");
  const auto volume = VolumeItem::create(cell, std::string("/media/disk"));
  EXPECT_EQ(volume->type(), 3);
  EXPECT_TRUE(volume->decorateable());
  EXPECT_EQ(volume->name(), "disk");
  EXPECT_EQ(ownLines(*volume), (Lines{"-", "Open Contained Item", "-", "(Contents)", "a.txt"}));
}

TEST_F(FolderItemTest, TheRootIsAVolumeWithContents) {
  const auto volume = VolumeItem::create(cell, std::string("/"));
  EXPECT_THAT(volume->visibleContents(), ElementsAre("/home"));
}

TEST_F(FolderItemTest, BothAreRestoredByTheirInformation) {
  const auto volume = VolumeItem::create(cell, "Disk", "/media/disk");
  struct Case {
    ItemInformation information;
    std::string name, className;
    std::shared_ptr<FolderItem> saved;
  };
  const Case cases[] = {{FolderItem::information(), "Folder", "FolderItem", item},
                        {VolumeItem::information(), "Volume", "VolumeItem", volume}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(each.information.name, each.name);
    EXPECT_EQ(each.information.className, each.className);
    for (const auto& copy :
         {each.information.create(cell, each.saved->state()), each.saved->duplicate()}) {
      const auto restored = std::dynamic_pointer_cast<FolderItem>(copy);
      ASSERT_NE(restored, nullptr);
      EXPECT_EQ(restored->type(), each.saved->type());
      EXPECT_EQ(restored->name(), each.saved->name());
      EXPECT_EQ(restored->path(), each.saved->path());
    }
  }
}

TEST_F(FolderItemTest, AMissingFolderIsLookedForAmongFolders) {
  files().makeFolder("/home/user/Other");
  platform.dialogs().answerOpenPanel({"/home/user/Other"});
  item->identifyMissingRepresentedItem();
  EXPECT_EQ(item->path(), "/home/user/Other");
  EXPECT_EQ(item->name(), "Other");
  ASSERT_THAT(platform.dialogs().shownOpenPanels(), SizeIs(1));
  const auto& panel = platform.dialogs().shownOpenPanels().front();
  EXPECT_FALSE(panel.canChooseFiles);
  EXPECT_TRUE(panel.canChooseDirectories);
  EXPECT_THAT(panel.allowedFileTypes, IsEmpty());
  platform.dialogs().cancelOpenPanel();
  item->identifyMissingRepresentedItem();
  EXPECT_EQ(item->path(), "/home/user/Other");
}

// Contents.

TEST_F(FolderItemTest, HiddenFilesAreNoContents) {
  files().putRaw(folder + "/.hidden", "");
  files().putRaw(folder + "/b", "");
  files().makeFolder(folder + "/a");
  EXPECT_THAT(item->visibleContents(), ElementsAre(folder + "/a", folder + "/b"));
  EXPECT_THAT(make("/nowhere")->visibleContents(), IsEmpty());
}

TEST_F(FolderItemTest, DownloadsAreKnownByTheExactExtension) {
  struct Case {
    const char* name;
    bool isDownload;
  };
  const Case cases[] = {{"a.download", true}, {"a.crdownload", true}, {"a.part", true},
                        {"a.Part", false},    {"a.PART", false},      {"a.parts", false},
                        {"download", false},  {".download", false},   {"a.download.zip", false},
                        {"a.zip.part", true}};
  for (const Case& each : cases) {
    EXPECT_EQ(isFileBeingDownloaded(folder + '/' + each.name), each.isDownload) << each.name;
  }
}

TEST_F(FolderItemTest, OnlyTheFolderOfDownloadsHasDownloads) {
  for (const std::string& each : {folder, downloads}) {
    files().putRaw(each + "/a.part", "");
    files().putRaw(each + "/b.zip", "");
  }
  EXPECT_THAT(item->downloadingContents(), IsEmpty());
  EXPECT_THAT(item->downloadedContents(), ElementsAre(folder + "/a.part", folder + "/b.zip"));
  EXPECT_FALSE(item->isDownloadsFolder());
  const auto place = make(downloads);
  EXPECT_TRUE(place->isDownloadsFolder());
  EXPECT_THAT(place->downloadingContents(), ElementsAre(downloads + "/a.part"));
  EXPECT_THAT(place->downloadedContents(), ElementsAre(downloads + "/b.zip"));
}

// The menu.

TEST_F(FolderItemTest, ItsEntriesFollowThoseOfEveryPath) {
  fill(folder, 2);
  const auto entries = item->configureMenuItems();
  const auto base = item->FileSystemItem::configureMenuItems();
  auto titles = titlesOf(entries);
  titles.resize(base.size());
  EXPECT_EQ(titles, titlesOf(base));
  EXPECT_EQ(ownLines(*item),
            (Lines{"-", "Open all 2 Contained Items",
                   "Show all 2 Contained Items in New Tab Row...", "-", "(Contents)", "01", "02"}));
}

TEST_F(FolderItemTest, AnEmptyFolderAddsNothing) {
  files().makeFolder(folder);
  EXPECT_THAT(ownLines(*item), IsEmpty());
}

TEST_F(FolderItemTest, AFolderThatIsNotThereAddsNothing) {
  EXPECT_THAT(ownLines(*item), IsEmpty());
}

TEST_F(FolderItemTest, TheOneItemOfAFolderIsOpenedAsSuch) {
  fill(folder, 1);
  EXPECT_EQ(ownLines(*item), (Lines{"-", "Open Contained Item", "-", "(Contents)", "01"}));
}

TEST_F(FolderItemTest, TwelveEntriesFitWithoutMore) {
  fill(folder, 12);
  const auto entries = ownEntries(*item);
  ASSERT_EQ(entries.size(), 5U + 12U);
  EXPECT_EQ(entries.back()->title(), "12");
}

TEST_F(FolderItemTest, ThirtyItemsOfWhichFourAreRecentShowTwelve) {
  const Lines paths = fill(folder, 30);
  keepAsRecent({paths[29], paths[2], paths[10], paths[11]});
  EXPECT_EQ(ownLines(*item), (Lines{"-", "Open all 30 Contained Items",
                                    "Show all 30 Contained Items in New Tab Row...", "-",
                                    "(Recent Items)", "30", "03", "11", "12", "01", "02", "03",
                                    "04", "05", "06", "07", "08", "...More..."}));
}

TEST_F(FolderItemTest, ARecentItemThatIsGoneTakesNoPlace) {
  const Lines paths = fill(folder, 20);
  keepAsRecent({"/nowhere/gone", paths[0], folder + "/also gone", paths[1], paths[2], paths[3],
                paths[4], paths[5]});
  Lines lines = ownLines(*item);
  lines.erase(lines.begin(), lines.begin() + 4);
  EXPECT_EQ(lines, (Lines{"(Recent Items)", "01", "02", "03", "04", "05", "06", "01", "02", "03",
                          "04", "05", "06", "...More..."}));
}

TEST_F(FolderItemTest, AtMostSixRecentItemsShow) {
  const Lines paths = fill(folder, 8);
  keepAsRecent(paths);
  Lines lines = ownLines(*item);
  lines.erase(lines.begin(), lines.begin() + 4);
  EXPECT_EQ(lines, (Lines{"(Recent Items)", "01", "02", "03", "04", "05", "06", "01", "02", "03",
                          "04", "05", "06"}))
      << "twelve stand for eight: no more";
}

TEST_F(FolderItemTest, AnEmptyFolderStillShowsWhatWasOpenedFromIt) {
  files().makeFolder(folder);
  files().putRaw("/elsewhere/a.txt", "");
  keepAsRecent({"/elsewhere/a.txt"});
  EXPECT_EQ(ownLines(*item), (Lines{"-", "(Recent Items)", "a.txt"}));
}

TEST_F(FolderItemTest, EntriesCarryWhatTheyStandFor) {
  files().putRaw(folder + "/My%20Letter.txt", "");
  const auto entries = ownEntries(*item);
  const auto& heading = entries.at(3);
  EXPECT_EQ(heading->tag(), MenuItemTagGrayTitle);
  EXPECT_FALSE(heading->isEnabled());
  EXPECT_EQ(heading->action().name, "dummy");
  const auto& entry = entries.at(4);
  EXPECT_EQ(entry->title(), "My Letter.txt");
  EXPECT_EQ(entry->tag(), 192);
  EXPECT_EQ(entry->action().name, "openItem");
  EXPECT_EQ(entry->action().target.lock(), item);
  EXPECT_EQ(pathOfEntry(*entry), folder + "/My%20Letter.txt");
  EXPECT_FALSE(entry->state());
}

TEST_F(FolderItemTest, AnEntryShowsItsIconAsSoonAsThatIsThere) {
  platform.graphics().holdIcons(true);
  fill(folder, 1);
  const auto entry = ownEntries(*item).back();
  EXPECT_EQ(simulatedImageName(entry->image()), "generic icon");
  EXPECT_EQ(entry->image().size(), (Size{16, 16}));
  platform.graphics().deliverIcons();
  EXPECT_EQ(simulatedImageName(entry->image()), "icon:" + folder + "/01");
  EXPECT_EQ(entry->image().size(), (Size{16, 16}));
}

TEST_F(FolderItemTest, APartialFileElsewhereLooksLikeADownloadButOpensLikeAFile) {
  files().putRaw(folder + "/a.part", "");
  EXPECT_EQ(ownLines(*item), (Lines{"-", "Open Contained Item", "-", "(Contents)", "* a.part"}));
  const auto entry = ownEntries(*item).back();
  EXPECT_EQ(entry->tag(), 935);
  EXPECT_EQ(entry->action().name, "openItem");
  EXPECT_EQ(simulatedImageName(entry->image()), "Spinner");
  EXPECT_EQ(simulatedImageName(entry->onStateImage()), "DownloadingIcon");
}

// What its entries do.

TEST_F(FolderItemTest, AnEntryOpensItsFileAndBecomesTheMostRecent) {
  const Lines paths = fill(folder, 3);
  open(ActivationMethodCorner);
  choose(*item, "02");
  choose(*item, "03");
  choose(*item, "02");
  EXPECT_THAT(openedFiles(), ElementsAre(paths[1], paths[2], paths[1]));
  EXPECT_THAT(recentPaths(), ElementsAre(paths[1], paths[2]));
  platform.runFor(0.02);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateInactive);
}

TEST_F(FolderItemTest, EightItemsStayRecent) {
  const Lines paths = fill(folder, 10);
  for (const std::string& path : paths) {
    item->folderMenu().createMenuItemForContentItemAtPath(path, false)->performAction();
  }
  EXPECT_THAT(recentPaths(), ElementsAreArray({paths[9], paths[8], paths[7], paths[6], paths[5],
                                               paths[4], paths[3], paths[2]}));
}

TEST_F(FolderItemTest, EachFolderHasItsOwnRecentItems) {
  fill(folder, 1);
  fill("/home/user/Other", 1);
  const auto other = make("/home/user/Other");
  choose(*item, "01");
  EXPECT_TRUE(quillbox->loadDictionaryForKey("home.user.Work"));
  EXPECT_FALSE(quillbox->loadDictionaryForKey("home.user.Other"));
  EXPECT_EQ(ownLines(*other), (Lines{"-", "Open Contained Item", "-", "(Contents)", "01"}));
}

TEST_F(FolderItemTest, DamagedRecentItemsAreNone) {
  fill(folder, 1);
  const PropertyList damaged[] = {
      PropertyList::dictionary({{"RecentlyAccessedItems", "text"}}),
      PropertyList::dictionary(
          {{"RecentlyAccessedItems", PropertyList::Array{1, PropertyList::Array{"a"}}}}),
      PropertyList::dictionary({{"Other", PropertyList::Array{folder + "/01"}}})};
  for (const PropertyList& each : damaged) {
    quillbox->saveDictionary(each, "home.user.Work");
    EXPECT_EQ(ownLines(*item), (Lines{"-", "Open Contained Item", "-", "(Contents)", "01"}));
  }
}

TEST_F(FolderItemTest, UpToEightItemsOpenWithoutAQuestion) {
  const Lines paths = fill(folder, 8);
  open(ActivationMethodCorner);
  choose(*item, "Open all 8 Contained Items");
  EXPECT_EQ(openedFiles(), paths);
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
  platform.runFor(1);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateActive) << "the panel stays";
}

TEST_F(FolderItemTest, MoreThanEightItemsOpenOnlyWhenConfirmed) {
  const Lines paths = fill(folder, 9);
  platform.dialogs().answerAlert("Cancel");
  choose(*item, "Open all 9 Contained Items");
  EXPECT_THAT(openedFiles(), IsEmpty());
  platform.dialogs().answerAlert("Open Items");
  choose(*item, "Open all 9 Contained Items");
  EXPECT_EQ(openedFiles(), paths);
  const auto& alert = platform.dialogs().shownAlerts().back();
  EXPECT_EQ(alert.messageText, "Open All Items?");
  EXPECT_EQ(alert.informativeText,
            "There are 9 items in the Work folder.  Do you wish to open them all?");
  EXPECT_THAT(alert.buttons, ElementsAre("Cancel", "Open Items"));
}

TEST_F(FolderItemTest, TheFolderCanHaveARowBelowTheItemsOwn) {
  fill(folder, 2);
  constexpr const char* title = "Show all 2 Contained Items in New Tab Row...";
  EXPECT_EQ(entryOf(*item, title)->tag(), 15982);
  choose(*item, title);
  EXPECT_THAT(host().tabRows(), SizeIs(1)) << "the item is in none";
  open(ActivationMethodCorner);
  platform.runFor(1);
  item->setTabRow(host().tabRows().front());
  choose(*item, title);
  ASSERT_THAT(host().tabRows(), SizeIs(2));
  const auto provider =
      std::dynamic_pointer_cast<FolderContentsProvider>(host().tabRows().back()->provider());
  ASSERT_NE(provider, nullptr);
  EXPECT_EQ(provider->folderPath(), folder);
}

TEST_F(FolderItemTest, AVeryLargeFolderHasAMenuAsSmallAsAnyOther) {
  for (int number = 0; number < 1000; ++number) {
    files().putRaw(folder + '/' + std::to_string(number), "");
  }
  EXPECT_EQ(ownEntries(*item).size(), 5U + 12U + 1U);
}

}  // namespace
}  // namespace qb::test
