#include "Quillbox/providers/TabRowProvider.h"

#include <array>

#include "Quillbox/providers/ProviderCatalogue.h"
#include "QuillboxCommon/views/Animation.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowProviderTest : public TabRowFixture {
 protected:
  std::shared_ptr<TestItem> item(const std::string& name) {
    return TestItem::create(Rect::make(0, 0, 10, 10), name, log);
  }
  std::vector<std::string> itemNames() const {
    std::vector<std::string> names;
    for (const auto& held : plain->items()) names.push_back(held->name());
    return names;
  }

  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  TestDrag drag{DragTypeFileURL};
  std::shared_ptr<TabRowProvider> plain = std::make_shared<TabRowProvider>();
};

TEST_F(TabRowProviderTest, HasItsDefaults) {
  const auto one = item("one");
  EXPECT_EQ(plain->name(), "Unnamed");
  EXPECT_EQ(plain->numberOfItems(), 0);
  EXPECT_FALSE(plain->isActiveApplicationsProvider());
  EXPECT_FALSE(plain->isCustomProvider());
  EXPECT_FALSE(plain->haveItemsChanged());
  EXPECT_FALSE(plain->canInvokeAllItems());
  EXPECT_FALSE(plain->canBeConfigured());
  EXPECT_FALSE(plain->wantsInvocationTabEvent());
  EXPECT_FALSE(plain->keyDown(Event{}));
  EXPECT_FALSE(plain->mouseDown(Event{}));
  EXPECT_FALSE(plain->mouseUp(Event{}));
  EXPECT_FALSE(plain->mouseMovedFromLocation({}, {}));
  EXPECT_TRUE(plain->removeItemFromTabRow(*one, true));
  EXPECT_TRUE(plain->moveItemToTrash(*one));
  EXPECT_TRUE(plain->confirmProviderChange());
  EXPECT_TRUE(plain->confirmDeletion());
  TabRowProvider::MenuItems existing;
  EXPECT_TRUE(plain->menuItemsForItemConfigure(*one, existing).empty());
  EXPECT_TRUE(plain->menuItemsForProviderMenu().empty());
  EXPECT_TRUE(plain->menuItemsForConfigure().empty());
  EXPECT_FALSE(plain->isInterestedInDragOperation(drag));
  EXPECT_FALSE(plain->canReceiveDragOperation(drag, DragTypeFileURL));
  EXPECT_FALSE(plain->receiveDragOperation(drag, {}, 0));
  EXPECT_FALSE(plain->shouldHiliteTabRowOnDragEnter());
  EXPECT_FALSE(plain->canAddItemsToTabRowViaDragOperation(drag));
  EXPECT_EQ(plain->dragOperationForDraggingSession(DraggingContext::OutsideApplication), -1);
  EXPECT_EQ(plain->state(), PropertyList::dictionary());
  EXPECT_EQ(plain->initiallySelectedItem(), nullptr);
  EXPECT_EQ(plain->tabRow(), nullptr);
  EXPECT_EQ(plain->selectedItem(), nullptr);
}

TEST_F(TabRowProviderTest, ThereIsNoItemPastTheEnd) {
  const auto one = item("one");
  plain->addItem(one);
  EXPECT_EQ(plain->itemForIndex(0), one);
  EXPECT_EQ(plain->itemForIndex(1), nullptr);
  EXPECT_EQ(plain->itemForIndex(~std::uint64_t{0}), nullptr);
}

TEST_F(TabRowProviderTest, AddingAndInsertingNothingChangesNothing) {
  plain->addItem(item("one"));
  plain->addItem(nullptr);
  plain->insertItem(nullptr, 0);
  plain->removeItem(nullptr);
  EXPECT_EQ(itemNames(), (std::vector<std::string>{"one"}));
}

TEST_F(TabRowProviderTest, InsertsWhereTold) {
  plain->addItem(item("one"));
  plain->insertItem(item("zero"), 0);
  plain->insertItem(item("last"), 99);
  EXPECT_EQ(itemNames(), (std::vector<std::string>{"zero", "one", "last"}));
}

TEST_F(TabRowProviderTest, RemovingAddsAsItAlwaysDid) {
  plain->addItem(item("one"));
  plain->removeItem(item("two"));
  EXPECT_EQ(itemNames(), (std::vector<std::string>{"one", "two"}));
}

TEST_F(TabRowProviderTest, FirstItemIsTheInitialSelection) {
  plain->addItem(item("one"));
  plain->addItem(item("two"));
  EXPECT_EQ(plain->initiallySelectedItem(), plain->items().front());
  EXPECT_EQ(plain->numberOfItems(), 2);
  plain->deleteItems();
  EXPECT_EQ(plain->numberOfItems(), 0);
}

TEST_F(TabRowProviderTest, TellsItsItemsOfOpeningAndClosing) {
  plain->addItem(item("one"));
  plain->itemsWillBeDisplayed();
  EXPECT_TRUE(plain->itemsAreDisplayed());
  plain->itemsWillBeDismissed();
  EXPECT_FALSE(plain->itemsAreDisplayed());
  EXPECT_EQ(*log, (CallLog{"one: tabRowWillBeDisplayed", "one: tabRowWillBeDismissed"}));
}

TEST_F(TabRowProviderTest, KeepsActiveStatusAndSelection) {
  const auto one = item("one");
  plain->gainActiveStatus();
  EXPECT_TRUE(plain->hasActiveStatus());
  plain->relinquishActiveStatus();
  EXPECT_FALSE(plain->hasActiveStatus());
  plain->itemWasSelected(one);
  EXPECT_EQ(plain->selectedItem(), one);
  plain->itemWasDeselected(one);
  EXPECT_EQ(plain->selectedItem(), nullptr);
}

TEST_F(TabRowProviderTest, GivesItsItemsTheirRow) {
  makeRow(0);
  const auto one = item("one");
  plain->addItem(one);
  plain->setTabRow(row);
  plain->assignTabRowToAllItems();
  EXPECT_EQ(one->tabRow(), row);
}

TEST_F(TabRowProviderTest, MovesItemsAtOnceOrOverAQuarterOfASecond) {
  const auto one = item("one");
  plain->setItem(*one, Rect::make(10, 0, 10, 10), false);
  EXPECT_EQ(one->view()->frame(), Rect::make(10, 0, 10, 10));
  {
    const AnimationGroup longer(5);
    plain->setItem(*one, Rect::make(90, 0, 10, 10), true);
  }
  platform.runFor(0.125);
  EXPECT_GT(one->view()->frame().x(), 10);
  EXPECT_LT(one->view()->frame().x(), 90);
  platform.runFor(0.13);
  EXPECT_EQ(one->view()->frame(), Rect::make(90, 0, 10, 10));
}

TEST_F(TabRowProviderTest, LetsGoOfItsItemsWhenItIsNoLongerWanted) {
  plain->addItem(item("one"));
  plain->prepareForDeallocation();
  EXPECT_TRUE(plain->items().empty());
}

TEST_F(TabRowProviderTest, AnEntryIsOfferedUnlessItSaysOtherwise) {
  TabRowProviderInformation information("Plain", "TabRowProvider",
                                        [] { return std::make_shared<TabRowProvider>(); });
  EXPECT_TRUE(information.shouldAppearInProviderSelector());
  information.setShouldAppearInProviderSelector(false);
  EXPECT_FALSE(information.shouldAppearInProviderSelector());
  // It can still be restored.
  EXPECT_NE(information.createProvider(), nullptr);
}

TEST_F(TabRowProviderTest, CatalogueNamesItsEntries) {
  std::vector<std::array<std::string, 2>> entries;
  for (const auto& information : tabRowProviderCatalogue()) {
    entries.push_back({information->name(), information->className()});
    // That of a program that is not installed here.
    EXPECT_EQ(information->shouldAppearInProviderSelector(),
              information->name() != "Dropbox Contents");
    EXPECT_EQ(information->createProvider()->name(), information->name());
  }
  EXPECT_EQ(entries, (std::vector<std::array<std::string, 2>>{
                         {"Active Applications", "ActiveApplicationsProvider"},
                         {"Recent Applications", "RecentApplicationsProvider"},
                         {"Dropbox Contents", "DropboxContentsProvider"},
                         {"Folder Contents", "FolderContentsProvider"},
                         {"Clipboard History", "ClipboardHistoryProvider"}}));
}

}  // namespace
}  // namespace qb::test
