#include "Quillbox/providers/FolderContentsProvider.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "QuillboxCommon/views/LabelView.h"
#include "support/FolderContentsFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FolderContentsProviderTest : public FolderContentsFixture {
 protected:
  std::string message() const {
    const LabelView* const label = row->instructionalMessageLabel();
    return label ? label->text() : "none";
  }
  /// Drops files, and with them something else.
  bool drop(std::int32_t mask, const std::vector<std::string>& paths) {
    std::vector<std::shared_ptr<DragItem>> dropped{std::make_shared<DragItem>()};
    for (const std::string& path : paths) {
      dropped.push_back(
          std::make_shared<DragItem>(DragItem{DragTypeFileURL, {{DragContentsFileURL, path}}}));
    }
    return contents->receiveDragOperation(TestDrag(DragTypeFileURL, mask), dropped, 0);
  }
};

TEST_F(FolderContentsProviderTest, AnswersForItself) {
  EXPECT_EQ(contents->name(), "Folder Contents");
  EXPECT_EQ(contents->className(), "FolderContentsProvider");
  EXPECT_TRUE(contents->canBeConfigured());
  EXPECT_FALSE(contents->wantsInvocationTabEvent());
  EXPECT_TRUE(contents->shouldHiliteTabRowOnDragEnter());
  EXPECT_TRUE(contents->shouldAddOpenFolderInFinderButton());
  EXPECT_FALSE(contents->haveItemsChanged());
  showFolder();
  EXPECT_EQ(contents->name(), "Work Folder");
}

TEST_F(FolderContentsProviderTest, AnEmptyPathIsNone) {
  showFolder();
  showFolder("");
  EXPECT_EQ(contents->name(), "Folder Contents");
  EXPECT_THAT(contents->filesAndFolders(), IsEmpty());
  EXPECT_EQ(contents->numberOfItems(), 12);
}

TEST_F(FolderContentsProviderTest, ListsWhatIsInTheFolderFromTheLastNameToTheFirst) {
  put("b.desktop");
  put("C.desktop");
  files().makeFolder(pathOf("apples"));
  showFolder();
  EXPECT_EQ(entryNames(), (Names{"C.desktop", "b.desktop", "apples"}));
  EXPECT_EQ(contents->numberOfItems(), 4);
}

TEST_F(FolderContentsProviderTest, EntriesKnowWhatTheyAre) {
  put("a.txt", "12345");
  files().setCreationDate(pathOf("a.txt"), 100);
  files().setModificationDate(pathOf("a.txt"), 200);
  showFolder();
  ASSERT_THAT(contents->filesAndFolders(), SizeIs(1));
  const FileOrFolder& entry = *contents->filesAndFolders()[0];
  EXPECT_EQ(entry.name, "a.txt");
  EXPECT_EQ(entry.fullPath, pathOf("a.txt"));
  EXPECT_TRUE(entry.isFile);
  EXPECT_FALSE(entry.isFolder);
  EXPECT_EQ(entry.size, 5U);
  EXPECT_EQ(entry.creationDate, 100);
  EXPECT_EQ(entry.modificationDate, 200);
}

TEST_F(FolderContentsProviderTest, PackagesAreFoldersAndLinksAreFiles) {
  files().makeFolder(pathOf("letter.rtfd"));
  files().putLink(pathOf("link"), "/home");
  showFolder();
  ASSERT_EQ(entryNames(), (Names{"link", "letter.rtfd"}));
  const auto& entries = contents->filesAndFolders();
  EXPECT_TRUE(entries[0]->isFile);
  EXPECT_TRUE(entries[1]->isFolder);
  EXPECT_EQ(entries[1]->size, 0U);
}

TEST_F(FolderContentsProviderTest, HiddenFilesAndTheFileOfAnIconAreLeftOut) {
  for (const char* name : {".hidden", "Icon\r", "Icon", "a.b"}) put(name);
  showFolder();
  EXPECT_EQ(entryNames(), (Names{"Icon", "a.b"}));
}

TEST_F(FolderContentsProviderTest, NamesOfAnyBytesAreTakenAsTheyAre) {
  put("odd \xff\n\x01.desktop");
  put("\xe2\x82.desktop");
  showFolder();
  EXPECT_EQ(itemNames(),
            (Names{"\xe2\x82.desktop", "odd \xff\n\x01.desktop", "Open Work in Finder..."}));
}

TEST_F(FolderContentsProviderTest, TheRootHasOneSlash) {
  showFolder("/");
  EXPECT_EQ(entryNames(), (Names{"usr", "home", "Applications"}));
  EXPECT_EQ(contents->filesAndFolders()[1]->fullPath, "/home");
}

TEST_F(FolderContentsProviderTest, ApplicationsHaveTheNamesThatTheirUsersKnow) {
  put("org.calc.desktop");
  put("unknown.desktop");
  platform.workspace().install({.bundleIdentifier = "org.calc",
                                .name = "Calculator",
                                .bundlePath = pathOf("org.calc.desktop")});
  showFolder();
  EXPECT_EQ(itemNames(), (Names{"unknown.desktop", "Calculator", "Open Work in Finder..."}));
}

TEST_F(FolderContentsProviderTest, ItemsStandForTheEntries) {
  put("a.desktop");
  showFolder();
  EXPECT_EQ(itemNames(), (Names{"a.desktop", "Open Work in Finder..."}));
  const auto& item = dynamic_cast<const FileSystemItem&>(*contents->items()[0]);
  EXPECT_EQ(item.path(), pathOf("a.desktop"));
  EXPECT_EQ(item.view()->frame(), Rect::make(0, 0, 42, 42));
  EXPECT_EQ(std::any_cast<std::shared_ptr<FileOrFolder>>(item.representedObject()),
            contents->filesAndFolders()[0]);
  EXPECT_FALSE(item.isRemovable());
  EXPECT_TRUE(item.isTrashable());
  EXPECT_EQ(item.dragability(), 2);
}

TEST_F(FolderContentsProviderTest, WhatHasGoneSinceTheReadingGetsNoItem) {
  put("a.desktop");
  put("b.desktop");
  showFolder();
  files().removeItemAtPath(pathOf("b.desktop"));
  EXPECT_EQ(itemNames(), (Names{"a.desktop", "Open Work in Finder..."}));
}

TEST_F(FolderContentsProviderTest, ALinkToNothingIsListedButGetsNoItem) {
  files().putLink(pathOf("link"), "/none");
  showFolder();
  EXPECT_EQ(entryNames(), (Names{"link"}));
  EXPECT_EQ(itemNames(), (Names{"Open Work in Finder..."}));
}

TEST_F(FolderContentsProviderTest, TheLastButtonShowsTheFolderInTheFileManager) {
  showFolder();
  open(ActivationMethodCommandDoubleTap);
  pressButton("Open Work in Finder...");
  EXPECT_THAT(platform.fileViewer().selectedFiles(), ElementsAre(folder));
  platform.runFor(0.1);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
}

TEST_F(FolderContentsProviderTest, AFolderWithHiddenFilesOnlyIsCalledEmpty) {
  put(".hidden");
  showFolder();
  showInRow();
  EXPECT_EQ(message(), "Work Folder is Empty.");
  EXPECT_EQ(rowNames(), (Names{"Open Work in Finder..."}));
}

TEST_F(FolderContentsProviderTest, AFolderThatCannotBeReadIsCalledEmpty) {
  showFolder("/none/there");
  showInRow();
  EXPECT_EQ(message(), "there Folder is Empty.");
}

TEST_F(FolderContentsProviderTest, TheMessageGoesWhenSomethingComes) {
  showFolder();
  showInRow();
  put("a.desktop");
  contents->numberOfItems();
  EXPECT_EQ(message(), "none");
}

TEST_F(FolderContentsProviderTest, TheRowIsNamedAfterTheFolder) {
  showInRow();
  showFolder();
  EXPECT_EQ(row->providerSelector().nameLabel().text(), "Work Folder");
}

TEST_F(FolderContentsProviderTest, TheStateIsTheFolderAndItsOrder) {
  EXPECT_EQ(contents->state(),
            PropertyList::dictionary(
                {{"FolderPathKey", ""}, {"SortBy", 0}, {"SortOrder", 1}, {"SegregateBy", 0}}));
  put("small", "1");
  put("large", "12");
  files().makeFolder(pathOf("folder"));
  const PropertyList state = PropertyList::dictionary(
      {{"FolderPathKey", folder}, {"SortBy", 1}, {"SortOrder", -1}, {"SegregateBy", 2}});
  contents->restoreState(state);
  EXPECT_EQ(contents->folderPath(), folder);
  EXPECT_EQ(entryNames(), (Names{"folder", "small", "large"}));
  EXPECT_EQ(contents->state(), state);
}

TEST_F(FolderContentsProviderTest, WhatTheStateDoesNotTellStays) {
  showFolder();
  contents->restoreState(PropertyList::dictionary({{"SortBy", 3}}));
  EXPECT_EQ(contents->folderPath(), folder);
  EXPECT_EQ(contents->order().sortMethod, FolderSortByModificationDate);
  EXPECT_EQ(contents->order().sortOrder, 1);
}

TEST_F(FolderContentsProviderTest, AFolderOfAnotherUserIsThisUsersOwn) {
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", "/Users/old/Downloads"}}));
  EXPECT_EQ(contents->folderPath(), "/home/user/Downloads");
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", "/Users/old/Letters"}}));
  EXPECT_EQ(contents->folderPath(), "/Users/old/Letters");
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", ""}}));
  EXPECT_EQ(contents->folderPath(), "");
}

TEST_F(FolderContentsProviderTest, FilesCanBeDroppedOnIt) {
  const TestDrag drag(0);
  EXPECT_TRUE(contents->canReceiveDragOperation(drag, DragTypeFileURL));
  EXPECT_TRUE(contents->canReceiveDragOperation(drag, DragTypeFileURL | DragTypeText));
  EXPECT_FALSE(contents->canReceiveDragOperation(drag, DragTypeText));
}

TEST_F(FolderContentsProviderTest, DroppedFilesAreMovedToTheFolder) {
  showFolder();
  files().putRaw("/home/user/a.txt", "x");
  files().putRaw("/home/user/b.txt", "x");
  EXPECT_FALSE(drop(DragOperationEvery, {"/home/user/a.txt", "/home/user/b.txt"}));
  platform.runFor(0.099);
  EXPECT_THAT(contents->filesAndFolders(), IsEmpty());
  platform.runFor(0.3);
  EXPECT_EQ(entryNames(), (Names{"b.txt", "a.txt"}));
  EXPECT_FALSE(files().fileExistsAtPath("/home/user/a.txt"));
}

TEST_F(FolderContentsProviderTest, FilesThatMayOnlyBeCopiedAre) {
  showFolder();
  files().putRaw("/home/user/a.txt", "x");
  EXPECT_FALSE(drop(DragOperationCopy, {"/home/user/a.txt"}));
  platform.runFor(0.4);
  EXPECT_EQ(entryNames(), (Names{"a.txt"}));
  EXPECT_TRUE(files().fileExistsAtPath("/home/user/a.txt"));
}

TEST_F(FolderContentsProviderTest, WithoutAFolderADropGoesNowhere) {
  files().putRaw("/home/user/a.txt", "x");
  EXPECT_FALSE(drop(DragOperationEvery, {"/home/user/a.txt"}));
  platform.runFor(0.4);
  EXPECT_TRUE(files().fileExistsAtPath("/home/user/a.txt"));
}

// The chooser.

TEST_F(FolderContentsProviderTest, WithoutAFolderItOffersThoseThatEveryUserHas) {
  EXPECT_EQ(contents->numberOfItems(), 12);
  EXPECT_EQ(itemNames(),
            (Names{"user", "applications", "Documents", "Desktop", "Downloads", "Videos", "Music",
                   "Pictures", "Public", "Utilities", "Library", "Choose Folder..."}));
  for (const auto& item : contents->items()) EXPECT_EQ(item->type(), ItemTypeButton);
}

TEST_F(FolderContentsProviderTest, TheButtonsHaveTheIconsOfTheirFolders) {
  itemNames();
  const auto image = [this] {
    return dynamic_cast<Button&>(*contents->items()[2]->view()).image();
  };
  EXPECT_EQ(simulatedImageName(image()), "generic icon");
  platform.runFor(0.01);
  EXPECT_EQ(simulatedImageName(image()), "icon:/home/user/Documents");
  EXPECT_EQ(image().size(), (Size{42, 42}));
}

TEST_F(FolderContentsProviderTest, EachButtonShowsItsFolder) {
  const std::vector<SystemFolder> offered = contents->systemFolders();
  for (std::size_t i = 0; i < offered.size(); ++i) {
    contents = FolderContentsProvider::create();
    itemNames();
    press(*contents->items()[i]);
    EXPECT_EQ(contents->folderPath(), offered[i].path);
  }
}

TEST_F(FolderContentsProviderTest, AChosenFolderIsShownAtOnce) {
  files().putRaw("/home/user/Documents/a.desktop", "x");
  showInRow();
  EXPECT_THAT(row->items(), SizeIs(12));
  press(*row->items()[2]);
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "Open Documents in Finder..."}));
  EXPECT_EQ(row->providerSelector().nameLabel().text(), "Documents Folder");
}

TEST_F(FolderContentsProviderTest, DownloadsOpenWithTheYoungestFirst) {
  for (const char* name : {"old", "young"})
    files().putRaw(std::string("/home/user/Downloads/") + name, "");
  files().setCreationDate("/home/user/Downloads/young", 20);
  files().setCreationDate("/home/user/Downloads/old", 10);
  contents->restoreState(PropertyList::dictionary({{"SortOrder", -1}}));
  pressButton("Downloads");
  EXPECT_EQ(contents->order().sortMethod, FolderSortByCreationDate);
  EXPECT_EQ(contents->order().sortOrder, 1);
  EXPECT_EQ(entryNames(), (Names{"young", "old"}));
}

TEST_F(FolderContentsProviderTest, OtherFoldersOpenInTheOrderThatStands) {
  const auto state = PropertyList::dictionary({{"SortBy", 1}, {"SortOrder", -1}});
  for (const char* name : {"user", "Documents", "Library"}) {
    contents = FolderContentsProvider::create();
    contents->restoreState(state);
    pressButton(name);
    EXPECT_EQ(contents->order().sortMethod, FolderSortBySize) << name;
    EXPECT_EQ(contents->order().sortOrder, -1) << name;
  }
}

TEST_F(FolderContentsProviderTest, AnIdThatNoFolderHasChangesNothing) {
  showFolder();
  contents->useSystemFolder(4711);
  EXPECT_EQ(contents->folderPath(), folder);
}

TEST_F(FolderContentsProviderTest, TheLastButtonOfTheChooserAsksForAFolder) {
  platform.dialogs().answerOpenPanel({folder});
  pressButton("Choose Folder...");
  EXPECT_EQ(contents->folderPath(), folder);
  ASSERT_THAT(platform.dialogs().shownOpenPanels(), SizeIs(1));
  const OpenPanel& panel = platform.dialogs().shownOpenPanels()[0];
  EXPECT_FALSE(panel.canChooseFiles);
  EXPECT_TRUE(panel.canChooseDirectories);
  EXPECT_FALSE(panel.allowsMultipleSelection);
  EXPECT_THAT(panel.allowedFileTypes, IsEmpty());
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(FolderContentsProviderTest, WhoChoosesNoFolderHasTheChooserStill) {
  platform.dialogs().cancelOpenPanel();
  pressButton("Choose Folder...");
  EXPECT_EQ(contents->folderPath(), "");
}

TEST_F(FolderContentsProviderTest, AButtonDoesNothingOnceTheProviderHasGone) {
  itemNames();
  const auto item = contents->items()[2];
  const std::weak_ptr<FolderContentsProvider> left = contents;
  contents.reset();
  EXPECT_TRUE(left.expired());
  press(*item);
}

}  // namespace
}  // namespace qb::test
