#include "Quillbox/activation/shortcuts/ItemHotKeys.h"

#include <gmock/gmock.h>

#include "support/HotKeysFixture.h"
#include "support/LaunchedBefore.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ItemHotKeysTest : public HotKeysFixture {
 protected:
  std::vector<std::pair<std::string, std::uint32_t>> registered() {
    std::vector<std::pair<std::string, std::uint32_t>> all;
    for (const MASShortcutHotKey& each : hotKeys().registered().hotKeys()) {
      all.emplace_back(each.hotKeyIdentifier, each.carbonHotKeyID);
    }
    return all;
  }
  std::string identifier(std::size_t index) { return provider->item(index).uniqueID(); }
};

TEST_F(ItemHotKeysTest, EveryStoredHotKeyIsRegistered) {
  store("one", keyCodeT, EventFlagControl);
  store("two", keyCodeE, EventFlagCommand | EventFlagShift);
  quillbox->maintainItemHotKeys();
  const auto entries = platform.hotKeys().registered();
  EXPECT_THAT(entries, Contains(SimulatedHotKeys::Entry{keyCodeT, 0x1000, {0x4D415353, 1}}));
  EXPECT_THAT(entries, Contains(SimulatedHotKeys::Entry{keyCodeE, 0x300, {0x4D415353, 2}}));
}

TEST_F(ItemHotKeysTest, IdsGoOnCounting) {
  store("one", keyCodeT, EventFlagControl);
  store("two", keyCodeE, EventFlagControl);
  quillbox->maintainItemHotKeys();
  quillbox->maintainItemHotKeys();
  EXPECT_THAT(registered(), ElementsAre(std::pair("one", 3U), std::pair("two", 4U)));
}

TEST_F(ItemHotKeysTest, IdsPassOverThoseOfThePanel) {
  store("one", keyCodeT, EventFlagControl);
  for (int count = 1; count < 1000; ++count) quillbox->maintainItemHotKeys();
  EXPECT_THAT(registered(), ElementsAre(std::pair("one", 999U)));
  quillbox->maintainItemHotKeys();
  EXPECT_THAT(registered(), ElementsAre(std::pair("one", 1013U)));
  typeControl(keyCodeT);
  EXPECT_FALSE(isActive());
}

TEST_F(ItemHotKeysTest, WhatIsNoLongerStoredIsUnregistered) {
  store("one", keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  storage().removeObjectForKey("one");
  EXPECT_TRUE(isRegistered(keyCodeT));
  quillbox->maintainItemHotKeys();
  EXPECT_FALSE(isRegistered(keyCodeT));
}

TEST_F(ItemHotKeysTest, WhatIsNoShortcutIsPassedOver) {
  platform.fileSystem().putPropertyList(
      hotKeysFile, PropertyList::dictionary({{"bad", "text"}, {"worse", PropertyList::Data{1}}}));
  store("good", keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  EXPECT_THAT(registered(), ElementsAre(std::pair("good", 1U)));
}

TEST_F(ItemHotKeysTest, AnItemIsInvokedByItsHotKeyWhateverIsInFront) {
  store(identifier(2), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item2: invoke"));
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
  EXPECT_FALSE(isActive());
}

TEST_F(ItemHotKeysTest, AHeldKeyInvokesOnce) {
  store(identifier(2), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  hold({KeyCodeLeftControl, keyCodeT});
  keyboard().repeat(keyCodeT);
  keyboard().repeat(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item2: invoke"));
}

TEST_F(ItemHotKeysTest, OfSeveralItemsTheFirstRegisteredActs) {
  provider->item(3).setUniqueID("same");
  provider->item(1).setUniqueID("same");
  quillbox->handleItemHotKeyInvoked("same");
  EXPECT_THAT(itemLog(), ElementsAre("item1: invoke"));
}

TEST_F(ItemHotKeysTest, AnItemMayLoseItsLastOwnerWhileItActs) {
  class Leaving : public Item {
   public:
    static std::shared_ptr<Leaving> create() { return std::shared_ptr<Leaving>(new Leaving); }
    void invoke() override {
      owner->reset();
      setName("still there");
    }
    std::shared_ptr<Leaving>* owner = nullptr;

   private:
    Leaving() : Item(Rect::make(0, 0, 10, 10), std::string("Leaving")) { setUniqueID("leaving"); }
  };
  auto item = Leaving::create();
  item->owner = &item;
  quillbox->handleItemHotKeyInvoked("leaving");
  EXPECT_FALSE(item);
}

TEST_F(ItemHotKeysTest, WithoutAnItemThePathIsOpened) {
  platform.fileSystem().putRaw("/home/user/notes.txt", "notes");
  store("/home/user/notes.txt", keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(platform.applicationControl().openedFiles(), ElementsAre("/home/user/notes.txt"));
}

TEST_F(ItemHotKeysTest, AnItemGoesBeforeThePath) {
  platform.fileSystem().putRaw("/home/user/notes.txt", "notes");
  provider->item(0).setUniqueID("/home/user/notes.txt");
  quillbox->handleItemHotKeyInvoked("/home/user/notes.txt");
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
}

TEST_F(ItemHotKeysTest, WithoutItemAndFileNothingHappens) {
  quillbox->handleItemHotKeyInvoked("/home/user/gone.txt");
  quillbox->handleItemHotKeyInvoked("");
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
}

TEST_F(ItemHotKeysTest, ClearingTakesTheHotKeyAway) {
  store(identifier(0), keyCodeT, EventFlagControl);
  store(identifier(1), keyCodeE, EventFlagControl);
  quillbox->maintainItemHotKeys();
  quillbox->clearItemHotKey(provider->item(0));
  EXPECT_FALSE(storage().shortcutForKey(identifier(0)));
  EXPECT_TRUE(storage().shortcutForKey(identifier(1)));
  EXPECT_FALSE(isRegistered(keyCodeT));
  EXPECT_TRUE(isRegistered(keyCodeE));
  typeControl(keyCodeT);
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(keyCodeT));
}

TEST_F(ItemHotKeysTest, ClearingAnItemWithoutOneWritesNothing) {
  quillbox->clearItemHotKey(provider->item(0));
  EXPECT_FALSE(platform.fileSystem().fileExistsAtPath(hotKeysFile));
}

TEST_F(ItemHotKeysTest, AnItemThatIsRemovedFromItsRowLosesItsHotKey) {
  store(identifier(1), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  const std::shared_ptr<Item> item = provider->items().at(1);
  ASSERT_TRUE(row().removeItemFromTabRow(item, false));
  EXPECT_FALSE(storage().shortcutForKey(item->hotKeyIdentifier()));
  EXPECT_FALSE(isRegistered(keyCodeT));
}

TEST_F(ItemHotKeysTest, AHotKeyMayTakeItselfAway) {
  class Clearing : public Item {
   public:
    static std::shared_ptr<Clearing> create() { return std::shared_ptr<Clearing>(new Clearing); }
    void invoke() override { quillbox->clearItemHotKey(*this); }

   private:
    Clearing() : Item(Rect::make(0, 0, 10, 10), std::string("Clearing")) {
      setUniqueID("clearing");
    }
  };
  const auto item = Clearing::create();
  store("clearing", keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_FALSE(isRegistered(keyCodeT));
}

TEST_F(ItemHotKeysTest, ACombinationOfAnotherProgramLeavesTheItemWithout) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  store(identifier(0), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), IsEmpty());
  EXPECT_TRUE(storage().shortcutForKey(identifier(0)));
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

TEST_F(ItemHotKeysTest, OfTwoItemsWithOneCombinationTheFirstHasIt) {
  store(identifier(0), keyCodeT, EventFlagControl);
  store(identifier(1), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  typeControl(keyCodeT);
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
}

TEST_F(ItemHotKeysTest, AKeyOfTheNavigationIsHadWhenThePanelHasGone) {
  open(ActivationMethodCommandTab);
  ASSERT_TRUE(isRegistered(KeyCodeSpace, HotKeyModifierCommand));
  store(identifier(0), KeyCodeSpace, EventFlagCommand);
  quillbox->maintainItemHotKeys();
  EXPECT_EQ(hotKeys().registered().hotKeys().front().carbonHotKey, nullptr);
  close();
  provider->itemLog->clear();
  keyboard().type(KeyCodeSpace, {KeyCodeLeftCommand});
  EXPECT_THAT(itemLog(), ElementsAre("item0: invoke"));
}

TEST_F(ItemHotKeysTest, WhatAnotherProgramHasIsNotTriedAgainWithThePanel) {
  platform.hotKeys().setOwnedByAnotherProgram(keyCodeT, HotKeyModifierControl);
  store(identifier(0), keyCodeT, EventFlagControl);
  quillbox->maintainItemHotKeys();
  const std::size_t entries = platform.log().size();
  open(ActivationMethodCommandTab);
  close();
  EXPECT_THAT(platform.log(), SizeIs(entries));
}

TEST(ItemHotKeysAtLaunch, StoredHotKeysAreInForceFromTheStart) {
  SimulatedPlatform platform;
  noteLaunchedBefore(platform);
  platform.fileSystem().putRaw("/home/user/notes.txt", "notes");
  MASShortcutStorage storage(platform.fileSystem(), platform.archiver());
  storage.setShortcut({keyCodeF5, 0}, "/home/user/notes.txt");
  const auto appDelegate = AppDelegate::create(platform);
  appDelegate->applicationDidFinishLaunching();
  platform.keyboard().type(keyCodeF5);
  EXPECT_THAT(platform.applicationControl().openedFiles(), ElementsAre("/home/user/notes.txt"));
  appDelegate->applicationWillTerminate();
}

TEST(ItemHotKeysAtLaunch, AllAreGivenBackAtTheEnd) {
  SimulatedPlatform platform;
  noteLaunchedBefore(platform);
  MASShortcutStorage storage(platform.fileSystem(), platform.archiver());
  storage.setShortcut({keyCodeF5, 0}, "item");
  {
    const auto appDelegate = AppDelegate::create(platform);
    appDelegate->applicationDidFinishLaunching();
    EXPECT_TRUE(platform.hotKeys().isRegistered(keyCodeF5, 0));
  }
  EXPECT_THAT(platform.hotKeys().registered(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
