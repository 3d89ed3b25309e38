#include <deque>
#include <string>
#include <vector>

#include "ContractTest.h"
#include "Platform/Displays.h"
#include "Platform/MenuPresenter.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Notes what a menu's delegate hears, under the menu's title.
class Ears : public MenuDelegate {
 public:
  explicit Ears(std::vector<std::string>& heard) : heard_(heard) {}
  void menuWillHighlightItem(Menu& menu, MenuItem* item) override {
    heard_.push_back(menu.title() + ": " + (item ? item->title() : "nothing"));
  }
  void menuDidClose(Menu& menu) override { heard_.push_back(menu.title() + " closed"); }

 private:
  std::vector<std::string>& heard_;
};

/// What happens while the menu is open is told ahead, step by step. A step waits until what came
/// before has had its effect.
class MenusContract : public ContractTest {
 protected:
  MenusContract() { menu_->setDelegate(&ears_); }

  MenuPresenter& presenter() { return platform_.menuPresenter(); }
  std::shared_ptr<MenuItem> add(const std::shared_ptr<Menu>& menu, const std::string& title) {
    auto item =
        MenuItem::create(title, {"note", [this](MenuItem& chosen) {
                                   heard_.push_back("performed " + chosen.title());
                                   EXPECT_FALSE(presenter().menuIsOpen());
                                   EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
                                 }});
    menu->addItem(item);
    return item;
  }
  std::shared_ptr<MenuItem> add(const std::string& title) { return add(menu_, title); }
  std::shared_ptr<Menu> addSubmenu(const std::shared_ptr<MenuItem>& item) {
    auto submenu = Menu::create("Submenu");
    submenu->setDelegate(&ears_);
    item->setSubmenu(submenu);
    return submenu;
  }

  bool press(std::uint16_t keyCode) {
    Event event;
    event.type = EventTypeKeyDown;
    event.keyCode = keyCode;
    return presenter().keyDown(event);
  }
  static bool isHighlighted(const MenuItem& item) {
    return item.menu() != nullptr && item.menu()->highlightedItem().get() == &item;
  }

  void then(std::function<void()> action) { when(nullptr, std::move(action)); }
  void when(const std::shared_ptr<MenuItem>& highlighted, std::function<void()> action) {
    steps_.push_back(
        {[highlighted] { return !highlighted || isHighlighted(*highlighted); }, std::move(action)});
  }
  void whenPress(const std::shared_ptr<MenuItem>& highlighted, std::uint16_t keyCode) {
    when(highlighted, [this, keyCode] { EXPECT_TRUE(press(keyCode)); });
  }
  bool popUp() {
    desktop_->letNextMenuStayOpen();
    limit_ = RunLoop::main().now() + longestStep;
    const auto timer = RunLoop::main().scheduleTimer(
        lookInterval, true, [this](RunLoopTimer&) { goOn(); }, RunLoopMode::EventTracking);
    const double top = platform_.displays().screens().front().frame.maxY();
    const bool chosen = presenter().popUpMenu(menu_, nullptr, {100, top - 100});
    timer->invalidate();
    EXPECT_THAT(steps_, IsEmpty()) << "the menu has closed too early";
    steps_.clear();
    return chosen;
  }

  const std::shared_ptr<Menu> menu_ = Menu::create("Menu");
  std::vector<std::string> heard_;
  Ears ears_{heard_};

 private:
  struct Step {
    std::function<bool()> condition;
    std::function<void()> action;
  };
  static constexpr TimeInterval lookInterval = 0.01;
  static constexpr TimeInterval longestStep = 60;

  void goOn() {
    if (!steps_.empty() && steps_.front().condition()) {
      const Step step = std::move(steps_.front());
      steps_.pop_front();
      limit_ = RunLoop::main().now() + longestStep;
      step.action();
    } else if (RunLoop::main().now() > limit_) {
      ADD_FAILURE() << "a step waits for ever, or the menu stays open";
      steps_.clear();
      menu_->cancelTracking();
    }
  }

  std::deque<Step> steps_;
  Moment limit_ = 0;
};

TEST_F(MenusContract, KeysHighlightAndReturnChoosesOnceTheMenuHasClosed) {
  const auto one = add("One"), two = add("Two");
  then([&] {
    EXPECT_TRUE(presenter().menuIsOpen());
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::EventTracking);
    press(KeyCodeDown);
  });
  whenPress(one, KeyCodeDown);
  whenPress(two, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_FALSE(presenter().menuIsOpen());
  EXPECT_THAT(heard_, ElementsAre("Menu: One", "Menu: Two", "Menu closed", "performed Two"));
}

TEST_F(MenusContract, KeysPassOverWhatCannotBeChosen) {
  add("Off")->setEnabled(false);
  const auto one = add("One");
  menu_->addItem(MenuItem::separatorItem());
  add("Off too")->setEnabled(false);
  const auto two = add("Two");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeDown);
  whenPress(two, KeyCodeUp);
  whenPress(one, KeyCodeEnd);
  whenPress(two, KeyCodeHome);
  whenPress(one, KeyCodeEscape);
  EXPECT_FALSE(popUp());
}

TEST_F(MenusContract, TheArrowsGoRound) {
  const auto one = add("One");
  add("Two");
  const auto three = add("Three");
  whenPress(nullptr, KeyCodeUp);
  whenPress(three, KeyCodeDown);
  whenPress(one, KeyCodeUp);
  whenPress(three, KeyCodeEscape);
  EXPECT_FALSE(popUp());
}

TEST_F(MenusContract, EscapeCancels) {
  const auto one = add("One");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeEscape);
  EXPECT_FALSE(popUp());
  EXPECT_FALSE(presenter().menuIsOpen());
  EXPECT_EQ(heard_.back(), "Menu closed");
}

TEST_F(MenusContract, ItIsClosedFromCodeWithoutAChoice) {
  const auto one = add("One");
  whenPress(nullptr, KeyCodeDown);
  when(one, [&] { menu_->cancelTracking(); });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(heard_.back(), "Menu closed");
}

TEST_F(MenusContract, OnlyKeysThatMenusUnderstandAreTaken) {
  add("One");
  EXPECT_FALSE(press(KeyCodeDown)) << "no menu is open";
  then([&] {
    EXPECT_FALSE(press(KeyCodeQ));
    EXPECT_TRUE(press(KeyCodeEscape));
  });
  EXPECT_FALSE(popUp());
}

TEST_F(MenusContract, AChoiceInASubmenuClosesAll) {
  const auto one = add("One");
  const auto submenu = addSubmenu(one);
  const auto inner = add(submenu, "Inner"), other = add(submenu, "Other");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeRight);
  when(inner, [&] {
    EXPECT_TRUE(isHighlighted(*one)) << "the way to the submenu stays highlighted";
    press(KeyCodeDown);
  });
  whenPress(other, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_THAT(heard_, ElementsAre("Menu: One", "Submenu: Inner", "Submenu: Other", "Submenu closed",
                                  "Menu closed", "performed Other"));
}

TEST_F(MenusContract, ReturnOnAnItemWithASubmenuOpensThat) {
  const auto one = add("One");
  const auto submenu = addSubmenu(one);
  add(submenu, "Off")->setEnabled(false);
  const auto inner = add(submenu, "Inner");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeReturn);
  whenPress(inner, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_EQ(heard_.back(), "performed Inner");
}

TEST_F(MenusContract, EscapeAndLeftCloseASubmenuFirst) {
  const auto one = add("One"), two = add("Two");
  const auto submenu = addSubmenu(one);
  const auto inner = add(submenu, "Inner");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeRight);
  whenPress(inner, KeyCodeEscape);
  then([&] {
    EXPECT_TRUE(presenter().menuIsOpen());
    EXPECT_TRUE(isHighlighted(*one));
    press(KeyCodeRight);
  });
  whenPress(inner, KeyCodeLeft);
  whenPress(one, KeyCodeDown);
  whenPress(two, KeyCodeEscape);
  EXPECT_FALSE(popUp());
}

TEST_F(MenusContract, ClosedFromCodeItTakesItsSubmenuAlong) {
  const auto one = add("One");
  const auto submenu = addSubmenu(one);
  const auto inner = add(submenu, "Inner");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeRight);
  when(inner, [&] { submenu->cancelTracking(); });
  EXPECT_FALSE(popUp());
  EXPECT_THAT(heard_, ElementsAre("Menu: One", "Submenu: Inner", "Submenu closed", "Menu closed"));
}

TEST_F(MenusContract, ASubmenuThatGoesClosesAndTheMenuStays) {
  const auto one = add("One"), two = add("Two");
  const auto inner = add(addSubmenu(one), "Inner");
  whenPress(nullptr, KeyCodeDown);
  whenPress(one, KeyCodeRight);
  when(inner, [&] { one->setSubmenu(nullptr); });
  then([&] {
    EXPECT_TRUE(presenter().menuIsOpen());
    press(KeyCodeDown);
  });
  whenPress(two, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_EQ(heard_.back(), "performed Two");
}

TEST_F(MenusContract, WhatComesAndGoesWhileItIsOpenCounts) {
  const auto one = add("One"), two = add("Two"), three = add("Three");
  std::shared_ptr<MenuItem> between;
  whenPress(nullptr, KeyCodeDown);
  when(one, [&] {
    between = MenuItem::create("Between");
    menu_->insertItem(between, 1);
    menu_->removeItem(*two);
    three->setEnabled(false);
    press(KeyCodeDown);
  });
  then([&] { EXPECT_TRUE(isHighlighted(*between)); });
  whenPress(nullptr, KeyCodeDown);
  when(one, [&] {
    three->setEnabled(true);
    three->setTitle("Last");
    press(KeyCodeUp);
  });
  whenPress(three, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_EQ(heard_.back(), "performed Last");
}

TEST_F(MenusContract, AHighlightedItemThatGoesIsNotHighlightedAnyMore) {
  const auto one = add("One"), two = add("Two");
  whenPress(nullptr, KeyCodeDown);
  when(one, [&] {
    menu_->removeItem(*one);
    EXPECT_EQ(menu_->highlightedItem(), nullptr);
    press(KeyCodeEnd);
  });
  whenPress(two, KeyCodeReturn);
  EXPECT_TRUE(popUp());
  EXPECT_EQ(heard_.back(), "performed Two");
}

TEST_F(MenusContract, TimersOfTheDefaultModeStandStillMeanwhile) {
  add("One");
  std::vector<std::string> order;
  RunLoop::main().performAfterDelay(this, "default", 0, [&] { order.push_back("default mode"); });
  executeBlockAfterDelay(
      [&] {
        order.push_back("main queue");
        menu_->cancelTracking();
      },
      0.05);
  EXPECT_FALSE(popUp());
  ASSERT_TRUE(waitUntil([&] { return order.size() == 2; }));
  EXPECT_THAT(order, ElementsAre("main queue", "default mode"));
}

TEST_F(MenusContract, AMenuWithoutItemsDoesNotOpenButCloses) {
  EXPECT_FALSE(popUp());
  EXPECT_THAT(heard_, ElementsAre("Menu closed"));
}

TEST_F(MenusContract, WhileOneIsOpenNoOtherOpens) {
  add("One");
  const auto second = Menu::create("Second");
  second->addItem(MenuItem::create("Entry"));
  second->setDelegate(&ears_);
  then([&] {
    EXPECT_FALSE(presenter().popUpMenu(second, nullptr, {10, 10}));
    press(KeyCodeEscape);
  });
  EXPECT_FALSE(popUp());
  EXPECT_THAT(heard_, ElementsAre("Menu closed"));
}

}  // namespace
}  // namespace qb
