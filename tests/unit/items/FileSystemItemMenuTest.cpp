#include <gmock/gmock.h>

#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/managers/DropboxManager.h"
#include "support/HotKeysFixture.h"
#include "support/MenuTitles.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const Rect cell = Rect::make(0, 0, 42, 42);
const std::string path = "/home/user/Notes.txt";

/// As its subclasses are: some can be decorated.
class DecorateableItem : public FileSystemItem {
 public:
  DecorateableItem() : FileSystemItem(cell, "Notes", "/home/user/Notes.txt") {}
  bool decorateable() const override { return true; }
};

class FileSystemItemMenuTest : public HotKeysFixture {
 protected:
  FileSystemItemMenuTest() { platform.fileSystem().putRaw(path, "text"); }

  std::vector<std::string> titles(const std::string& itemPath) {
    return titlesOf(FileSystemItem::create(cell, itemPath)->configureMenuItems());
  }
  void choose(Item& item, const std::string& title) {
    for (const auto& entry : item.configureMenuItems()) {
      if (entry->title() == title) return entry->performAction();
    }
    FAIL() << title << " is not in the menu";
  }
};

TEST_F(FileSystemItemMenuTest, AFileCanBeShownLookedAtAndGivenAHotKey) {
  EXPECT_THAT(titles(path), ElementsAre("Show in Finder...", "Get Info in Finder...", "-",
                                        "Preview", "-", "Set Hot Key..."));
}

TEST_F(FileSystemItemMenuTest, NobodyLooksIntoFoldersAndApplications) {
  platform.fileSystem().makeFolder("/work/folder");
  platform.fileSystem().putRaw("/work/Editor.desktop", "");
  for (const char* each : {"/work/folder", "/work/Editor.desktop"}) {
    EXPECT_THAT(titles(each),
                ElementsAre("Show in Finder...", "Get Info in Finder...", "-", "Set Hot Key..."));
  }
}

TEST_F(FileSystemItemMenuTest, APackageIsLookedInto) {
  platform.fileSystem().makeFolder("/work/letter.rtfd");
  EXPECT_THAT(titles("/work/letter.rtfd"), ElementsAre("Show in Finder...", "Get Info in Finder...",
                                                       "-", "Preview", "-", "Set Hot Key..."));
}

TEST_F(FileSystemItemMenuTest, AnItemMayAllowMore) {
  const auto item = std::make_shared<DecorateableItem>();
  item->setRemovable(true);
  item->setTrashable(true);
  const auto entries = item->configureMenuItems();
  EXPECT_THAT(
      titlesOf(entries),
      ElementsAre("Show in Finder...", "Get Info in Finder...", "-", "Preview", "-",
                  "Set Hot Key...", "Remove from Tab Row....", "Move to Trash...", "Decorate"));
  EXPECT_EQ(entries.back()->tag(), MenuItemTagDecorate);
}

TEST_F(FileSystemItemMenuTest, AllEntriesAreEnabledAndTheItems) {
  const auto item = std::make_shared<DecorateableItem>();
  item->setRemovable(true);
  item->setTrashable(true);
  std::vector<std::string> actions;
  for (const auto& entry : item->configureMenuItems()) {
    if (entry->isSeparatorItem()) continue;
    EXPECT_TRUE(entry->isEnabled()) << entry->title();
    EXPECT_EQ(entry->action().target.lock(), item) << entry->title();
    actions.push_back(entry->action().name);
  }
  EXPECT_THAT(actions, ElementsAre("revealItemInFinder", "getInfoInFinder", "previewItem",
                                   "setHotKeySelected", "removeItemFromTabRowSelected",
                                   "moveToTrash", "decorate"));
}

TEST_F(FileSystemItemMenuTest, TheFileManagerItselfHasTheGeneralEntriesAlone) {
  platform.fileSystem().putRaw("/usr/share/applications/files.desktop", "");
  platform.workspace().install(
      {"com.apple.finder", "Files", "/usr/share/applications/files.desktop"});
  const auto item =
      ApplicationItem::create(cell, std::string("/usr/share/applications/files.desktop"));
  EXPECT_THAT(titlesOf(item->configureMenuItems()), ElementsAre("Set Hot Key..."));
}

TEST_F(FileSystemItemMenuTest, AnyOtherApplicationCanBeShown) {
  platform.fileSystem().putRaw("/work/Editor.desktop", "");
  platform.workspace().install({"org.editor", "Editor", "/work/Editor.desktop"});
  const auto item = ApplicationItem::create(cell, std::string("/work/Editor.desktop"));
  EXPECT_THAT(titlesOf(item->configureMenuItems()),
              ElementsAre("Show in Finder...", "Get Info in Finder...", "-", "Set Hot Key..."));
}

TEST_F(FileSystemItemMenuTest, AProgramWithoutAnEntryIsAnApplicationToo) {
  platform.fileSystem().putRaw("/usr/bin/tool", "");
  const auto item = ApplicationItem::create(cell, std::string("/usr/bin/tool"));
  EXPECT_TRUE(item->representsApplication());
  EXPECT_THAT(titlesOf(item->configureMenuItems()),
              ElementsAre("Show in Finder...", "Get Info in Finder...", "-", "Set Hot Key..."));
}

TEST_F(FileSystemItemMenuTest, ShowingItSelectsTheFileAndDismissesThePanel) {
  const auto item = FileSystemItem::create(cell, path);
  open(ActivationMethodCorner);
  choose(*item, "Show in Finder...");
  EXPECT_THAT(platform.fileViewer().selectedFiles(), ElementsAre(path));
  platform.runFor(0.02);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
}

TEST_F(FileSystemItemMenuTest, TheInformationComesWhenThePanelHasGone) {
  const auto item = FileSystemItem::create(cell, path);
  open(ActivationMethodCorner);
  choose(*item, "Get Info in Finder...");
  platform.runFor(0.02);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
  platform.runFor(0.07);
  EXPECT_THAT(platform.fileViewer().informationWindows(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(platform.fileViewer().informationWindows(), ElementsAre(path));
}

TEST_F(FileSystemItemMenuTest, ThePreviewIsTheQuickLook) {
  const auto item = FileSystemItem::create(cell, path);
  choose(*item, "Preview");
  platform.runFor(0.26);
  EXPECT_THAT(platform.fileViewer().previewedFiles(), ElementsAre(path));
}

TEST_F(FileSystemItemMenuTest, TheTrashIsTheRowsBusiness) {
  const auto item = FileSystemItem::create(cell, path);
  item->setTrashable(true);
  item->setTabRow(host().tabRows().front());
  provider->log.clear();
  choose(*item, "Move to Trash...");
  EXPECT_EQ(countOf(provider->log, "moveItemToTrash Notes"), 1);
}

TEST_F(FileSystemItemMenuTest, AnItemOfNoRowGoesToNoTrash) {
  const auto item = FileSystemItem::create(cell, path);
  item->setTrashable(true);
  choose(*item, "Move to Trash...");
  EXPECT_TRUE(item->exists());
}

/// An item of a path, of any type.
class TypedItem : public FileSystemItem {
 public:
  TypedItem(const std::string& itemPath, std::int32_t type)
      : FileSystemItem(cell, "Notes", itemPath), type_(type) {}
  std::int32_t type() const override { return type_; }

 private:
  std::int32_t type_;
};

class MoveToDropboxTest : public FileSystemItemMenuTest {
 protected:
  MoveToDropboxTest() { quillbox->dropboxManager().setDropboxFolderPath(dropbox); }
  static std::vector<std::string> titlesFor(const std::string& itemPath,
                                            std::int32_t type = ItemTypeFile) {
    return titlesOf(std::make_shared<TypedItem>(itemPath, type)->configureMenuItems());
  }

  const std::string dropbox = "/home/user/Dropbox";
};

TEST_F(MoveToDropboxTest, StandsBeforeThePreview) {
  EXPECT_THAT(titlesFor(path), ElementsAre("Show in Finder...", "Get Info in Finder...", "-",
                                           "Move to Dropbox", "Preview", "-", "Set Hot Key..."));
}

TEST_F(MoveToDropboxTest, FilesAndFoldersHaveItAndNothingElse) {
  for (std::int32_t type = ItemTypeGeneric; type <= ItemTypeDragAndDropPlaceholder; ++type) {
    const bool has = type == ItemTypeFile || type == ItemTypeFolder;
    const auto found = titlesFor(path, type);
    EXPECT_EQ(std::count(found.begin(), found.end(), "Move to Dropbox"), has ? 1 : 0) << type;
  }
}

TEST_F(MoveToDropboxTest, WhatIsThereAlreadyHasItNot) {
  for (const std::string& there : {dropbox, dropbox + "/Notes.txt"}) {
    EXPECT_THAT(titlesFor(there), Not(Contains("Move to Dropbox"))) << there;
  }
  // Further down it is not there.
  EXPECT_THAT(titlesFor(dropbox + "/folder/Notes.txt"), Contains("Move to Dropbox"));
  EXPECT_THAT(titlesFor(dropbox + "es/Notes.txt"), Contains("Move to Dropbox"));
}

TEST_F(MoveToDropboxTest, WithoutAFolderNothingHasIt) {
  quillbox->dropboxManager().setDropboxFolderPath("");
  for (const char* each : {path.c_str(), "Notes.txt", ""}) {
    EXPECT_THAT(titlesFor(each), Not(Contains("Move to Dropbox"))) << each;
  }
}

TEST_F(MoveToDropboxTest, KnowsWhereItIs) {
  const TypedItem inside(dropbox + "/Notes.txt", ItemTypeFile), outside(path, ItemTypeFile);
  const TypedItem itself(dropbox, ItemTypeFolder);
  EXPECT_TRUE(inside.isInDropboxFolder());
  EXPECT_FALSE(inside.isDropboxFolder());
  EXPECT_FALSE(outside.isInDropboxFolder());
  EXPECT_TRUE(itself.isDropboxFolder());
  EXPECT_FALSE(itself.isInDropboxFolder());
}

TEST_F(MoveToDropboxTest, TheMoveIsTheRowsBusiness) {
  const auto item = std::make_shared<TypedItem>(path, ItemTypeFile);
  item->setTabRow(host().tabRows().front());
  provider->log.clear();
  choose(*item, "Move to Dropbox");
  EXPECT_EQ(countOf(provider->log, "moveItem Notes to " + dropbox), 1);
}

TEST_F(MoveToDropboxTest, AFolderMovesAsAWholeToo) {
  platform.fileSystem().makeFolder("/work/folder");
  const auto item = FolderItem::create(cell, std::string("/work/folder"));
  item->setTabRow(host().tabRows().front());
  provider->log.clear();
  choose(*item, "Move to Dropbox");
  EXPECT_EQ(countOf(provider->log, "moveItem folder to " + dropbox), 1);
}

TEST_F(MoveToDropboxTest, AnItemOfNoRowStays) {
  const auto item = std::make_shared<TypedItem>(path, ItemTypeFile);
  choose(*item, "Move to Dropbox");
  EXPECT_TRUE(item->exists());
}

}  // namespace
}  // namespace qb::test
