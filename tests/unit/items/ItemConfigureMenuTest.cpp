#include <gmock/gmock.h>

#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/managers/DecorationManager.h"
#include "QuillboxCommon/views/GridView.h"
#include "support/HotKeysFixture.h"
#include "support/MenuTitles.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The item of a test row, which can be decorated if told so.
class ConfigurableItem : public Item {
 public:
  ConfigurableItem() : Item(Rect::make(0, 0, 42, 42), std::string("Letters")) {}
  bool isDecorateable = false;
  int invocations = 0;
  bool decorateable() const override { return isDecorateable; }
  Image getBaseIconImage() const override {
    return quillbox->platform().graphics().imageNamed("Base");
  }
  void invoke() override { ++invocations; }
};

class ItemConfigureMenuTest : public HotKeysFixture {
 protected:
  void giveHotKey() { store(item->hotKeyIdentifier(), keyCodeT, EventFlagControl); }
  /// Chooses the entry of that title, as the menu does when it has closed.
  void choose(const std::string& title) {
    for (const auto& entry : item->configureMenuItems()) {
      if (entry->title() == title) return entry->performAction();
    }
    FAIL() << title << " is not in the menu";
  }
  std::shared_ptr<Menu> hotKeyMenu() { return item->configureMenuItems().front()->submenu(); }

  std::shared_ptr<ConfigurableItem> item = std::make_shared<ConfigurableItem>();
};

TEST_F(ItemConfigureMenuTest, HasTheEntriesThatApplyInTheirOrder) {
  struct Case {
    bool decorateable, hasHotKey, removable;
    std::vector<std::string> titles;
  };
  const std::vector<Case> cases = {
      {false, false, false, {"Set Hot Key..."}},
      {false, true, false, {"Hot Key"}},
      {true, false, false, {"Decorate", "Set Hot Key..."}},
      {false, false, true, {"Set Hot Key...", "Remove from Tab Row...."}},
      {true, true, true, {"Decorate", "Hot Key", "Remove from Tab Row...."}},
  };
  for (const Case& each : cases) {
    item->isDecorateable = each.decorateable;
    item->setRemovable(each.removable);
    storage().removeObjectForKey(item->hotKeyIdentifier());
    if (each.hasHotKey) giveHotKey();
    EXPECT_EQ(titlesOf(item->configureMenuItems()), each.titles);
  }
}

TEST_F(ItemConfigureMenuTest, AllEntriesAreEnabledAndTheItems) {
  item->isDecorateable = true;
  item->setRemovable(true);
  std::vector<std::string> actions;
  for (const auto& entry : item->configureMenuItems()) {
    EXPECT_TRUE(entry->isEnabled());
    EXPECT_EQ(entry->action().target.lock(), item);
    actions.push_back(entry->action().name);
  }
  EXPECT_THAT(actions,
              ElementsAre("decorate", "setHotKeySelected", "removeItemFromTabRowSelected"));
}

TEST_F(ItemConfigureMenuTest, AnActionOfAnItemThatHasGoneDoesNothing) {
  const auto entries = item->configureMenuItems();
  item.reset();
  for (const auto& entry : entries) entry->performAction();
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

TEST_F(ItemConfigureMenuTest, TheDecorationOpensItsMenu) {
  item->isDecorateable = true;
  const auto entry = item->configureMenuItems().front();
  EXPECT_EQ(entry->tag(), MenuItemTagDecorate);
  ASSERT_NE(entry->submenu(), nullptr);
  EXPECT_EQ(entry->submenu()->title(), "Decorate");
  EXPECT_EQ(entry->submenu()->items().size(), 5U);
  entry->performAction();
  EXPECT_FALSE(quillbox->decorationManager().tintColorForItem(*item));
}

TEST_F(ItemConfigureMenuTest, TrackingGivesTheHeadingsOfTheDecorationTheirLook) {
  item->isDecorateable = true;
  const auto menu = Menu::create();
  const auto entry = item->configureMenuItems().front();
  menu->addItem(entry);
  EXPECT_EQ(entry->submenu()->items()[0]->view(), nullptr);
  item->menuTrackingWillBegin(*menu);
  EXPECT_NE(entry->submenu()->items()[0]->view(), nullptr);
  EXPECT_NE(entry->submenu()->items()[3]->view(), nullptr);
  item->menuTrackingDidFinish(*menu);
}

TEST_F(ItemConfigureMenuTest, RemovalIsConfirmedByTheRowsProvider) {
  item->setRemovable(true);
  item->setTabRow(host().tabRows().front());
  provider->log.clear();
  choose("Remove from Tab Row....");
  EXPECT_EQ(countOf(provider->log, "removeItem Letters with confirmation"), 1);
}

TEST_F(ItemConfigureMenuTest, RemovalOfAnItemOfNoRowDoesNothing) {
  item->setRemovable(true);
  choose("Remove from Tab Row....");
}

// The hot key.

TEST_F(ItemConfigureMenuTest, WithoutAHotKeyItsEntryHasNoSubmenu) {
  const auto entry = item->configureMenuItems().front();
  EXPECT_EQ(entry->title(), "Set Hot Key...");
  EXPECT_EQ(entry->submenu(), nullptr);
}

TEST_F(ItemConfigureMenuTest, WithAHotKeyItsEntryShowsChangesAndClearsIt) {
  giveHotKey();
  const auto entry = item->configureMenuItems().front();
  EXPECT_EQ(entry->action().name, "setHotKeySelected");
  const auto menu = entry->submenu();
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->title(), "Hot Key");
  EXPECT_FALSE(menu->autoenablesItems());
  EXPECT_THAT(titlesOf(menu->items()), ElementsAre("", "-", "Clear Hot Key"));
  EXPECT_EQ(menu->items()[0]->action().name, "setHotKeySelected");
  EXPECT_EQ(menu->items()[0]->action().target.lock(), item);
  EXPECT_EQ(menu->items()[2]->action().name, "clearHotKey");
  EXPECT_EQ(menu->items()[2]->action().target.lock(), item);
}

TEST_F(ItemConfigureMenuTest, TheTileShowsTheKeys) {
  giveHotKey();
  const auto grid = std::dynamic_pointer_cast<GridView>(hotKeyMenu()->items()[0]->view());
  ASSERT_NE(grid, nullptr);
  const auto& picture = dynamic_cast<const ImageView&>(*grid->items().at(0)->view);
  EXPECT_EQ(picture.image().size(), (Size{110, 24}));
  std::vector<std::string> texts;
  for (const auto& operation : simulatedImageOperations(picture.image())) {
    if (operation.kind == DrawOperation::Kind::Text) texts.push_back(operation.text);
  }
  EXPECT_THAT(texts, ElementsAre("Ctrl", "T"));
}

TEST_F(ItemConfigureMenuTest, SettingAHotKeyMakesItWork) {
  platform.dialogs().answerAlert([this](AlertOnScreen& alert) {
    typeControl(keyCodeT);
    alert.pressReturn();
  });
  choose("Set Hot Key...");
  EXPECT_EQ(platform.dialogs().shownAlerts().at(0).informativeText,
            "Please define the Hot Key for Letters:");
  EXPECT_TRUE(storage().shortcutForKey(item->uniqueID()));
  EXPECT_EQ(item->invocations, 0);
  typeControl(keyCodeT);
  EXPECT_EQ(item->invocations, 1);
}

TEST_F(ItemConfigureMenuTest, ClearingAHotKeyEndsItAndSaysSo) {
  giveHotKey();
  quillbox->maintainItemHotKeys();
  const auto windows = platform.windowServer().visibleWindows().size();
  hotKeyMenu()->items()[2]->performAction();
  EXPECT_FALSE(storage().shortcutForKey(item->uniqueID()));
  EXPECT_FALSE(isRegistered(keyCodeT));
  platform.runFor(0.01);
  ASSERT_EQ(platform.windowServer().visibleWindows().size(), windows + 1);
  EXPECT_THAT(platform.windowServer().paint(*platform.windowServer().windows().back()).texts(),
              ElementsAre("Hot Key Cleared", "Hot Key Cleared"));
  platform.runFor(2.1);
  EXPECT_EQ(platform.windowServer().visibleWindows().size(), windows);
}

}  // namespace
}  // namespace qb::test
