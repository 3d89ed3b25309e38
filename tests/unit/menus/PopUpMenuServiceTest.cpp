// The pop-up menu over the panel: headings, the entry for more, keys, presses and the closing.

#include "Quillbox/activation/PopUpMenuService.h"

#include <algorithm>

#include "Quillbox/activation/EventMonitorProtocol.h"
#include "Quillbox/activation/MenuHelpers.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "QuillboxCommon/views/EventCaptureView.h"
#include "QuillboxCommon/views/MenuItemView.h"
#include "support/ActivationFixture.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Strings = std::vector<std::string>;

class RecordingDelegate : public MenuDelegate {
 public:
  void menuWillHighlightItem(Menu& menu, MenuItem* item) override {
    heard.push_back(menu.title() + ": " + (item ? item->title() : "nothing"));
  }
  void menuDidClose(Menu& menu) override {
    heard.push_back(menu.title() + " closed");
    wasDisplayedWhenItClosed = quillbox->popUpMenuIsBeingDisplayed();
  }
  Strings heard;
  bool wasDisplayedWhenItClosed = false;
};

/// Adds three entries when asked for more.
class MoreProvider : public MoreMenuItemDelegate {
 public:
  void moreMenuItemInvoked(MenuItem& item) override {
    ++invoked;
    for (const char* title : {"Fourth", "Fifth", "Sixth"}) {
      item.menu()->addItem(MenuItem::create(title));
    }
  }
  void moreMenuItemSelected(MenuItem& item) override { selected.push_back(item.title()); }
  int invoked = 0;
  Strings selected;
};

class PopUpMenuServiceTest : public ActivationFixture {
 protected:
  void SetUp() override {
    // A corner's panel stays without a key being held.
    open(ActivationMethodCorner);
    platform.runFor(0.5);
  }
  std::shared_ptr<MenuItem> add(const std::string& title, std::int64_t tag = 0) {
    auto item = MenuItem::create(title);
    item->setTag(tag);
    menu->addItem(item);
    return item;
  }
  std::shared_ptr<MenuItem> addMore() {
    auto item = add("...More...", MenuItemTagMore);
    item->setAction({"dummy", {}, moreProvider});
    return item;
  }
  void popUp(SimulatedMenuPresenter::Script script) {
    platform.menuPresenter().whenMenuOpens(std::move(script));
    quillbox->popUpMenu(menu, nullptr, {100, 100}, nullptr, delegate);
  }

  std::shared_ptr<Menu> menu = Menu::create("Menu");
  std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
  std::shared_ptr<MoreProvider> moreProvider = std::make_shared<MoreProvider>();
};

TEST_F(PopUpMenuServiceTest, BlocksInTheTrackingModeUntilTheMenuHasClosed) {
  add("One");
  bool ran = false;
  RunLoop::main().performAfterDelay(this, "default", 0, [&] { ran = true; });
  popUp([&](SimulatedMenuUser& user) {
    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::EventTracking);
    EXPECT_TRUE(quillbox->popUpMenuIsBeingDisplayed());
    user.rest(1);
    EXPECT_FALSE(ran) << "work of the default mode waits";
    user.escape();
  });
  EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
  EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
  platform.runPending();
  EXPECT_TRUE(ran);
}

TEST_F(PopUpMenuServiceTest, TheChosenActionComesAfterTheClosing) {
  const auto one = add("One");
  Strings order;
  one->setAction({"one", [&](MenuItem& item) {
                    order = delegate->heard;
                    order.push_back("performed " + item.title());
                    EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
                    EXPECT_EQ(RunLoop::main().currentMode(), RunLoopMode::Default);
                  }});
  popUp([](SimulatedMenuUser& user) { user.choose("One"); });
  EXPECT_THAT(order, ElementsAre("Menu: One", "Menu closed", "performed One"));
  EXPECT_TRUE(delegate->wasDisplayedWhenItClosed) << "the delegate hears first";
}

TEST_F(PopUpMenuServiceTest, WithoutADelegateTheMenuWorksAllTheSame) {
  delegate.reset();
  add("One");
  popUp([](SimulatedMenuUser& user) { user.choose("One"); });
  EXPECT_EQ(platform.menuPresenter().shown().back().chosen, "One");
  EXPECT_EQ(menu->delegate(), nullptr);
}

TEST_F(PopUpMenuServiceTest, NothingHappensWithoutAMenuOrWhileOneIsOpen) {
  quillbox->popUpMenu(nullptr, nullptr, {}, nullptr, delegate);
  EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
  add("One");
  const auto other = Menu::create("Other");
  other->addItem(MenuItem::create("Two"));
  popUp([&](SimulatedMenuUser& user) {
    quillbox->popUpMenu(other, nullptr, {}, nullptr, nullptr);
    EXPECT_EQ(user.menu(), menu);
    EXPECT_TRUE(quillbox->popUpMenuIsBeingDisplayed());
    user.escape();
  });
  EXPECT_EQ(platform.menuPresenter().shown().size(), 1U);
}

TEST_F(PopUpMenuServiceTest, AnEmptyMenuClosesAtOnce) {
  quillbox->popUpMenu(menu, nullptr, {}, nullptr, delegate);
  EXPECT_THAT(delegate->heard, ElementsAre("Menu closed"));
  EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
}

TEST_F(PopUpMenuServiceTest, AHeadingIsCentredGrayText) {
  add("A rather long entry of the menu");
  const auto heading = add("Window Scope", MenuItemTagGrayTitle);
  const double menuWidth = platform.menuPresenter().menuSize(*menu).width;
  popUp([&](SimulatedMenuUser& user) {
    EXPECT_THAT(user.shownItems(), ElementsAre("A rather long entry of the menu", "[view]"));
    const auto* const text = dynamic_cast<const LabelView*>(heading->view().get());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->frame(), Rect::make(0, 0, menuWidth - 10, 16));
    EXPECT_EQ(text->text(), "Window Scope");
    EXPECT_EQ(text->textColor(), Color::gray());
    EXPECT_EQ(text->horizontalAlignment(), TextAlignmentCenter);
    EXPECT_FALSE(text->renderBackground());
    EXPECT_FALSE(text->renderBorder());
    user.highlight("Window Scope");
    user.choose();
    EXPECT_TRUE(user.menuIsOpen()) << "a heading is not chosen";
    user.escape();
  });
}

class MoreItemTest : public PopUpMenuServiceTest {
 protected:
  MoreItemTest() {
    for (const char* title : {"First", "Second", "Third"}) add(title);
    more = addMore();
  }
  LabelView& text() const { return dynamic_cast<LabelView&>(*more->view()->subviews().at(0)); }

  std::shared_ptr<MenuItem> more;
};

TEST_F(MoreItemTest, ShowsItsOwnText) {
  const double menuWidth = platform.menuPresenter().menuSize(*menu).width;
  popUp([&](SimulatedMenuUser& user) {
    ASSERT_NE(dynamic_cast<MenuItemView*>(more->view().get()), nullptr);
    EXPECT_EQ(more->view()->frame(), Rect::make(0, 0, menuWidth - 10, 16));
    EXPECT_EQ(text().frame(), more->view()->frame());
    EXPECT_EQ(text().text(), "-- More --");
    EXPECT_EQ(text().textColor(), Color::black());
    EXPECT_EQ(text().horizontalAlignment(), TextAlignmentCenter);
    user.escape();
  });
  EXPECT_EQ(more->action().name, "moreMenuItemSelected");
}

TEST_F(MoreItemTest, RestingTwoThirdsOfASecondExpandsTheMenu) {
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("...More...");
    EXPECT_EQ(text().textColor(), Color::white());
    user.rest(0.659);
    EXPECT_EQ(moreProvider->invoked, 0);
    user.rest(0.001);
    EXPECT_EQ(moreProvider->invoked, 1);
    EXPECT_THAT(user.shownItems(),
                ElementsAre("First", "Second", "Third", "Fourth", "Fifth", "Sixth"));
    user.choose("Sixth");
  });
  EXPECT_EQ(platform.menuPresenter().shown().back().chosen, "Sixth");
  EXPECT_THAT(moreProvider->selected, IsEmpty());
}

TEST_F(MoreItemTest, LeavingItInTimeExpandsNothing) {
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("...More...");
    user.rest(0.5);
    user.highlight("Third");
    EXPECT_EQ(text().textColor(), Color::black());
    user.rest(2);
    EXPECT_EQ(moreProvider->invoked, 0);
    user.highlight("...More...");
    user.highlightNothing();
    EXPECT_EQ(text().textColor(), Color::black());
    user.rest(2);
    user.escape();
  });
  EXPECT_EQ(moreProvider->invoked, 0);
}

TEST_F(MoreItemTest, ComingBackCountsFromTheFirstTime) {
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("...More...");
    user.rest(0.3);
    user.highlight("Third");
    user.highlight("...More...");
    user.rest(0.36);
    EXPECT_EQ(moreProvider->invoked, 1);
    user.rest(1);
    user.escape();
  });
  EXPECT_EQ(moreProvider->invoked, 1);
}

TEST_F(MoreItemTest, ScrollingAnywhereExpandsAndTheScrollPassesOn) {
  popUp([&](SimulatedMenuUser& user) {
    platform.pointer().moveTo({5, 5});
    platform.pointer().scroll(0, -1);
    EXPECT_TRUE(platform.eventTap().answers().back().passedOn);
    EXPECT_EQ(user.shownItems().size(), 6U);
    platform.pointer().scroll(0, -1);
    EXPECT_EQ(moreProvider->invoked, 1) << "it is no longer on display";
    user.escape();
  });
}

TEST_F(MoreItemTest, ScrollingWithoutAMenuExpandsNothing) {
  popUp([](SimulatedMenuUser& user) { user.escape(); });
  platform.pointer().scroll(0, -1);
  EXPECT_EQ(moreProvider->invoked, 0);
}

TEST_F(MoreItemTest, ChoosingItTellsItsTargetAfterTheClosing) {
  popUp([](SimulatedMenuUser& user) { user.choose("...More..."); });
  EXPECT_THAT(moreProvider->selected, ElementsAre("...More..."));
  EXPECT_EQ(moreProvider->invoked, 0);
  platform.runFor(2);
  EXPECT_EQ(moreProvider->invoked, 0) << "the rest ended with the menu";
}

TEST_F(MoreItemTest, ATargetThatHasGoneIsNotAsked) {
  popUp([&](SimulatedMenuUser& user) {
    moreProvider.reset();
    user.highlight("...More...");
    user.rest(0.66);
    EXPECT_THAT(user.shownItems(), ElementsAre("First", "Second", "Third"));
    user.escape();
  });
}

TEST_F(MoreItemTest, HighlightsGoOnToTheDelegate) {
  popUp([](SimulatedMenuUser& user) {
    user.highlight("First");
    user.highlight("...More...");
    user.highlightNothing();
    user.escape();
  });
  EXPECT_THAT(delegate->heard,
              ElementsAre("Menu: First", "Menu: ...More...", "Menu: nothing", "Menu closed"));
}

// Keys and presses while it is open.

TEST_F(PopUpMenuServiceTest, KeysThatMenusUnderstandAreTheMenus) {
  for (const char* title : {"One", "Two"}) add(title);
  popUp([&](SimulatedMenuUser&) {
    keyboard().type(KeyCodeDown);
    keyboard().type(KeyCodeDown);
    EXPECT_EQ(menu->highlightedItem()->title(), "Two");
    keyboard().type(KeyCodeReturn);
  });
  EXPECT_EQ(platform.menuPresenter().shown().back().chosen, "Two");
  const auto selected = selectedName();
  platform.runFor(1);
  EXPECT_EQ(selectedName(), selected) << "the panel has not heard of them";
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
}

TEST_F(PopUpMenuServiceTest, EscapeClosesTheMenuAndLeavesThePanel) {
  add("One");
  popUp([&](SimulatedMenuUser& user) {
    keyboard().type(KeyCodeEscape);
    EXPECT_FALSE(user.menuIsOpen());
  });
  platform.runFor(1);
  EXPECT_TRUE(isActive());
  tap(KeyCodeEscape);
  EXPECT_FALSE(isActive());
}

TEST_F(PopUpMenuServiceTest, OtherKeysWaitUntilTheMenuHasClosed) {
  add("One");
  popUp([&](SimulatedMenuUser& user) {
    keyboard().type(KeyCodeQ);
    user.rest(0.5);
    EXPECT_EQ(countOf(provider->log, "keyDown 12"), 0);
    EXPECT_TRUE(user.menuIsOpen());
    user.escape();
  });
  platform.runPending();
  EXPECT_EQ(countOf(provider->log, "keyDown 12"), 1);
}

TEST_F(PopUpMenuServiceTest, APressBesideTheMenuClosesItAndNothingElse) {
  add("One");
  popUp([&](SimulatedMenuUser& user) {
    pointer().moveTo({720, 5});
    pointer().press();
    EXPECT_TRUE(platform.eventTap().answers().back().passedOn);
    EXPECT_FALSE(user.menuIsOpen());
    pointer().release();
  });
  platform.runFor(1);
  EXPECT_TRUE(isActive());
}

TEST_F(PopUpMenuServiceTest, MouseMonitorsComeBeforeTheMenu) {
  class Claiming : public EventMonitorProtocol {
   public:
    bool monitorMouseEvent(const TappedEvent&) override { return true; }
  };
  const auto monitor = std::make_shared<Claiming>();
  add("One");
  appDelegate->addMouseEventMonitor(monitor);
  popUp([&](SimulatedMenuUser& user) {
    pointer().press();
    EXPECT_TRUE(user.menuIsOpen()) << "the monitor has claimed the press";
    pointer().release();
    appDelegate->removeMouseEventMonitor(monitor);
    pointer().press();
    EXPECT_FALSE(user.menuIsOpen());
  });
}

TEST_F(PopUpMenuServiceTest, ForHalfASecondAfterTheClosingReleasesAreDropped) {
  class Releases : public EventCaptureViewDelegate {
   public:
    void mouseUpInEventCaptureView(const Event&, EventCaptureView&) override { ++count; }
    int count = 0;
  };
  Releases releases;
  EventCaptureView view(Rect::make(0, 0, 10, 10));
  view.setDelegate(&releases);
  add("One");
  popUp([](SimulatedMenuUser& user) { user.escape(); });
  platform.runFor(0.49);
  view.mouseUp({});
  EXPECT_EQ(releases.count, 0);
  platform.runFor(0.01);
  view.mouseUp({});
  EXPECT_EQ(releases.count, 1);
}

// Changes and submenus while it is open.

TEST_F(PopUpMenuServiceTest, WhatChangesIsShown) {
  const auto one = add("One"), two = add("Two");
  popUp([&](SimulatedMenuUser& user) {
    one->setState(true);
    two->setEnabled(false);
    menu->insertItem(MenuItem::separatorItem(), 1);
    add("Three")->setSubmenu(Menu::create());
    EXPECT_THAT(user.shownItems(), ElementsAre("* One", "-", "(Two)", "Three >"));
    user.highlight("Two");
    user.choose();
    EXPECT_TRUE(user.menuIsOpen());
    user.escape();
  });
}

TEST_F(PopUpMenuServiceTest, ASubmenuThatTheHighlightedItemGetsOpensAfterARest) {
  const auto folder = add("Folder");
  const auto submenu = Menu::create("Sub");
  submenu->addItem(MenuItem::create("File"));
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("Folder");
    user.rest(1);
    folder->setSubmenu(submenu);
    user.rest(0.24);
    EXPECT_EQ(user.menu(), menu);
    user.rest(0.01);
    EXPECT_EQ(user.menu(), submenu);
    user.highlight("File");
    EXPECT_EQ(menu->highlightedItem(), folder) << "the way there stays highlighted";
    EXPECT_EQ(submenu->highlightedItem()->title(), "File");
    user.choose();
  });
  EXPECT_EQ(platform.menuPresenter().shown().back().chosen, "File");
  EXPECT_EQ(menu->highlightedItem(), nullptr);
  EXPECT_THAT(delegate->heard, ElementsAre("Menu: Folder", "Menu closed"));
}

TEST_F(PopUpMenuServiceTest, LeavingItsItemClosesASubmenu) {
  const auto folder = add("Folder");
  add("Other");
  const auto submenu = Menu::create("Sub");
  const auto ofSubmenu = std::make_shared<RecordingDelegate>();
  submenu->setDelegate(ofSubmenu.get());
  submenu->addItem(MenuItem::create("File"));
  folder->setSubmenu(submenu);
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("Folder");
    user.openSubmenu();
    user.highlight("File");
    user.highlightInOuterMenu("Other");
    EXPECT_EQ(user.menu(), menu);
    user.escape();
  });
  EXPECT_THAT(ofSubmenu->heard, ElementsAre("Sub: File", "Sub closed"));
}

TEST_F(PopUpMenuServiceTest, CancellingFromASubmenuClosesAll) {
  const auto folder = add("Folder");
  const auto submenu = Menu::create("Sub");
  submenu->addItem(MenuItem::create("File"));
  folder->setSubmenu(submenu);
  popUp([&](SimulatedMenuUser& user) {
    user.highlight("Folder");
    user.openSubmenu();
    executeBlockAfterDelay([&] { submenu->cancelTracking(); }, 0.3);
    user.rest(0.3);
    EXPECT_FALSE(user.menuIsOpen());
  });
  EXPECT_EQ(platform.menuPresenter().shown().back().chosen, "");
}

TEST_F(PopUpMenuServiceTest, AnActionMayOpenTheNextMenu) {
  add("Next")->setAction({"next", [&](MenuItem&) {
                            const auto next = Menu::create("Next");
                            next->addItem(MenuItem::create("Last"));
                            platform.menuPresenter().whenMenuOpens(
                                [](SimulatedMenuUser& user) { user.choose("Last"); });
                            quillbox->popUpMenu(next, nullptr, {}, nullptr, nullptr);
                          }});
  popUp([](SimulatedMenuUser& user) { user.choose("Next"); });
  ASSERT_EQ(platform.menuPresenter().shown().size(), 2U);
  EXPECT_EQ(platform.menuPresenter().shown()[1].chosen, "Last");
  EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
}

// Where it opens.

class MenuLocationTest : public PopUpMenuServiceTest {
 protected:
  MenuLocationTest() {
    add("One");
    window.contentView()->addSubview(outer);
    outer->addSubview(anchor);
  }
  Point opened() {
    platform.menuPresenter().whenMenuOpens([](SimulatedMenuUser& user) { user.escape(); });
    quillbox->popUpMenu(menu, nullptr, {5, -10}, anchor.get(), nullptr);
    return platform.menuPresenter().shown().back().location;
  }

  Window window{platform.windowServer(), Rect::make(200, 100, 800, 600)};
  std::shared_ptr<View> outer = makeView(Rect::make(10, 20, 400, 400));
  /// The menu of one entry is 28 points high.
  std::shared_ptr<View> anchor = makeView(Rect::make(30, 40, 50, 50));
};

TEST_F(MenuLocationTest, TheLocationIsInTheCoordinatesOfTheView) {
  EXPECT_EQ(opened(), (Point{200 + 10 + 30 + 5, 100 + 20 + 40 - 10}));
}

TEST_F(MenuLocationTest, WithoutAViewItIsOnTheScreen) {
  popUp([](SimulatedMenuUser& user) { user.escape(); });
  EXPECT_EQ(platform.menuPresenter().shown().back().location, (Point{100, 100}));
}

TEST_F(MenuLocationTest, TooNearToTheTopItOpensAboveTheView) {
  // The top edge lies at 700: a menu may begin 138 points below that in sums of origins.
  anchor->setFrameOrigin({30, 552});
  EXPECT_EQ(opened().y, 100 + 20 + 552 - 10) << "just low enough";
  anchor->setFrameOrigin({30, 553});
  EXPECT_EQ(opened(), (Point{200 + 10 + 30 + 5, 100 + 20 + 553 + 28 + 50}));
}

TEST_F(MenuLocationTest, AViewInNoWindowCountsAsTooNear) {
  EXPECT_EQ(adjustedMenuLocation({5, -10}, 28, makeView(Rect::make(0, 0, 50, 50)).get()),
            (Point{5, 78}));
}

}  // namespace
}  // namespace qb::test
