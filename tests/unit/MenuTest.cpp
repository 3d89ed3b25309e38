#include "QuillboxCommon/views/Menu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TestPictures.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using Strings = std::vector<std::string>;
using Items = std::vector<std::shared_ptr<MenuItem>>;

/// Writes down what it hears as "changed Menu/Item".
class Observer : public MenuObserver {
 public:
  void menuItemChanged(Menu& menu, MenuItem& item) override { note("changed", menu, item); }
  void menuItemInserted(Menu& menu, MenuItem& item, std::size_t index) override {
    note("inserted", menu, item, " at " + std::to_string(index));
    if (onInserted) onInserted();
  }
  void menuItemRemoved(Menu& menu, MenuItem& item, std::size_t index) override {
    note("removed", menu, item, " at " + std::to_string(index));
    if (onRemoved) onRemoved();
  }
  void menuShouldCancelTracking(Menu& menu) override { heard.push_back("cancel " + menu.title()); }

  Strings heard;
  std::function<void()> onInserted, onRemoved;

 private:
  void note(const char* what, const Menu& menu, const MenuItem& item,
            const std::string& more = "") {
    heard.push_back(std::string(what) + " " + menu.title() + "/" + item.title() + more);
  }
};

class MenuTest : public testing::Test {
 protected:
  MenuTest() {
    menu->addItem(one);
    menu->addItem(two);
    menu->setObserver(&observer);
  }

  Observer observer;
  std::shared_ptr<Menu> menu = Menu::create("Main");
  std::shared_ptr<MenuItem> one = MenuItem::create("One");
  std::shared_ptr<MenuItem> two = MenuItem::create("Two");
};

TEST_F(MenuTest, ItemsAreMadePlainAndEnabled) {
  const auto item = MenuItem::create("Quit");
  EXPECT_EQ(item->title(), "Quit");
  EXPECT_FALSE(item->isSeparatorItem());
  EXPECT_TRUE(item->isEnabled());
  EXPECT_FALSE(item->state());
  EXPECT_EQ(item->tag(), 0);
  EXPECT_EQ(item->menu(), nullptr);
  EXPECT_EQ(item->submenu(), nullptr);
  EXPECT_TRUE(menu->autoenablesItems());
}

TEST_F(MenuTest, ASeparatorCannotBeChosen) {
  const auto separator = MenuItem::separatorItem();
  EXPECT_TRUE(separator->isSeparatorItem());
  EXPECT_FALSE(separator->isEnabled());
}

TEST_F(MenuTest, ItemsStandInOrderAndBelongToTheirMenu) {
  const auto first = MenuItem::create("First"), middle = MenuItem::create("Middle"),
             last = MenuItem::create("Last");
  menu->insertItem(first, 0);
  menu->insertItem(middle, 2);
  menu->insertItem(last, 99);
  EXPECT_EQ(menu->items(), (Items{first, one, middle, two, last}));
  EXPECT_EQ(middle->menu(), menu.get());
  EXPECT_EQ(observer.heard, (Strings{"inserted Main/First at 0", "inserted Main/Middle at 2",
                                     "inserted Main/Last at 4"}));
}

TEST_F(MenuTest, AnItemBelongsToOneMenu) {
  const auto other = Menu::create("Other");
  other->addItem(one);
  EXPECT_EQ(one->menu(), other.get());
  EXPECT_EQ(menu->items(), Items{two});
  EXPECT_EQ(observer.heard, Strings{"removed Main/One at 0"});
}

TEST_F(MenuTest, InsertingAnItemAgainMovesIt) {
  menu->addItem(one);
  EXPECT_EQ(menu->items(), (Items{two, one}));
  EXPECT_EQ(observer.heard, (Strings{"removed Main/One at 0", "inserted Main/One at 1"}));
}

TEST_F(MenuTest, NullAndStrangeItemsDoNothing) {
  menu->addItem(nullptr);
  menu->removeItem(*MenuItem::create("Stranger"));
  EXPECT_EQ(menu->items(), (Items{one, two}));
  EXPECT_EQ(observer.heard, Strings{});
}

TEST_F(MenuTest, RemovedItemsBelongToNone) {
  menu->removeItem(*one);
  EXPECT_EQ(one->menu(), nullptr);
  EXPECT_EQ(menu->items(), Items{two});
  menu->addItem(one);
  observer.heard.clear();
  menu->removeAllItems();
  EXPECT_EQ(two->menu(), nullptr);
  EXPECT_TRUE(menu->items().empty());
  EXPECT_EQ(observer.heard, (Strings{"removed Main/One at 1", "removed Main/Two at 0"}));
}

TEST_F(MenuTest, AnItemHeldByItsMenuAloneLivesThroughItsRemoval) {
  MenuItem& item = *one;
  one.reset();
  menu->removeItem(item);
  EXPECT_EQ(observer.heard, Strings{"removed Main/One at 0"});
}

TEST_F(MenuTest, ItemsOutliveTheirMenu) {
  menu.reset();
  EXPECT_EQ(one->menu(), nullptr);
  one->setTitle("Still here");
  EXPECT_EQ(observer.heard, Strings{});
}

TEST_F(MenuTest, ItemsAreFoundByTagAndTitle) {
  const auto again = MenuItem::create("Two");
  menu->addItem(again);
  two->setTag(29485);
  again->setTag(29485);
  EXPECT_EQ(menu->itemWithTag(29485), two);
  EXPECT_EQ(menu->itemWithTag(1), nullptr);
  EXPECT_EQ(menu->itemWithTitle("Two"), two);
  EXPECT_EQ(menu->itemWithTitle("Three"), nullptr);
}

TEST_F(MenuTest, TheObserverHearsOfEachChangeOnce) {
  AttributedString attributed;
  attributed.append("One", Font::boldSystemFontOfSize(13));
  const Image image = imageOfSize(16, 16);
  const auto submenu = Menu::create("Sub");
  const auto view = makeView({});
  using Change = std::function<void(MenuItem&)>;
  const Change changes[] = {
      [](MenuItem& item) { item.setTitle("Renamed"); },
      [&](MenuItem& item) { item.setAttributedTitle(attributed); },
      [](MenuItem& item) { item.setState(true); },
      [](MenuItem& item) { item.setEnabled(false); },
      [&](MenuItem& item) { item.setImage(image); },
      [&](MenuItem& item) { item.setOnStateImage(image); },
      [&](MenuItem& item) { item.setSubmenu(submenu); },
      [&](MenuItem& item) { item.setView(view); },
      [](MenuItem& item) { item.setTitle("One"); },
  };
  for (const Change& change : changes) {
    change(*one);
    const std::string expected = "changed Main/" + one->title();
    EXPECT_EQ(observer.heard, Strings{expected}) << "change " << (&change - changes);
    observer.heard.clear();
    change(*one);
    EXPECT_EQ(observer.heard, Strings{}) << "change " << (&change - changes);
  }
}

TEST_F(MenuTest, AnItemOutsideOfAnyMenuChangesQuietly) {
  menu->removeItem(*one);
  observer.heard.clear();
  one->setTitle("Alone");
  EXPECT_EQ(observer.heard, Strings{});
  EXPECT_EQ(one->title(), "Alone");
}

TEST_F(MenuTest, ChangesOfASubmenuComeToTheNearestObserver) {
  const auto submenu = Menu::create("Sub");
  const auto entry = MenuItem::create("Entry");
  one->setSubmenu(submenu);
  observer.heard.clear();
  submenu->addItem(entry);
  entry->setState(true);
  EXPECT_EQ(observer.heard, (Strings{"inserted Sub/Entry at 0", "changed Sub/Entry"}));

  Observer own;
  submenu->setObserver(&own);
  entry->setState(false);
  submenu->removeItem(*entry);
  EXPECT_EQ(own.heard, (Strings{"changed Sub/Entry", "removed Sub/Entry at 0"}));
  EXPECT_EQ(observer.heard.size(), 2U);
}

TEST_F(MenuTest, ASubmenuHangsInOneItem) {
  const auto submenu = Menu::create("Sub");
  one->setSubmenu(submenu);
  EXPECT_EQ(submenu->supermenuItem(), one);
  two->setSubmenu(submenu);
  EXPECT_EQ(one->submenu(), nullptr);
  EXPECT_EQ(submenu->supermenuItem(), two);
  two->setSubmenu(nullptr);
  EXPECT_EQ(submenu->supermenuItem(), nullptr);
}

TEST_F(MenuTest, CancellingReachesTheMenuThatIsShown) {
  const auto sub = Menu::create("Sub"), deep = Menu::create("Deep");
  const auto entry = MenuItem::create("Entry");
  Observer ofSub;
  one->setSubmenu(sub);
  sub->addItem(entry);
  entry->setSubmenu(deep);
  sub->setObserver(&ofSub);
  observer.heard.clear();

  menu->cancelTracking();
  deep->cancelTracking();
  EXPECT_EQ(observer.heard, (Strings{"cancel Main", "cancel Main"}));
  EXPECT_EQ(ofSub.heard, Strings{});

  menu->setObserver(nullptr);
  deep->cancelTracking();
  EXPECT_EQ(ofSub.heard, Strings{"cancel Sub"}) << "shown on its own";

  sub->setObserver(nullptr);
  deep->cancelTracking();
  EXPECT_EQ(observer.heard.size(), 2U);
}

TEST_F(MenuTest, ASubmenuTakenAwayWhileOpenCancelsNothingElse) {
  const auto submenu = Menu::create("Sub");
  one->setSubmenu(submenu);
  menu->removeItem(*one);
  observer.heard.clear();
  submenu->cancelTracking();
  EXPECT_EQ(observer.heard, Strings{});
}

TEST_F(MenuTest, TheObserverMayChangeTheMenuOnTheWay) {
  observer.onRemoved = [&] {
    observer.onRemoved = nullptr;
    menu->removeAllItems();
  };
  menu->addItem(MenuItem::create("Three"));
  menu->removeAllItems();
  EXPECT_TRUE(menu->items().empty());
}

TEST_F(MenuTest, TheObserverMayDropTheMenu) {
  observer.onRemoved = [&] { menu.reset(); };
  menu->removeAllItems();
  EXPECT_EQ(menu, nullptr);
  EXPECT_EQ(one->menu(), nullptr);
}

TEST(MenuItemActionTest, TheActionIsNamedAndGetsItsItem) {
  MenuItem* acted = nullptr;
  const auto item =
      MenuItem::create("Quit", {"quitKeyPressed", [&](MenuItem& chosen) { acted = &chosen; }});
  EXPECT_EQ(item->action().name, "quitKeyPressed");
  item->performAction();
  EXPECT_EQ(acted, item.get());
}

TEST(MenuItemActionTest, ADisabledItemOrOneWithoutActionDoesNothing) {
  int performed = 0;
  const auto item = MenuItem::create("Quit", {"quit", [&](MenuItem&) { ++performed; }});
  item->setEnabled(false);
  item->performAction();
  EXPECT_EQ(performed, 0);
  MenuItem::create("Plain")->performAction();
}

TEST(MenuItemActionTest, TheActionMayRemoveItsItemAndReplaceItself) {
  const auto menu = Menu::create();
  int performed = 0;
  menu->addItem(MenuItem::create("More", {"more", [&](MenuItem& item) {
                                            item.setAction({});
                                            item.menu()->removeItem(item);
                                            ++performed;
                                          }}));
  menu->items().front()->performAction();
  EXPECT_EQ(performed, 1);
  EXPECT_TRUE(menu->items().empty());
}

TEST(MenuItemTest, AnItemCarriesAnObject) {
  const auto item = MenuItem::create("Folder");
  EXPECT_FALSE(item->representedObject().has_value());
  item->setRepresentedObject(std::string("/home"));
  EXPECT_EQ(std::any_cast<std::string>(item->representedObject()), "/home");
}

}  // namespace
}  // namespace qb::test
