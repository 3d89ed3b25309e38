#include "Quillbox/providers/DropboxContentsProvider.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/rows/ItemMenu.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "QuillboxCommon/views/LabelView.h"
#include "support/FolderContentsFixture.h"
#include "support/MenuTitles.h"
#include "support/TestEvents.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr const char* title = "Dropbox Contents";
constexpr const char* noFolder =
    "Quillbox cannot locate your Dropbox folder.\rPress the + button at left to specify your "
    "Dropbox folder.";
const SimulatedApplication program{"com.getdropbox.dropbox", "Dropbox", "/apps/dropbox.desktop"};

/// The folder of the base's tests is that of the manager, once it is specified.
class DropboxContentsProviderTest : public FolderContentsFixture {
 protected:
  DropboxContentsProviderTest() { contents = DropboxContentsProvider::create(); }

  DropboxManager& manager() { return quillbox->dropboxManager(); }
  std::string message() const {
    const LabelView* const label = row->instructionalMessageLabel();
    return label ? label->text() : "none";
  }
  std::vector<std::string> selectorEntries() {
    row->popUpProviderSelectorMenuWithEvent(mouseEvent(EventTypeLeftMouseDown));
    return platform.menuPresenter().shown().back().items;
  }
  /// The menu of an item of the row, as it is shown.
  std::vector<std::string> menuOf(std::size_t item) {
    row->setSelectedItem(row->items().at(item), SelectionMethodProgram);
    row->configureSelectedItemWithMethod(ItemMenuMethodRightClick);
    return platform.menuPresenter().shown().back().items;
  }
};

TEST_F(DropboxContentsProviderTest, AnswersForItself) {
  EXPECT_EQ(contents->name(), title);
  EXPECT_EQ(contents->className(), "DropboxContentsProvider");
  EXPECT_TRUE(contents->canBeConfigured());
  EXPECT_FALSE(contents->wantsInvocationTabEvent());
  EXPECT_FALSE(contents->shouldAddOpenFolderInFinderButton());
  manager().setDropboxFolderPath(folder);
  EXPECT_EQ(contents->name(), title);
}

TEST_F(DropboxContentsProviderTest, IsOfferedWhileTheProgramIsInstalled) {
  showInRow();
  EXPECT_THAT(selectorEntries(), Not(Contains(title)));
  platform.workspace().install(program);
  const auto entries = selectorEntries();
  const auto entry = std::find(entries.begin(), entries.end(), title);
  ASSERT_NE(entry, entries.end());
  EXPECT_EQ(*(entry + 1), "Folder Contents");
  platform.workspace().uninstall(program.bundlePath);
  EXPECT_THAT(selectorEntries(), Not(Contains(title)));
}

TEST_F(DropboxContentsProviderTest, ChosenInTheSelectorItShowsTheFolder) {
  put("a.desktop");
  manager().setDropboxFolderPath(folder);
  platform.workspace().install(program);
  contents = FolderContentsProvider::create();
  showInRow();
  platform.menuPresenter().whenMenuOpens([](SimulatedMenuUser& user) { user.choose(title); });
  selectorEntries();
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"Dropbox", "a.desktop"}));
  EXPECT_EQ(row->providerSelector().nameLabel().text(), title);
}

// Without a folder.

TEST_F(DropboxContentsProviderTest, WithoutAFolderThereIsAButtonAndAMessage) {
  showInRow();
  EXPECT_EQ(contents->numberOfItems(), 1);
  EXPECT_EQ(message(), noFolder);
  ASSERT_EQ(rowNames(), (Names{"Specify Dropbox Folder..."}));
  const Item& button = *row->items()[0];
  EXPECT_EQ(button.type(), ItemTypeButton);
  EXPECT_EQ(button.view()->frame().size, row->itemSize());
  EXPECT_FALSE(button.isArrangeable());
  EXPECT_FALSE(button.isRemovable());
  EXPECT_FALSE(button.isTrashable());
}

TEST_F(DropboxContentsProviderTest, WithoutARowThereIsNoMessage) {
  EXPECT_EQ(contents->numberOfItems(), 1);
  EXPECT_EQ(itemNames(), (Names{"Specify Dropbox Folder..."}));
}

TEST_F(DropboxContentsProviderTest, TheButtonHasTheUserSpecifyTheFolder) {
  put("a.desktop");
  showInRow();
  platform.dialogs().answerOpenPanel({folder});
  platform.dialogs().answerAlert("Use Folder");
  press(*row->items()[0]);
  platform.runFor(0.1);
  EXPECT_EQ(manager().dropboxFolderPath(), folder);
  EXPECT_EQ(rowNames(), (Names{"Dropbox", "a.desktop"}));
  EXPECT_EQ(message(), "none");
}

TEST_F(DropboxContentsProviderTest, WhoSpecifiesNoneHasTheButtonStill) {
  showInRow();
  platform.dialogs().cancelOpenPanel();
  press(*row->items()[0]);
  platform.runFor(1);
  EXPECT_EQ(rowNames(), (Names{"Specify Dropbox Folder..."}));
  EXPECT_EQ(message(), noFolder);
}

// With one.

TEST_F(DropboxContentsProviderTest, AFolderThatIsKnownIsShownFromTheBeginning) {
  put("a.desktop");
  put("b.desktop");
  put(".hidden");
  manager().setDropboxFolderPath(folder);
  contents = DropboxContentsProvider::create();
  EXPECT_EQ(contents->folderPath(), folder);
  EXPECT_EQ(itemNames(), (Names{"Dropbox", "b.desktop", "a.desktop"}));
}

TEST_F(DropboxContentsProviderTest, CountsOneMoreThanThereAre) {
  put("a.desktop");
  put("b.desktop");
  manager().setDropboxFolderPath(folder);
  EXPECT_EQ(contents->numberOfItems(), 4);
}

TEST_F(DropboxContentsProviderTest, TheFirstItemIsTheFolder) {
  put("a.desktop");
  manager().setDropboxFolderPath(folder);
  itemNames();
  const auto& item = dynamic_cast<const FolderItem&>(*contents->items().at(0));
  EXPECT_EQ(item.path(), folder);
  EXPECT_FALSE(item.isRemovable());
  EXPECT_FALSE(item.isTrashable());
  EXPECT_TRUE(contents->items().at(1)->isTrashable());
}

TEST_F(DropboxContentsProviderTest, AnEmptyFolderIsNotCalledSo) {
  manager().setDropboxFolderPath(folder);
  showInRow();
  EXPECT_EQ(rowNames(), (Names{"Dropbox"}));
  EXPECT_EQ(message(), "none");
}

TEST_F(DropboxContentsProviderTest, WhatComesIsShown) {
  manager().setDropboxFolderPath(folder);
  showInRow();
  put("a.desktop");
  platform.runFor(0.5);
  EXPECT_EQ(rowNames(), (Names{"Dropbox", "a.desktop"}));
}

TEST_F(DropboxContentsProviderTest, AFolderThatBecomesKnownIsShownAtOnce) {
  put("a.desktop");
  showInRow();
  manager().setDropboxFolderPath(folder);
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"Dropbox", "a.desktop"}));
  EXPECT_EQ(message(), "none");
}

TEST_F(DropboxContentsProviderTest, WithTheFolderGoneTheButtonIsBackWithTheMessage) {
  put("a.desktop");
  manager().setDropboxFolderPath(folder);
  showInRow();
  manager().setDropboxFolderPath("");
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"Specify Dropbox Folder..."}));
  EXPECT_EQ(message(), noFolder);
}

TEST_F(DropboxContentsProviderTest, AChangeInTheDarkShowsAtTheNextOpening) {
  put("a.desktop");
  showInRow();
  dismiss();
  platform.runFor(1);
  manager().setDropboxFolderPath(folder);
  platform.runFor(1);
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), (Names{"Dropbox", "a.desktop"}));
}

TEST_F(DropboxContentsProviderTest, ALinkToAnAccountChangesNothing) {
  manager().setDropboxFolderPath(folder);
  auto& delegate = dynamic_cast<DropboxManagerDelegate&>(*contents);
  delegate.quillboxHasBecomeLinkedToDropbox();
  delegate.quillboxHasBecomeUnlinkedFromDropbox();
  EXPECT_EQ(contents->folderPath(), folder);
}

TEST_F(DropboxContentsProviderTest, TheManagerDoesNotKeepIt) {
  const std::weak_ptr<FolderContentsProvider> left = contents;
  contents.reset();
  EXPECT_TRUE(left.expired());
  manager().setDropboxFolderPath(folder);
}

// What is saved.

TEST_F(DropboxContentsProviderTest, TheOrderIsRestoredAndTheFolderIsTheManagers) {
  put("a.desktop");
  put("b.desktop");
  manager().setDropboxFolderPath(folder);
  contents->restoreState(
      PropertyList::dictionary({{"FolderPathKey", "/home/user"}, {"SortOrder", -1}}));
  EXPECT_EQ(contents->folderPath(), folder);
  EXPECT_EQ(itemNames(), (Names{"Dropbox", "a.desktop", "b.desktop"}));
  manager().setDropboxFolderPath("");
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", "/home/user"}}));
  EXPECT_EQ(contents->folderPath(), "");
}

// The menus of its items.

TEST_F(DropboxContentsProviderTest, TheMenuOfTheFolderOffersNoRowOfItsOwn) {
  for (const char* name : {"a.desktop", "b.desktop"}) put(name);
  for (const char* name : {"folder/c.txt", "folder/d.txt"}) put(name);
  manager().setDropboxFolderPath(folder);
  showInRow();
  ASSERT_EQ(rowNames(), (Names{"Dropbox", "folder", "b.desktop", "a.desktop"}));
  const auto ofRow = menuOf(0);
  EXPECT_THAT(ofRow, Contains("Open all 3 Contained Items"));
  EXPECT_THAT(ofRow, Not(Contains("Show all 3 Contained Items in New Tab Row...")));
  // Any other folder has it.
  EXPECT_THAT(menuOf(1), Contains("Show all 2 Contained Items in New Tab Row..."));
}

TEST_F(DropboxContentsProviderTest, OfSeveralSuchEntriesTheLastGoes) {
  manager().setDropboxFolderPath(folder);
  itemNames();
  auto entries = TabRowProvider::MenuItems{MenuItem::create("1"), MenuItem::create("2"),
                                           MenuItem::create("3"), MenuItem::create("4")};
  for (const std::size_t tagged : {0U, 2U}) entries[tagged]->setTag(15982);
  EXPECT_THAT(contents->menuItemsForItemConfigure(*contents->items().at(0), entries), IsEmpty());
  EXPECT_THAT(titlesOf(entries), ElementsAre("1", "2", "4"));
}

TEST_F(DropboxContentsProviderTest, WithoutSuchAnEntryNothingGoes) {
  manager().setDropboxFolderPath(folder);
  itemNames();
  TabRowProvider::MenuItems entries{MenuItem::create("1")};
  contents->menuItemsForItemConfigure(*contents->items().at(0), entries);
  EXPECT_THAT(titlesOf(entries), ElementsAre("1"));
}

}  // namespace
}  // namespace qb::test
