#include "Quillbox/managers/DropboxManager.h"

#include <gmock/gmock.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* usual = "/home/user/Dropbox";
constexpr const char* other = "/home/user/Shared";

class Listener : public DropboxManagerDelegate {
 public:
  void dropboxFolderHasBeenSpecified(const std::string& path) override { heard.push_back(path); }
  void dropboxFolderHasBecomeUnspecified() override { heard.emplace_back("none"); }
  void quillboxHasBecomeLinkedToDropbox() override { heard.emplace_back("linked"); }
  void quillboxHasBecomeUnlinkedFromDropbox() override { heard.emplace_back("unlinked"); }

  std::vector<std::string> heard;
};

class DropboxManagerTest : public QuillboxFixture {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  SimulatedDialogs& dialogs() { return platform.dialogs(); }
  DropboxManager& manager() { return quillbox->dropboxManager(); }
  /// As the next run makes it.
  std::string folderOfNextRun() { return DropboxManager(*quillbox).dropboxFolderPath(); }
  PropertyList savedFolder() { return platform.userDefaults().objectForKey("DropboxFolderPath"); }
  const SimulatedDialogs::ShownAlert& lastAlert() { return dialogs().shownAlerts().back(); }
  /// The text of the notification that is up now, "none" without one.
  std::string notification() {
    platform.runFor(0.01);
    const auto windows = platform.windowServer().visibleWindows();
    if (windows.empty()) return "none";
    return platform.windowServer().paint(*windows.front()).texts().back();
  }
};

TEST_F(DropboxManagerTest, KnowsNoFolderWhereThereIsNone) {
  EXPECT_EQ(manager().dropboxFolderPath(), "");
  EXPECT_EQ(manager().numberOfItemsInDropboxFolder(), 0);
  EXPECT_EQ(savedFolder(), PropertyList());
}

TEST_F(DropboxManagerTest, FindsTheUsualFolderOfTheHome) {
  files().makeFolder(usual);
  EXPECT_EQ(folderOfNextRun(), usual);
  EXPECT_EQ(savedFolder(), PropertyList());
}

TEST_F(DropboxManagerTest, AFileOfThatNameIsNoFolder) {
  files().putRaw(usual, "x");
  EXPECT_EQ(folderOfNextRun(), "");
}

TEST_F(DropboxManagerTest, TheSpecifiedFolderGoesBeforeTheUsualOne) {
  files().makeFolder(usual);
  files().makeFolder(other);
  manager().setDropboxFolderPath(other);
  EXPECT_EQ(savedFolder(), PropertyList(other));
  EXPECT_EQ(folderOfNextRun(), other);
}

TEST_F(DropboxManagerTest, ASpecifiedFolderThatHasGoneIsNoFolder) {
  manager().setDropboxFolderPath(other);
  EXPECT_EQ(folderOfNextRun(), "");
  files().putRaw(other, "x");
  EXPECT_EQ(folderOfNextRun(), "");
  files().makeFolder(usual);
  EXPECT_EQ(folderOfNextRun(), usual);
  // It may come back, as a volume does.
  EXPECT_EQ(savedFolder(), PropertyList(other));
}

TEST_F(DropboxManagerTest, WhatIsSavedMayBeAnything) {
  platform.userDefaults().setObject(PropertyList(12), "DropboxFolderPath");
  EXPECT_EQ(folderOfNextRun(), "");
}

TEST_F(DropboxManagerTest, NoFolderIsNotSaved) {
  manager().setDropboxFolderPath(other);
  manager().setDropboxFolderPath("");
  EXPECT_EQ(savedFolder(), PropertyList());
}

TEST_F(DropboxManagerTest, TellsAllDelegatesOfANewFolder) {
  const auto first = std::make_shared<Listener>();
  const auto second = std::make_shared<Listener>();
  manager().addDelegate(first);
  manager().addDelegate(second);
  manager().addDelegate(nullptr);
  manager().setDropboxFolderPath(other);
  manager().setDropboxFolderPath("");
  EXPECT_THAT(first->heard, ElementsAre(other, "none"));
  EXPECT_EQ(second->heard, first->heard);
}

TEST_F(DropboxManagerTest, TellsNobodyOfTheFolderThatItFindsByItself) {
  const auto listener = std::make_shared<Listener>();
  manager().addDelegate(listener);
  files().makeFolder(usual);
  manager().setDefaultDropboxFolderPath();
  EXPECT_EQ(manager().dropboxFolderPath(), usual);
  EXPECT_THAT(listener->heard, IsEmpty());
}

TEST_F(DropboxManagerTest, DoesNotKeepDelegatesNorTellThoseThatHaveLeft) {
  auto gone = std::make_shared<Listener>();
  const auto left = std::make_shared<Listener>();
  const std::weak_ptr<Listener> watched = gone;
  manager().addDelegate(gone);
  manager().addDelegate(left);
  gone.reset();
  EXPECT_TRUE(watched.expired());
  manager().removeDelegate(*left);
  manager().setDropboxFolderPath(other);
  EXPECT_THAT(left->heard, IsEmpty());
}

TEST_F(DropboxManagerTest, ThereIsNoLinkToAnAccount) {
  const auto listener = std::make_shared<Listener>();
  manager().addDelegate(listener);
  EXPECT_FALSE(manager().isQuillboxLinkedToDropbox());
  manager().linkQuillboxToDropbox();
  EXPECT_FALSE(manager().isQuillboxLinkedToDropbox());
  manager().unlinkQuillboxFromDropbox();
  EXPECT_THAT(listener->heard, IsEmpty());
}

// The user specifies it.

TEST_F(DropboxManagerTest, AFolderOfThatNameIsTakenAtOnce) {
  dialogs().answerOpenPanel({"/media/disk/Dropbox"});
  manager().locateDropboxFolder();
  EXPECT_EQ(manager().dropboxFolderPath(), "/media/disk/Dropbox");
  EXPECT_THAT(dialogs().shownAlerts(), IsEmpty());
  ASSERT_THAT(dialogs().shownOpenPanels(), SizeIs(1));
  const OpenPanel& panel = dialogs().shownOpenPanels()[0];
  EXPECT_FALSE(panel.canChooseFiles);
  EXPECT_TRUE(panel.canChooseDirectories);
  EXPECT_THAT(panel.allowedFileTypes, IsEmpty());
  EXPECT_EQ(panel.directory, "");
}

TEST_F(DropboxManagerTest, AFolderOfAnotherNameIsAskedAbout) {
  dialogs().answerOpenPanel({other});
  dialogs().answerAlert("Use Folder");
  manager().locateDropboxFolder();
  EXPECT_EQ(manager().dropboxFolderPath(), other);
  EXPECT_EQ(lastAlert().messageText, "Dropbox Folder?");
  EXPECT_EQ(lastAlert().informativeText,
            "This doesn't appear to be a Dropbox folder.  Are you sure you want to use this "
            "folder?");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Use Folder"));
}

TEST_F(DropboxManagerTest, ARefusalLeavesTheFolderAsItWas) {
  manager().setDropboxFolderPath(usual);
  dialogs().answerOpenPanel({other});
  dialogs().answerAlert("Cancel");
  manager().locateDropboxFolder();
  EXPECT_EQ(manager().dropboxFolderPath(), usual);
}

TEST_F(DropboxManagerTest, WhoChoosesNothingChangesNothing) {
  manager().setDropboxFolderPath(usual);
  dialogs().cancelOpenPanel();
  manager().locateDropboxFolder();
  dialogs().answerOpenPanel({});
  manager().locateDropboxFolder();
  EXPECT_EQ(manager().dropboxFolderPath(), usual);
}

// What is in it.

TEST_F(DropboxManagerTest, CountsWhatIsNotHidden) {
  for (const char* name : {"a", "b", ".hidden", "Icon\r"}) {
    files().putRaw(std::string(usual) + '/' + name, "x");
  }
  files().makeFolder(std::string(usual) + "/folder");
  manager().setDropboxFolderPath(usual);
  EXPECT_EQ(manager().numberOfItemsInDropboxFolder(), 4);
}

class DropboxMoveTest : public DropboxManagerTest {
 protected:
  DropboxMoveTest() {
    files().putRaw(source, "new");
    files().makeFolder(usual);
    manager().setDropboxFolderPath(usual);
  }
  bool move() { return manager().moveFileToDropbox(source, &newPath); }
  void putOld() { files().putRaw(destination, "old"); }
  void expectBothInPlace() {
    EXPECT_EQ(files().raw(source), "new");
    EXPECT_EQ(files().raw(destination), "old");
    EXPECT_EQ(newPath, "");
    EXPECT_EQ(notification(), "none");
  }

  const std::string source = "/home/user/Desktop/My%20Letter.txt";
  const std::string destination = std::string(usual) + "/My%20Letter.txt";
  std::string newPath = "what was there";
};

TEST_F(DropboxMoveTest, AFileGoesThereAndTheUserIsTold) {
  EXPECT_TRUE(move());
  EXPECT_EQ(newPath, destination);
  EXPECT_EQ(files().raw(destination), "new");
  EXPECT_FALSE(files().fileExistsAtPath(source));
  EXPECT_THAT(dialogs().shownAlerts(), IsEmpty());
  EXPECT_EQ(notification(), "The file \"My Letter\" was\rsuccessfully moved to your Dropbox.");
  platform.runFor(1.98);
  EXPECT_NE(notification(), "none");
  platform.runFor(1);
  EXPECT_EQ(notification(), "none");
}

TEST_F(DropboxMoveTest, AFolderGoesWithAllThatIsInIt) {
  files().putRaw("/home/user/Desktop/Letters/a.txt", "inside");
  EXPECT_TRUE(manager().moveFileToDropbox("/home/user/Desktop/Letters", nullptr));
  EXPECT_EQ(files().raw(std::string(usual) + "/Letters/a.txt"), "inside");
}

TEST_F(DropboxMoveTest, ReplacingIsAskedAbout) {
  putOld();
  dialogs().answerAlert("Replace");
  EXPECT_TRUE(move());
  EXPECT_EQ(lastAlert().messageText, "Move to Dropbox");
  EXPECT_EQ(lastAlert().informativeText,
            "An item named \"My Letter\" already exists in your Dropbox.  Do you wish to replace "
            "it with the item you are moving?");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Replace"));
  EXPECT_EQ(files().raw(destination), "new");
  EXPECT_EQ(newPath, destination);
}

TEST_F(DropboxMoveTest, ARefusalLeavesBothInPlace) {
  putOld();
  dialogs().answerAlert("Cancel");
  EXPECT_FALSE(move());
  expectBothInPlace();
  EXPECT_THAT(dialogs().shownAlerts(), SizeIs(1));
}

TEST_F(DropboxMoveTest, WhatCannotBeRemovedIsTold) {
  putOld();
  files().setReadOnly(usual);
  dialogs().answerAlert("Replace");
  dialogs().answerAlert("OK");
  EXPECT_FALSE(move());
  EXPECT_EQ(lastAlert().messageText, "Unable to Move");
  EXPECT_EQ(lastAlert().informativeText,
            "The file could not be moved becuase the pre-existing item could not be removed.");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("OK"));
  expectBothInPlace();
}

TEST_F(DropboxMoveTest, AFailureOfTheMoveIsToldAndLosesNothing) {
  putOld();
  files().setReadOnly("/home/user/Desktop");
  dialogs().answerAlert("Replace");
  dialogs().answerAlert("OK");
  EXPECT_FALSE(move());
  EXPECT_EQ(lastAlert().messageText, "Unable to Move");
  EXPECT_EQ(lastAlert().informativeText, "The file could not be moved.");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("OK"));
  expectBothInPlace();
}

TEST_F(DropboxMoveTest, AFolderThatHasGoneTakesNothing) {
  manager().setDropboxFolderPath("/home/user/Gone");
  dialogs().answerAlert("OK");
  EXPECT_FALSE(move());
  EXPECT_EQ(lastAlert().informativeText, "The file could not be moved.");
  EXPECT_EQ(files().raw(source), "new");
}

TEST_F(DropboxMoveTest, WhatIsThereAlreadyIsAskedAboutAndStays) {
  putOld();
  dialogs().answerAlert("Replace");
  EXPECT_TRUE(manager().moveFileToDropbox(destination, &newPath));
  EXPECT_EQ(newPath, destination);
  EXPECT_EQ(files().raw(destination), "old");
}

TEST_F(DropboxMoveTest, WithoutAFolderNothingMoves) {
  manager().setDropboxFolderPath("");
  EXPECT_FALSE(move());
  EXPECT_EQ(newPath, "");
  EXPECT_EQ(files().raw(source), "new");
  EXPECT_THAT(dialogs().shownAlerts(), IsEmpty());
}

// The program.

TEST_F(DropboxManagerTest, TheProgramIsThereAtTheMomentOfAsking) {
  const SimulatedApplication dropbox{"com.getdropbox.dropbox", "Dropbox", "/apps/dropbox.desktop"};
  EXPECT_FALSE(manager().isDropboxInstalled());
  platform.workspace().install(dropbox);
  EXPECT_TRUE(manager().isDropboxInstalled());
  EXPECT_FALSE(manager().isDropboxRunning());
  const auto process = platform.processes().launch(dropbox);
  EXPECT_TRUE(manager().isDropboxRunning());
  platform.processes().terminate(process);
  EXPECT_FALSE(manager().isDropboxRunning());
  platform.workspace().uninstall(dropbox.bundlePath);
  EXPECT_FALSE(manager().isDropboxInstalled());
}

}  // namespace
}  // namespace qb::test
