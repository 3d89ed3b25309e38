#include <QApplication>
#include <QPalette>
#include <QScreen>

#include "MenuDesk.h"
#include "Platform/KeyCodes.h"
#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/session/DesktopApplicationControl.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/MenuItemView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "XServer.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using Strings = std::vector<std::string>;

class MenuPresenterTest : public MenuDesk {
 protected:
  /// The menu is on the screen.
  std::function<bool()> shown() {
    return [this] { return isShown(*menu); };
  }
  std::function<bool()> highlighted(const std::shared_ptr<MenuItem>& item) {
    return [this, item] { return isHighlighted(*item); };
  }
  std::function<bool()> asHighAsTheScreen() {
    return [this] {
      const int screen = innermost()->screen()->geometry().height();
      return innermost()->height() > screen * 3 / 4 && innermost()->height() <= screen;
    };
  }
  double scale() const { return displays.screens().front().backingScaleFactor; }
};

TEST_F(MenuPresenterTest, AClickChoosesTheItemAfterTheMenuHasClosed) {
  Strings order;
  auto window = static_cast<xcb_window_t>(XCB_NONE);
  const auto one = add("One"), two = add("Two");
  two->setAction({"two", [&](MenuItem& item) {
                    order = delegate.heard;
                    order.push_back("performed " + item.title());
                    EXPECT_EQ(loop.currentMode(), RunLoopMode::Default);
                    EXPECT_FALSE(presenter.menuIsOpen());
                  }});
  when("shown", shown(), [&] {
    EXPECT_TRUE(presenter.menuIsOpen());
    EXPECT_EQ(loop.currentMode(), RunLoopMode::EventTracking);
    window = static_cast<xcb_window_t>(innermost()->winId());
    pointAt(*one);
  });
  when("one highlighted", highlighted(one), [&] { pointAt(*two); });
  when("two highlighted", highlighted(two), [&] { click(); });
  EXPECT_TRUE(popUp());
  EXPECT_THAT(order, ElementsAre("highlight One", "highlight Two", "closed", "performed Two"));
  EXPECT_TRUE(windowServer.isOwnWindow(window)) << "the press may be heard of only now";
  EXPECT_FALSE(windowServer.isOwnWindow(user.root()));
  EXPECT_FALSE(windowServer.isOwnWindow(xcb_generate_id(user.xcb()))) << "another program's";
}

TEST_F(MenuPresenterTest, TheMenuIsAsLargeAsMeasured) {
  add("Short");
  add("A title that is a good deal longer");
  menu->addItem(MenuItem::separatorItem());
  AttributedString attributed;
  attributed.append("Exempt ", Font::systemFontOfSize(14));
  attributed.append("Editor", Font::boldSystemFontOfSize(14));
  add("Exempt")->setAttributedTitle(attributed);
  const auto withView = add("View");
  withView->setView(std::make_shared<RoundedRectangleView>(Rect::make(0, 0, 180, 40)));
  const Size measured = presenter.menuSize(*menu);
  when("shown", shown(), [&] {
    EXPECT_EQ(innermost()->width(), measured.width);
    EXPECT_EQ(innermost()->height(), measured.height);
    menu->cancelTracking();
  });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, TheTopLeftCornerOrThePositioningItemComesToLieAtTheLocation) {
  add("One");
  const auto two = add("Two");
  const double top = displays.screens().front().frame.maxY();
  QPoint corner, item;
  when("shown", shown(), [&] {
    corner = innermost()->pos();
    menu->cancelTracking();
  });
  popUpAt({150, top - 120});
  EXPECT_EQ(corner, QPoint(150, 120));
  const auto timer = loop.scheduleTimer(
      0.02, true,
      [&](RunLoopTimer&) {
        if (!isShown(*menu)) return;
        item = innermost()->mapToGlobal(innermost()->geometryOf(*two).topLeft());
        menu->cancelTracking();
      },
      RunLoopMode::EventTracking);
  presenter.popUpMenu(menu, two, {150, top - 120});
  timer->invalidate();
  EXPECT_EQ(item, QPoint(150, 120));
}

TEST_F(MenuPresenterTest, TimersOfTheDefaultModeStandStillWhileItIsOpen) {
  add("One");
  int inDefaultMode = 0, onMainQueue = 0;
  loop.performAfterDelay(this, "test", 0, [&] { ++inDefaultMode; });
  executeBlockAfterDelay([&] { ++onMainQueue; }, 0.01);
  when(
      "the main queue served", [&] { return onMainQueue > 0; }, [&] { menu->cancelTracking(); });
  popUp();
  EXPECT_EQ(inDefaultMode, 0);
  EXPECT_EQ(onMainQueue, 1);
  loop.cancelPreviousPerformRequests(this);
}

TEST_F(MenuPresenterTest, AMenuWithoutItemsDoesNotOpen) {
  EXPECT_FALSE(presenter.popUpMenu(menu, nullptr, {100, 100}));
  EXPECT_THAT(delegate.heard, ElementsAre("closed"));
}

TEST_F(MenuPresenterTest, KeysOfTheTapGoToTheMenu) {
  const auto one = add("One"), two = add("Two");
  EXPECT_FALSE(presenter.keyDown(key(KeyCodeDown))) << "no menu is open";
  when("shown", shown(), [&] {
    EXPECT_TRUE(presenter.keyDown(key(KeyCodeDown)));
    EXPECT_FALSE(presenter.keyDown(key(KeyCodeQ)));
  });
  when("one highlighted", highlighted(one), [&] { presenter.keyDown(key(KeyCodeDown)); });
  when("two highlighted", highlighted(two), [&] { presenter.keyDown(key(KeyCodeReturn)); });
  EXPECT_TRUE(popUp());
  EXPECT_THAT(delegate.heard, ElementsAre("highlight One", "highlight Two", "closed"));

  when("shown", shown(), [&] { presenter.keyDown(key(KeyCodeEscape)); });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, WithTheKeyboardFreeTheMenuTakesItItself) {
  const auto one = add("One");
  when("shown", shown(), [&] { press(KeyCodeDown); });
  when("one highlighted", highlighted(one), [&] { press(KeyCodeReturn); });
  EXPECT_TRUE(popUp());
}

TEST_F(MenuPresenterTest, WithTheKeyboardHeldByAnotherConnectionAPressBesideItClosesIt) {
  user.openWindow();
  ASSERT_TRUE(waitUntil({&user}, [&] { return user.grabKeyboard(); }));
  const auto one = add("One");
  when("shown", shown(), [&] { pointAt(*one); });
  when("one highlighted", highlighted(one), [&] {
    user.movePointer(1100, 800);
    click();
  });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(delegate.heard.front(), "highlight One");
  EXPECT_EQ(delegate.heard.back(), "closed");
  user.ungrabKeyboard();
}

TEST_F(MenuPresenterTest, DisabledItemsAndSeparatorsAreNeitherHighlightedNorChosen) {
  const auto one = add("One"), off = add("Off");
  off->setEnabled(false);
  const auto separator = MenuItem::separatorItem();
  menu->addItem(separator);
  const auto last = add("Last");
  when("shown", shown(), [&] { pointAt(*one); });
  when("one highlighted", highlighted(one), [&] {
    pointAt(*off);
    click();
    pointAt(*separator);
    click();
    pointAt(*last);
  });
  when("last highlighted", highlighted(last), [&] { presenter.keyDown(key(KeyCodeEscape)); });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(std::count(delegate.heard.begin(), delegate.heard.end(), "highlight Off"), 0);
}

TEST_F(MenuPresenterTest, ASubmenuOpensByResting) {
  const auto one = add("One");
  const auto submenu = Menu::create("Sub");
  RecordingMenuDelegate ofSubmenu;
  submenu->setDelegate(&ofSubmenu);
  const auto inner = MenuItem::create("Inner");
  submenu->addItem(inner);
  one->setSubmenu(submenu);
  when("shown", shown(), [&] { pointAt(*one); });
  when(
      "submenu shown", [&] { return isShown(*submenu); },
      [&] {
        const int rightOfMenu = 40 + static_cast<int>(presenter.menuSize(*menu).width);
        EXPECT_EQ(innermost()->x(), rightOfMenu - 1) << "they share a border";
        pointAt(*inner);
      });
  when("inner highlighted", highlighted(inner), [&] {
    EXPECT_TRUE(isHighlighted(*one)) << "the way to the submenu stays highlighted";
    shoot("submenu");
    click();
  });
  EXPECT_TRUE(popUp());
  EXPECT_THAT(delegate.heard, ElementsAre("highlight One", "closed"));
  EXPECT_THAT(ofSubmenu.heard, ElementsAre("highlight Inner", "closed"));
}

TEST_F(MenuPresenterTest, ASubmenuThatTheHighlightedItemGetsOpensToo) {
  const auto one = add("One");
  const auto submenu = Menu::create("Sub");
  submenu->addItem(MenuItem::create("Inner"));
  when("shown", shown(), [&] { pointAt(*one); });
  when("one highlighted", highlighted(one), [&] { one->setSubmenu(submenu); });
  when(
      "submenu shown", [&] { return isShown(*submenu); }, [&] { one->setSubmenu(nullptr); });
  when(
      "submenu gone", [&] { return isShown(*menu); }, [&] { menu->cancelTracking(); });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, ASubmenuThatComesToAnItemReachedByKeysWaitsForTheNextKey) {
  const auto one = add("One");
  const auto submenu = Menu::create("Submenu");
  submenu->addItem(MenuItem::create("Inner"));
  Moment given = 0;
  when("shown", shown(), [&] { presenter.keyDown(key(KeyCodeDown)); });
  when("one highlighted", highlighted(one), [&] {
    one->setSubmenu(submenu);
    given = loop.now();
  });
  constexpr TimeInterval longRest = 0.5;
  when(
      "rested", [&] { return loop.now() - given > longRest; },
      [&] {
        EXPECT_FALSE(isShown(*submenu));
        presenter.keyDown(key(KeyCodeRight));
      });
  when(
      "inner highlighted", [&] { return isHighlighted(*submenu->items()[0]); },
      [&] { menu->cancelTracking(); });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, EscapeInASubmenuClosesThatFirst) {
  const auto one = add("One");
  const auto submenu = Menu::create("Sub");
  submenu->addItem(MenuItem::create("Inner"));
  one->setSubmenu(submenu);
  when("shown", shown(), [&] {
    presenter.keyDown(key(KeyCodeDown));
    presenter.keyDown(key(KeyCodeRight));
  });
  when(
      "submenu shown", [&] { return isShown(*submenu); },
      [&] { presenter.keyDown(key(KeyCodeEscape)); });
  when(
      "submenu gone", [&] { return isShown(*menu); },
      [&] { presenter.keyDown(key(KeyCodeEscape)); });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, WhatChangesIsShownAtOnce) {
  const auto one = add("One"), two = add("Two");
  int height = 0;
  when("shown", shown(), [&] {
    height = innermost()->height();
    one->setTitle("One with a title that needs much more room");
    menu->insertItem(MenuItem::create("Between"), 1);
    two->setState(true);
  });
  when(
      "grown", [&] { return innermost()->height() > height; },
      [&] {
        EXPECT_EQ(Size({static_cast<double>(innermost()->width()),
                        static_cast<double>(innermost()->height())}),
                  presenter.menuSize(*menu));
        menu->removeItem(*menu->items()[1]);
      });
  when(
      "shrunk", [&] { return innermost()->height() == height; }, [&] { pointAt(*two); });
  when("two highlighted", highlighted(two), [&] { click(); });
  EXPECT_TRUE(popUp());
}

TEST_F(MenuPresenterTest, AMenuThatGrowsPastTheEdgeMovesBackOntoTheScreen) {
  add("One");
  when("shown", shown(), [&] {
    for (int i = 0; i < 6; ++i) add("More " + std::to_string(i));
  });
  const auto isInside = [&] {
    const QRect frame = innermost()->frameGeometry();
    return frame.height() == presenter.menuSize(*menu).height &&
           innermost()->screen()->geometry().contains(frame);
  };
  when("inside", isInside, [&] { pointAt(*menu->items().back()); });
  when(
      "last highlighted", [&] { return isHighlighted(*menu->items().back()); },
      [&] { menu->cancelTracking(); });
  popUpAt({100, 60});
}

TEST_F(MenuPresenterTest, AMenuThatOutgrowsTheScreenScrolls) {
  add("One");
  when("shown", shown(), [&] {
    for (int i = 0; i < 80; ++i) add("More " + std::to_string(i));
  });
  when("as high as the screen", asHighAsTheScreen(), [&] {
    shoot("scrolling");
    presenter.keyDown(key(KeyCodeEnd));
  });
  when(
      "last highlighted", [&] { return isHighlighted(*menu->items().back()); },
      [&] { menu->cancelTracking(); });
  popUp();
}

// Measured anew for each of them, these would keep the program for minutes.
TEST_F(MenuPresenterTest, ThousandsOfItemsMayComeWhileItIsOpen) {
  add("One");
  when("shown", shown(), [&] {
    for (int i = 0; i < 5000; ++i) add("More " + std::to_string(i));
    for (const auto& item : menu->items()) item->setState(true);
  });
  when("as high as the screen", asHighAsTheScreen(), [&] { presenter.keyDown(key(KeyCodeEnd)); });
  when(
      "last highlighted", [&] { return isHighlighted(*menu->items().back()); },
      [&] { menu->cancelTracking(); });
  popUp();
}

TEST_F(MenuPresenterTest, AHeadingIsNotChosenByAClickButAMenuItemViewIs) {
  DesktopGraphics graphics(host, nullptr, 1);
  const auto label = [&](const char* text) {
    auto view = std::make_shared<LabelView>(graphics, Rect::make(0, 0, 150, 16));
    view->setRenderBackground(false);
    view->setText(text);
    return view;
  };
  const auto heading = add("Heading"), more = add("More");
  heading->setView(label("Heading"));
  const auto moreView = std::make_shared<MenuItemView>(Rect::make(0, 0, 150, 16));
  moreView->addSubview(label("-- More --"));
  more->setView(moreView);
  when("shown", shown(), [&] { pointAt(*heading); });
  when("heading highlighted", highlighted(heading), [&] {
    click();
    pointAt(*more);
  });
  when("more highlighted", highlighted(more), [&] { click(); });
  EXPECT_TRUE(popUp());
}

TEST_F(MenuPresenterTest, TheTapSeesPressesAndScrollsWhereverTheyAre) {
  std::vector<TappedEvent> tapped;
  bool passes = true;
  windowServer.pointerInput().setTap([&](const TappedEvent& event) {
    tapped.push_back(event);
    return passes;
  });
  const auto one = add("One");
  when("shown", shown(), [&] {
    user.movePointer(1100, 800);
    user.button(5, true);
    user.button(5, false);
  });
  when(
      "scroll seen", [&] { return !tapped.empty(); },
      [&] {
        EXPECT_EQ(tapped[0].type, EventTypeScrollWheel);
        EXPECT_EQ(tapped[0].location, (Point{1100 / scale(), 800 / scale()}));
        passes = false;
        tapped.clear();
        click();
      });
  when(
      "press seen", [&] { return !tapped.empty(); },
      [&] {
        EXPECT_EQ(tapped[0].type, EventTypeLeftMouseDown);
        EXPECT_TRUE(isShown(*menu)) << "the tap has kept the press";
        passes = true;
        click();
      });
  EXPECT_FALSE(popUp());
  windowServer.pointerInput().setTap({});
}

TEST_F(MenuPresenterTest, AWindowThatComesForwardStaysBelowTheMenu) {
  const auto one = add("One");
  const double top = displays.screens().front().frame.maxY();
  Window window(windowServer, Rect::make(0, 0, 1000, top));
  window.setLevel(windowServer.windowLevelForKey(WindowLevelKeyScreenSaver));
  window.setBackgroundColor(Color::colorWithCalibratedWhite(0.2, 1));
  window.orderFront();
  when("shown", shown(), [&] {
    window.orderFront();
    windowServer.restack();
    pointAt(*one);
  });
  when("one highlighted", highlighted(one), [&] { click(); });
  EXPECT_TRUE(popUp()) << "the click reached the menu";
}

TEST_F(MenuPresenterTest, WhileOneIsOpenNoOtherOpens) {
  add("One");
  const auto other = Menu::create("Other");
  other->addItem(MenuItem::create("Two"));
  when("shown", shown(), [&] {
    EXPECT_FALSE(presenter.popUpMenu(other, nullptr, {100, 100}));
    menu->cancelTracking();
  });
  EXPECT_FALSE(popUp());
}

TEST_F(MenuPresenterTest, AnActionMayOpenTheNextMenu) {
  const auto one = add("One");
  const auto other = Menu::create("Other");
  RecordingMenuDelegate ofOther;
  other->setDelegate(&ofOther);
  other->addItem(MenuItem::create("Two"));
  one->setAction({"open", [&](MenuItem&) {
                    executeBlockAfterDelay([&] { other->cancelTracking(); }, 0.05);
                    EXPECT_FALSE(presenter.popUpMenu(other, nullptr, {100, 100}));
                  }});
  when("shown", shown(), [&] {
    presenter.keyDown(key(KeyCodeDown));
    presenter.keyDown(key(KeyCodeReturn));
  });
  EXPECT_TRUE(popUp());
  EXPECT_THAT(ofOther.heard, ElementsAre("closed"));
}

TEST_F(MenuPresenterTest, NothingStaysGrabbedWhenTheMenuHasClosed) {
  user.openWindow();
  add("One");
  when("shown", shown(), [&] { EXPECT_FALSE(user.grabKeyboard()) << "the menu has the keyboard"; });
  when("still shown", shown(), [&] { menu->cancelTracking(); });
  popUp();
  EXPECT_TRUE(waitUntil({&user}, [&] { return user.grabKeyboard(); }));
  user.ungrabKeyboard();
  EXPECT_TRUE(user.grabPointer());
  user.ungrabPointer();
}

TEST_F(MenuPresenterTest, NothingStaysGrabbedWhenTheProgramIsKilled) {
  user.openWindow();
  Program program({QCoreApplication::applicationFilePath().toStdString(), "--hold-menu"},
                  qEnvironmentVariable("DISPLAY").toStdString());
  // The menu is open as soon as it has the pointer.
  ASSERT_TRUE(waitUntil({&user}, [&] {
    if (!user.grabPointer()) return true;
    user.ungrabPointer();
    return false;
  }));
  program.end();
  EXPECT_TRUE(waitUntil({&user}, [&] { return user.grabPointer(); }));
  user.ungrabPointer();
  EXPECT_TRUE(user.grabKeyboard());
  user.ungrabKeyboard();
}

TEST_F(MenuPresenterTest, TheEndOfTheProgramClosesItAndLetsNoOtherOpen) {
  user.openWindow();
  DesktopApplicationControl control(host);
  const auto item = add("Has a submenu");
  const auto submenu = Menu::create("Sub");
  submenu->addItem(MenuItem::create("Entry"));
  item->setSubmenu(submenu);
  when("shown", shown(), [&] { pointAt(*item); });
  when(
      "submenu shown", [&] { return isShown(*submenu); }, [&] { control.terminate(); });
  EXPECT_FALSE(popUp());
  EXPECT_FALSE(presenter.menuIsOpen());
  EXPECT_EQ(delegate.heard.back(), "closed");
  delegate.heard.clear();
  EXPECT_FALSE(popUp());
  EXPECT_THAT(delegate.heard, ElementsAre("closed"));
  EXPECT_TRUE(waitUntil({&user}, [&] { return user.grabPointer(); }));
  user.ungrabPointer();
  EXPECT_TRUE(user.grabKeyboard());
  user.ungrabKeyboard();
}

TEST_F(MenuPresenterTest, ALookAtAllKindsOfItems) {
  for (const bool dark : {false, true}) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, dark ? QColor(30, 30, 32) : QColor(240, 240, 240));
    QApplication::setPalette(palette);
    menu->removeAllItems();
    DesktopGraphics graphics(host, nullptr, scale());
    const auto checked = add("Front Application Windows");
    checked->setState(true);
    add("Fish & Chips\tcount as text");
    AttributedString attributed;
    attributed.append("Make Command-Tab activate ", Font::systemFontOfSize(14));
    attributed.append("Active Applications", Font::boldSystemFontOfSize(14));
    add("attributed")->setAttributedTitle(attributed);
    add("Make Command-Tab activate Active Applications");
    Image icon = graphics.imageNamed("ApplicationIcon");
    icon.setSize({18, 18});
    add("With an image")->setImage(icon);
    menu->addItem(MenuItem::separatorItem());
    add("Disabled")->setEnabled(false);
    const auto submenuItem = add("Has a submenu");
    const auto submenu = Menu::create("Sub");
    submenu->addItem(MenuItem::create("Move to Trash..."));
    submenu->addItem(MenuItem::create("Show in Finder..."));
    submenuItem->setSubmenu(submenu);
    const auto heading = std::make_shared<LabelView>(graphics, Rect::make(0, 0, 200, 16));
    heading->setRenderBackground(false);
    heading->setTextColor(Color::gray());
    heading->setFont(Font::systemFontOfSize(13));
    heading->setText("Window Scope");
    add("heading")->setView(heading);
    const auto more = std::make_shared<MenuItemView>(Rect::make(0, 0, 200, 16));
    const auto text = std::make_shared<LabelView>(graphics, Rect::make(0, 0, 200, 16));
    text->setRenderBackground(false);
    text->setTextColor(Color::black());
    text->setFont(Font::systemFontOfSize(13));
    text->setText("-- More --");
    more->addSubview(text);
    add("more")->setView(more);
    const std::string name = std::string(dark ? "dark" : "light") + (scale() == 2 ? "-2" : "");
    when("shown", shown(), [&] { pointAt(*submenuItem); });
    when(
        "submenu shown", [&] { return isShown(*submenu); },
        [&, name] {
          shoot(name + "-submenu");
          pointAt(*menu->items().back());
        });
    when(
        "more highlighted", [&] { return isHighlighted(*menu->items().back()); },
        [&, name] { text->setTextColor(Color::white()); });
    when("still open", shown(), [&, name] {
      shoot(name + "-more");
      menu->cancelTracking();
    });
    EXPECT_FALSE(popUp());
  }
  QApplication::setPalette(QPalette());
}

}  // namespace
}  // namespace qb::test
