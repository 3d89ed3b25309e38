#include "Quillbox/rows/ProviderMenus.h"

#include "Quillbox/rows/ProviderSelector.h"
#include "support/HostViewFixture.h"
#include "support/TestEvents.h"

namespace qb::test {
namespace {

class ProviderMenusTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({3});
    host().arrangeTabRowsWithAnimate(false);
    open(ActivationMethodCommandDoubleTap);
    platform.runFor(0.5);
  }
  TabRow& row() { return *rows[0]; }
  TestProvider& provider() { return *providers[0]; }
  SimulatedMenuPresenter& presenter() { return platform.menuPresenter(); }
  void popUpSelectorMenu() {
    row().popUpProviderSelectorMenuWithEvent(mouseEvent(EventTypeLeftMouseDown));
  }
  /// The names on offer, as the catalogue has them.
  std::vector<std::string> offeredNames() {
    std::vector<std::string> names;
    for (const auto& information : host().tabRowProviderInformations()) {
      if (information->shouldAppearInProviderSelector()) names.push_back(information->name());
    }
    return names;
  }
  void rightClickOnBackground(Point inRow) {
    platform.pointer().moveTo(onScreen(row(), inRow));
    platform.runFor(0.06);
    platform.pointer().click(1);
  }
};

TEST_F(ProviderMenusTest, SelectorMenuBeginsWithTheKindsOnOffer) {
  popUpSelectorMenu();
  ASSERT_EQ(presenter().shown().size(), 1U);
  const auto& shown = presenter().shown()[0];
  EXPECT_EQ(shown.title, "Selector");
  const auto offered = offeredNames();
  ASSERT_GE(shown.items.size(), offered.size());
  EXPECT_EQ(
      std::vector<std::string>(shown.items.begin(),
                               shown.items.begin() + static_cast<std::ptrdiff_t>(offered.size())),
      offered);
}

TEST_F(ProviderMenusTest, AKindThatIsNotToAppearDoesNot) {
  const auto first = host().tabRowProviderInformations().front();
  first->setShouldAppearInProviderSelector(false);
  popUpSelectorMenu();
  const auto& items = presenter().shown()[0].items;
  EXPECT_EQ(std::count(items.begin(), items.end(), first->name()), 0);
}

TEST_F(ProviderMenusTest, EntriesOfTheKindsCarryWhatTheyStandFor) {
  const auto information = host().tabRowProviderInformations().front();
  std::shared_ptr<MenuItem> entry;
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    entry = user.menu()->itemWithTitle(information->name());
    user.escape();
  });
  popUpSelectorMenu();
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->tag(), 92738);
  EXPECT_EQ(entry->action().name, "providerSelected");
  EXPECT_EQ(std::any_cast<std::shared_ptr<TabRowProviderInformation>>(entry->representedObject()),
            information);
  EXPECT_TRUE(entry->isEnabled());
}

TEST_F(ProviderMenusTest, TheProviderAddsItsEntriesAfterASeparator) {
  provider().providerMenuTitles = {"Mine", "Another"};
  popUpSelectorMenu();
  const auto& items = presenter().shown()[0].items;
  const std::size_t offered = offeredNames().size();
  ASSERT_GE(items.size(), offered + 3);
  EXPECT_EQ(items[offered], "-");
  EXPECT_EQ(items[offered + 1], "Mine");
  EXPECT_EQ(items[offered + 2], "Another");
}

TEST_F(ProviderMenusTest, SelectorMenuOpensBelowTheSelector) {
  double width = 0;
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    width = presenter().menuSize(*user.menu()).width;
    user.escape();
  });
  popUpSelectorMenu();
  const Rect selector = row().providerSelector().frame();
  EXPECT_EQ(presenter().shown()[0].location,
            onScreen(row(), {selector.center().x - width / 2, selector.maxY() + 6}));
}

TEST_F(ProviderMenusTest, ChoosingAKindGivesTheRowAProviderOfIt) {
  const auto information = host().tabRowProviderInformations().front();
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) { user.choose(information->name()); });
  popUpSelectorMenu();
  EXPECT_EQ(row().provider()->className(), information->className());
  EXPECT_EQ(countOf(provider().log, "prepareForDeallocation"), 1);
  EXPECT_EQ(row().providerSelector().nameLabel().text(), information->name());
}

TEST_F(ProviderMenusTest, TheProviderMayRefuseTheChange) {
  provider().confirmsProviderChange = false;
  const auto information = host().tabRowProviderInformations().front();
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) { user.choose(information->name()); });
  popUpSelectorMenu();
  EXPECT_EQ(row().provider(), providers[0]);
}

TEST_F(ProviderMenusTest, ANewRowGetsItsFirstProviderWithoutAQuestion) {
  const auto fresh = host().createTabRowAtIndex(0, nullptr, true);
  const auto information = host().tabRowProviderInformations().front();
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) { user.choose(information->name()); });
  fresh->popUpProviderSelectorMenuWithEvent(mouseEvent(EventTypeLeftMouseDown));
  ASSERT_NE(fresh->provider(), nullptr);
  EXPECT_EQ(fresh->provider()->className(), information->className());
}

TEST_F(ProviderMenusTest, ConfigureMenuHasWhatTheProviderOffers) {
  struct Case {
    bool invokesAll;
    std::vector<std::string> titles, shown;
  };
  const Case cases[] = {
      {false, {"Sort By Name"}, {"Sort By Name"}},
      {true, {}, {"Invoke All Items"}},
      {true, {"Sort By Name", "Refresh"}, {"Invoke All Items", "-", "Sort By Name", "Refresh"}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.shown.size());
    provider().invokesAllItems = one.invokesAll;
    provider().configureTitles = one.titles;
    row().popUpProviderConfigureMenu();
    EXPECT_EQ(presenter().shown().back().items, one.shown);
    EXPECT_EQ(presenter().shown().back().title, "Selector");
  }
}

TEST_F(ProviderMenusTest, ConfigureMenuOpensBelowTheSelectorAndEnablesNothingByItself) {
  provider().configureTitles = {"Sort By Name"};
  bool autoenables = true;
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    autoenables = user.menu()->autoenablesItems();
    user.escape();
  });
  row().popUpProviderConfigureMenu();
  EXPECT_FALSE(autoenables);
  const Rect selector = row().providerSelector().frame();
  // 12 characters and 42 points besides.
  EXPECT_EQ(presenter().shown()[0].location,
            onScreen(row(), {selector.center().x - 63, selector.maxY() + 6}));
}

TEST_F(ProviderMenusTest, InvokeAllItemsIsTheProvidersAffair) {
  provider().invokesAllItems = true;
  presenter().whenMenuOpens([](SimulatedMenuUser& user) { user.choose("Invoke All Items"); });
  row().popUpProviderConfigureMenu();
  EXPECT_EQ(countOf(provider().log, "invokeAllItems"), 1);
}

TEST_F(ProviderMenusTest, ARightClickBesideTheItemsOpensTheConfigureMenuThere) {
  provider().configureTitles = {"Sort By Name"};
  const Point place{8, 60};
  rightClickOnBackground(place);
  ASSERT_EQ(presenter().shown().size(), 1U);
  const Point click = onScreen(row(), place);
  EXPECT_EQ(presenter().shown()[0].items, std::vector<std::string>{"Sort By Name"});
  EXPECT_EQ(presenter().shown()[0].location, (Point{click.x - 60, click.y - 15}));
}

TEST_F(ProviderMenusTest, AClickWithControlBesideTheItemsDoesTheSame) {
  provider().configureTitles = {"Sort By Name"};
  row().mouseUp(mouseEvent(EventTypeLeftMouseUp, {300, 300}));
  EXPECT_TRUE(presenter().shown().empty());
  row().mouseUp(mouseEvent(EventTypeLeftMouseUp, {300, 300}, EventFlagControl));
  EXPECT_EQ(presenter().shown().size(), 1U);
}

TEST_F(ProviderMenusTest, WithASelectionOrWithoutAProviderNothingOpens) {
  provider().configureTitles = {"Sort By Name"};
  row().setSelectedItem(row().items()[0], SelectionMethodProgram);
  row().rightMouseUp(mouseEvent(EventTypeRightMouseUp));
  const auto fresh = host().createTabRowAtIndex(0, nullptr, true);
  fresh->rightMouseUp(mouseEvent(EventTypeRightMouseUp));
  EXPECT_TRUE(presenter().shown().empty());
}

}  // namespace
}  // namespace qb::test
