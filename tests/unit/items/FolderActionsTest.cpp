#include "Quillbox/Item/folder/FolderActions.h"

#include <gmock/gmock.h>

#include "Quillbox/managers/DropboxManager.h"
#include "support/FolderItemFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* saved = "/home/user/Desktop/Saved Downloads";

class FolderActionsTest : public FolderItemFixture {
 protected:
  std::string put(const std::string& name) {
    files().putRaw(downloads + '/' + name, "contents of " + name);
    return downloads + '/' + name;
  }
  /// Chooses an entry of a submenu that stands for the path.
  void chooseBehind(const std::string& path, const std::string& title) {
    const auto menu = item->folderMenu().menuForFile(path);
    const auto entry = menu->itemWithTitle(title);
    ASSERT_NE(entry, nullptr);
    entry->performAction();
  }
  /// The text that comes now, and stays for a second.
  std::string told() {
    platform.runFor(0.01);
    const std::string text = notification();
    platform.runFor(2.5);
    EXPECT_EQ(notification(), "none");
    return text;
  }

  const std::shared_ptr<FolderItem> item = make(downloads);
};

TEST_F(FolderActionsTest, OneItemIsAskedForByItsName) {
  const std::string path = put("My%20Letter.txt");
  platform.dialogs().answerAlert("Cancel");
  FolderActions::trashContents({path});
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
  EXPECT_EQ(told(), "none");
  platform.dialogs().answerAlert("Move to Trash");
  FolderActions::trashContents({path});
  EXPECT_THAT(platform.trash().paths(), ElementsAre(path));
  EXPECT_EQ(told(), "All items successfully moved to Trash");
  const auto& alert = platform.dialogs().shownAlerts().back();
  EXPECT_EQ(alert.messageText, "Move to Trash?");
  EXPECT_EQ(alert.informativeText, "Are you sure you wish to move \"My Letter.txt\" to the Trash?");
  EXPECT_THAT(alert.buttons, ElementsAre("Cancel", "Move to Trash"));
}

TEST_F(FolderActionsTest, SeveralItemsAreAskedForByTheirNumber) {
  const Lines paths = {put("a"), put("b"), downloads + "/missing"};
  platform.dialogs().answerAlert("Move to Trash");
  FolderActions::trashContents(paths);
  EXPECT_THAT(platform.trash().paths(), ElementsAre(paths[0], paths[1]));
  EXPECT_EQ(platform.dialogs().shownAlerts().back().informativeText,
            "Are you sure you wish to move all 3 Downloaded Items to the Trash?");
  EXPECT_EQ(told(), "2 of 3 items successfully moved to Trash.");
}

TEST_F(FolderActionsTest, NothingIsNotAskedFor) {
  FolderActions::trashContents({});
  FolderActions::saveContents({});
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
  EXPECT_EQ(told(), "none");
  EXPECT_FALSE(files().fileExistsAtPath(saved));
}

TEST_F(FolderActionsTest, ContentsAreSavedUnderTheirNames) {
  FolderActions::saveContents({put("a"), put("b")});
  EXPECT_EQ(files().raw(std::string(saved) + "/a"), "contents of a");
  EXPECT_EQ(files().raw(std::string(saved) + "/b"), "contents of b");
  EXPECT_EQ(told(), "Successfully Moved to Saved Downloads Folder");
}

TEST_F(FolderActionsTest, WhatIsSavedAlreadyStaysAsItIs) {
  files().putRaw(std::string(saved) + "/a", "older");
  const std::string path = put("a");
  FolderActions::saveContents({path, put("b"), put("c")});
  EXPECT_EQ(files().raw(std::string(saved) + "/a"), "older");
  EXPECT_EQ(files().raw(path), "contents of a");
  EXPECT_EQ(told(), "1 of 3 files could not be moved to the Saved Downloads Folder");
}

TEST_F(FolderActionsTest, TheEntriesOfTheMenuDoIt) {
  const Lines paths = {put("a"), put("b")};
  choose(*item, "Move Downloaded Items to Saved Downloads Folder...");
  EXPECT_THAT(item->visibleContents(), IsEmpty());
  put("c");
  platform.dialogs().answerAlert("Move to Trash");
  const auto entry = entryOf(*item, "Move Downloaded Items to Trash...");
  entry->submenu()->itemWithTitle("All Items")->performAction();
  EXPECT_THAT(platform.trash().paths(), ElementsAre(downloads + "/c"));
}

TEST_F(FolderActionsTest, TheSavedDownloadsAreMadeAndShown) {
  open(ActivationMethodCorner);
  choose(*item, "Open Saved Downloads Folder...");
  EXPECT_TRUE(files().fileExistsAtPath(saved));
  EXPECT_THAT(platform.fileViewer().selectedFiles(), ElementsAre(saved));
  platform.runFor(0.02);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateInactive);
}

TEST_F(FolderActionsTest, OneFileGoesWithoutAQuestion) {
  const std::string path = put("a");
  chooseBehind(path, "Move to Trash...");
  EXPECT_THAT(platform.trash().paths(), ElementsAre(path));
  EXPECT_EQ(told(), "Successfully Moved to Trash");
  chooseBehind(path, "Move to Trash...");
  EXPECT_EQ(told(), "Unable to Move to Trash");
}

TEST_F(FolderActionsTest, OneFileIsSaved) {
  const std::string path = put("a");
  chooseBehind(path, "Move to Saved Downloads...");
  EXPECT_EQ(files().raw(std::string(saved) + "/a"), "contents of a");
  EXPECT_EQ(told(), "Successfully Moved to Saved Downloads Folder");
  chooseBehind(path, "Move to Saved Downloads...");
  EXPECT_EQ(told(), "Unable to Move to Saved Downloads Folder");
}

TEST_F(FolderActionsTest, AFileIsShownAndSent) {
  const std::string path = put("a");
  chooseBehind(path, "Show in Finder...");
  EXPECT_THAT(platform.fileViewer().selectedFiles(), ElementsAre(path));
  chooseBehind(path, "Share via Email...");
  ASSERT_FALSE(platform.sharing().composed().empty());
  EXPECT_THAT(platform.sharing().composed().back().items, Contains(SharedItem(SharedFile{path})));
}

TEST_F(FolderActionsTest, AnApplicationMovesToTheOthers) {
  files().putRaw(downloads + "/Editor.app/program", "");
  const auto menu =
      item->folderMenu().menuForFolder(downloads + "/Editor.app", FolderMenuOptionEntryOfMenu);
  const auto entry = menu->itemWithTitle("Move to Applications...");
  ASSERT_NE(entry, nullptr);
  open(ActivationMethodCorner);
  platform.runFor(1);
  entry->performAction();
  platform.runFor(0.01);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateActive) << "there is no such place";
  files().makeFolder("/Applications");
  entry->performAction();
  EXPECT_TRUE(files().fileExistsAtPath("/Applications/Editor.app/program"));
  platform.runFor(0.02);
  EXPECT_EQ(quillbox->quillboxActivationState(), ActivationStateInactive);
}

TEST_F(FolderActionsTest, AFileGoesToTheDropboxUnlessItIsThere) {
  const std::string dropbox = "/home/user/Dropbox";
  files().makeFolder(dropbox);
  quillbox->dropboxManager().setDropboxFolderPath(dropbox);
  const std::string path = put("a.txt");
  EXPECT_EQ(linesOf(*item->folderMenu().menuForFile(path)),
            (Lines{"Move to Trash...", "Move to Saved Downloads...", "Show in Finder...",
                   "Share via Email...", "-", "Move to Dropbox"}));
  chooseBehind(path, "Move to Dropbox");
  platform.runFor(0.01);
  EXPECT_EQ(notification(), "The file \"a\" was\rsuccessfully moved to your Dropbox.");
  EXPECT_EQ(files().raw(dropbox + "/a.txt"), "contents of a.txt");
  EXPECT_EQ(linesOf(*make(dropbox)->folderMenu().menuForFile(dropbox + "/a.txt")),
            (Lines{"Move to Trash...", "Show in Finder...", "Share via Email..."}));
}

}  // namespace
}  // namespace qb::test
