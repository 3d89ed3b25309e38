// What every row's selector menu has: titles, states, actions, and what they do.

#include "Quillbox/rows/SelectorMenu.h"

#include <gmock/gmock.h>

#include "Platform/ApplicationControl.h"
#include "Platform/UserDefaults.h"
#include "Quillbox/activation/MenuHelpers.h"
#include "Quillbox/activation/ProductWebSite.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Strings = std::vector<std::string>;

class SelectorMenuTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({2, 2});
    makeDefaults(0, 1);
  }
  static Event leftClick() {
    Event event;
    event.type = EventTypeLeftMouseDown;
    return event;
  }
  Menu& build(TabRow& row, const Event& event = leftClick()) {
    menu = Menu::create("Selector");
    host().augmentProviderSelectorMenu(*menu, row, event);
    return *menu;
  }
  Strings shown() const { return SimulatedMenuPresenter::shownItems(*menu); }
  MenuItem& itemNamed(const std::string& action) const {
    for (const auto& item : menu->items()) {
      if (item->action().name == action) return *item;
    }
    throw std::out_of_range(action);
  }
  void choose(const std::string& action) { itemNamed(action).performAction(); }

  std::shared_ptr<Menu> menu;
};

TEST_F(SelectorMenuTest, ALeftClickShowsDefaultsAndTheProgramsOwnEntries) {
  build(*rows[0]);
  EXPECT_THAT(shown(),
              ElementsAre("* Command-Tab activates Test Items",
                          "Make Option-Tab activate Test Items", "-", "Quillbox Settings...",
                          "Quillbox QuickStart Guide...", "-", "About Quillbox..."));
}

TEST_F(SelectorMenuTest, ARightClickAddsRestartAndQuit) {
  Event event;
  event.type = EventTypeRightMouseDown;
  build(*rows[1], event);
  EXPECT_THAT(shown(), ElementsAre("Make Command-Tab activate Test Items",
                                   "* Option-Tab activates Test Items", "-", "Quillbox Settings...",
                                   "Quillbox QuickStart Guide...", "-", "About Quillbox...", "-",
                                   "Restart Quillbox", "Quit Quillbox"));
}

TEST_F(SelectorMenuTest, SoDoesAClickWithTheLeftControlKey) {
  struct Case {
    EventFlags flags;
    std::size_t items;
  };
  const Case cases[] = {
      {EventFlagLeftControl | EventFlagControl, 10},
      // The right Control key is no left one.
      {EventFlagControl, 7},
      {EventFlagShift, 7},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.flags);
    Event event = leftClick();
    event.flags = one.flags;
    EXPECT_THAT(build(*rows[0], event).items(), SizeIs(one.items));
  }
}

TEST_F(SelectorMenuTest, ARowWithoutAProviderHasNoDefaults) {
  const auto row = host().createTabRowAtIndex(0, nullptr, false);
  build(*row);
  EXPECT_THAT(shown(), ElementsAre("Quillbox Settings...", "Quillbox QuickStart Guide...", "-",
                                   "About Quillbox..."));
}

TEST_F(SelectorMenuTest, ASeparatorKeepsThemApartFromWhatIsThere) {
  menu = Menu::create("Selector");
  menu->addItem(MenuItem::create("Active Applications"));
  host().augmentProviderSelectorMenu(*menu, *rows[0], leftClick());
  EXPECT_THAT(shown(), SizeIs(9));
  EXPECT_EQ(shown()[0], "Active Applications");
  EXPECT_EQ(shown()[1], "-");
}

TEST_F(SelectorMenuTest, EveryEntryIsWhole) {
  struct Entry {
    std::string title, action;
    bool state;
  };
  Event event;
  event.type = EventTypeRightMouseDown;
  build(*rows[0], event);
  const Entry expected[] = {
      {"Set 'Test Items' as Command-Tab Default", "setAsCommandTabDefaultDeselected", true},
      {"Set 'Test Items' as Option-Tab Default", "setAsOptionTabDefaultSelected", false},
      {"", "", false},
      {"Quillbox Settings...", "quillboxSettingsSelected", false},
      {"Quillbox QuickStart Guide...", "quillboxQuickStartGuideSelected", false},
      {"", "", false},
      {"About Quillbox...", "aboutQuillboxSelected", false},
      {"", "", false},
      {"Restart Quillbox", "restartQuillboxSelected", false},
      {"Quit Quillbox", "quitQuillboxSelected", false},
  };
  ASSERT_THAT(menu->items(), SizeIs(std::size(expected)));
  for (std::size_t index = 0; index < std::size(expected); ++index) {
    SCOPED_TRACE(index);
    const MenuItem& item = *menu->items()[index];
    EXPECT_EQ(item.title(), expected[index].title);
    EXPECT_EQ(item.action().name, expected[index].action);
    EXPECT_EQ(item.state(), expected[index].state);
    EXPECT_EQ(item.tag(), 0);
    if (item.isSeparatorItem()) continue;
    EXPECT_TRUE(item.isEnabled());
    EXPECT_EQ(item.action().target.lock().get(), static_cast<MenuItemTarget*>(&host()));
  }
  for (const std::size_t index : {0U, 1U}) {
    EXPECT_EQ(std::any_cast<std::shared_ptr<TabRow>>(menu->items()[index]->representedObject()),
              rows[0]);
  }
}

TEST_F(SelectorMenuTest, DefaultEntriesAreNamedTheOtherWayRoundForTheOtherState) {
  build(*rows[1]);
  EXPECT_EQ(menu->items()[0]->action().name, "setAsCommandTabDefaultSelected");
  EXPECT_EQ(menu->items()[1]->action().name, "setAsOptionTabDefaultDeselected");
  EXPECT_EQ(menu->items()[0]->title(), "Set 'Test Items' as Command-Tab Default");
  EXPECT_EQ(menu->items()[1]->title(), "Set 'Test Items' as Option-Tab Default");
}

TEST_F(SelectorMenuTest, TheProvidersNameStandsOutInTheShownTitles) {
  build(*rows[0]);
  EXPECT_EQ(menu->items()[0]->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Command-Tab activates ", "Test Items", ""));
  EXPECT_EQ(menu->items()[1]->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Make Option-Tab activate ", "Test Items", ""));
}

TEST_F(SelectorMenuTest, WithoutAccessCommandTabPromisesAQuestion) {
  platform.accessibility().setTrusted(false);
  build(*rows[0]);
  EXPECT_EQ(menu->items()[0]->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Command-Tab activates ", "Test Items", "..."));
  EXPECT_EQ(menu->items()[1]->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Make Option-Tab activate ", "Test Items", ""));
  build(*rows[1]);
  EXPECT_EQ(menu->items()[0]->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Make Command-Tab activate ", "Test Items", "..."));
}

TEST_F(SelectorMenuTest, DefaultEntriesActOnTheirRow) {
  build(*rows[1]);
  choose("setAsCommandTabDefaultSelected");
  EXPECT_TRUE(rows[1]->isDefaultCommandTabRow());
  EXPECT_FALSE(rows[0]->isDefaultCommandTabRow());
  build(*rows[0]);
  choose("setAsOptionTabDefaultSelected");
  EXPECT_TRUE(rows[0]->isDefaultOptionTabRow());
  build(*rows[0]);
  choose("setAsOptionTabDefaultDeselected");
  EXPECT_TRUE(host().getActiveApplicationsTabRow()->isDefaultOptionTabRow());
  build(*rows[1]);
  choose("setAsCommandTabDefaultDeselected");
  EXPECT_TRUE(host().getActiveApplicationsTabRow()->isDefaultCommandTabRow());
}

TEST_F(SelectorMenuTest, SettingsComeUpHalfASecondLaterInPlaceOfThePanel) {
  open(ActivationMethodCorner);
  build(*rows[0]);
  choose("quillboxSettingsSelected");
  platform.runFor(0.49);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(platform.applicationControl().openedFiles(), SizeIs(2));
}

TEST_F(SelectorMenuTest, TheQuickStartGuideOpensInTheBrowser) {
  platform.userDefaults().setObject("https://quillbox.example", kProductWebSiteKey);
  open(ActivationMethodCorner);
  build(*rows[0]);
  choose("quillboxQuickStartGuideSelected");
  platform.runFor(0.02);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_THAT(platform.applicationControl().openedURLs(),
              ElementsAre("https://quillbox.example/QuickStart.html"));
}

TEST_F(SelectorMenuTest, AboutTellsVersionAndCopyright) {
  platform.dialogs().answerAlert("OK");
  open(ActivationMethodCorner);
  build(*rows[0]);
  choose("aboutQuillboxSelected");
  ASSERT_THAT(platform.dialogs().shownAlerts(), SizeIs(1));
  const auto& alert = platform.dialogs().shownAlerts()[0];
  EXPECT_EQ(alert.style, AlertStyleInformational);
  EXPECT_EQ(alert.messageText, "Quillbox - Supercharge your Tab key!");
  EXPECT_EQ(alert.informativeText, "Version 1.0.0\r\rCopyright 2026 The Makers");
  EXPECT_THAT(alert.buttons, ElementsAre("OK", "About MASShortcut"));
  EXPECT_EQ(alert.iconName, "QuillboxLogo");
  EXPECT_EQ(alert.accessoryView, "spacer 340x20");
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
  platform.runFor(0.02);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
}

TEST_F(SelectorMenuTest, AboutsSecondButtonShowsTheTextOfTheShortcutRecorder) {
  platform.applicationControl().setTextResource("LICENSE.txt", "The words of the file.\n");
  platform.dialogs().answerAlert("About MASShortcut");
  platform.dialogs().answerAlert("OK");
  build(*rows[0]);
  choose("aboutQuillboxSelected");
  ASSERT_THAT(platform.dialogs().shownAlerts(), SizeIs(2));
  const auto& alert = platform.dialogs().shownAlerts()[1];
  EXPECT_EQ(alert.style, AlertStyleInformational);
  EXPECT_EQ(alert.messageText, "Quillbox is supercharged by MASShortcut!");
  EXPECT_EQ(alert.informativeText, "The words of the file.\n");
  EXPECT_THAT(alert.buttons, ElementsAre("OK"));
  EXPECT_EQ(alert.iconName, "QuillboxLogo");
  EXPECT_EQ(alert.accessoryView, "spacer 540x20");
}

TEST_F(SelectorMenuTest, QuitEndsTheProgramAndRestartStartsItAnew) {
  Event event;
  event.type = EventTypeRightMouseDown;
  build(*rows[0], event);
  choose("quitQuillboxSelected");
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 1);
  EXPECT_THAT(platform.applicationControl().launches(), IsEmpty());
  choose("restartQuillboxSelected");
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 2);
  EXPECT_THAT(platform.applicationControl().launches(), SizeIs(1));
}

TEST_F(SelectorMenuTest, EntriesOfAHostViewThatHasGoneDoNothing) {
  auto other = HostView::create(Rect::make(0, 0, 400, 400));
  platform.runFor(0.01);
  menu = Menu::create();
  Event event;
  event.type = EventTypeRightMouseDown;
  other->augmentProviderSelectorMenu(*menu, *other->tabRows()[0], event);
  const auto quit = itemNamed("quitQuillboxSelected").shared_from_this();
  // The entries of the defaults hold their row.
  menu.reset();
  other.reset();
  quit->performAction();
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 0);
}

}  // namespace
}  // namespace qb::test
