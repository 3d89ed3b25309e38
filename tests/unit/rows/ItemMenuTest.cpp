#include "Quillbox/rows/ItemMenu.h"

#include "support/HostViewFixture.h"
#include "support/TabRowFixture.h"
#include "support/TestEvents.h"

namespace qb::test {
namespace {

using testing::Message;

class ItemMenuTest : public TabRowFixture {
 protected:
  void SetUp() override {
    makeOpenRow(3);
    select(1);
    provider->itemLog->clear();
  }
  TestItem& item() { return provider->item(1); }
  SimulatedMenuPresenter& presenter() { return platform.menuPresenter(); }
  void configure(std::int32_t method = ItemMenuMethodRightClick) {
    row->configureSelectedItemWithMethod(method);
  }
  std::vector<std::string> shownItems() {
    configure();
    return presenter().shown().empty() ? std::vector<std::string>{"nothing"}
                                       : presenter().shown().back().items;
  }
};

TEST_F(ItemMenuTest, HasTheGroupsOfTheItemAndTheProvider) {
  struct Case {
    std::vector<std::string> ofItem, ofProvider, shown;
  };
  const Case cases[] = {
      {{"a", "b"}, {"c"}, {"a", "b", "-", "c"}},
      {{"a"}, {}, {"a"}},
      {{}, {"c", "-", "d"}, {"c", "-", "d"}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(Message() << one.shown.size());
    item().menuTitles = one.ofItem;
    provider->itemMenuTitles = one.ofProvider;
    EXPECT_EQ(shownItems(), one.shown);
    EXPECT_EQ(presenter().shown().back().title, "QuillboxConfigurator");
    EXPECT_EQ(provider->log.back(),
              "menuItemsForItemConfigure " + std::to_string(one.ofItem.size()));
  }
}

TEST_F(ItemMenuTest, DoesNotEnableItsEntriesByItself) {
  item().menuTitles = {"a"};
  bool autoenables = true;
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    autoenables = user.menu()->autoenablesItems();
    user.escape();
  });
  configure();
  EXPECT_FALSE(autoenables);
}

TEST_F(ItemMenuTest, TellsTheItemHowItGoes) {
  item().menuTitles = {"a", "b"};
  presenter().whenMenuOpens([](SimulatedMenuUser& user) {
    user.highlight("b");
    user.rest(0.25);
    user.highlightNothing();
    user.escape();
  });
  configure();
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: menuTrackingWillBegin QuillboxConfigurator",
                                         "item1: menuWillHighlightItem b",
                                         "item1: menuTrackingIsContinuing QuillboxConfigurator",
                                         "item1: menuTrackingIsContinuing QuillboxConfigurator",
                                         "item1: menuWillHighlightItem none",
                                         "item1: menuTrackingDidFinish QuillboxConfigurator"}));
}

TEST_F(ItemMenuTest, IsWatchedTenTimesASecondOnlyWhileItIsOpen) {
  item().menuTitles = {"a"};
  presenter().whenMenuOpens([](SimulatedMenuUser& user) {
    user.rest(1.05);
    user.escape();
  });
  configure();
  const std::string tick = "item1: menuTrackingIsContinuing QuillboxConfigurator";
  EXPECT_EQ(countOf(*provider->itemLog, tick), 10);
  platform.runFor(1);
  EXPECT_EQ(countOf(*provider->itemLog, tick), 10);
}

TEST_F(ItemMenuTest, AMissingFileCanBeIdentifiedOrRemoved) {
  item().standsForFile = true;
  item().setRemovable(true);
  item().menuTitles = {"a"};
  provider->itemMenuTitles = {"b"};
  EXPECT_EQ(shownItems(), (std::vector<std::string>{"Identify missing 'item1'...", "-",
                                                    "Remove from Tab Row...."}));
  presenter().whenMenuOpens(
      [](SimulatedMenuUser& user) { user.choose("Identify missing 'item1'..."); });
  configure();
  EXPECT_EQ(countOf(*provider->itemLog, "item1: identifyMissingRepresentedItem"), 1);
  presenter().whenMenuOpens(
      [](SimulatedMenuUser& user) { user.choose("Remove from Tab Row...."); });
  configure();
  EXPECT_EQ(countOf(provider->log, "removeItem item1 with confirmation"), 1);
}

TEST_F(ItemMenuTest, AMissingFileThatCannotBeRemovedHasAnEmptyMenu) {
  item().standsForFile = true;
  item().menuTitles = {"a"};
  EXPECT_EQ(shownItems(), std::vector<std::string>());
  EXPECT_EQ(provider->itemLog->back(), "item1: menuTrackingDidFinish QuillboxConfigurator");
  platform.runFor(1);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: menuTrackingIsContinuing QuillboxConfigurator"), 0);
}

TEST_F(ItemMenuTest, AFileThatIsThereHasItsOwnEntries) {
  item().standsForFile = true;
  item().fileExists = true;
  item().menuTitles = {"a"};
  EXPECT_EQ(shownItems(), std::vector<std::string>{"a"});
}

TEST_F(ItemMenuTest, WithoutASelectionNothingOpens) {
  row->setSelectedItem(nullptr, SelectionMethodProgram);
  EXPECT_EQ(shownItems(), std::vector<std::string>{"nothing"});
}

TEST_F(ItemMenuTest, ARightClickOpensItWhereTheItemHasOne) {
  auto& capture = row->selectionViews().eventCaptureView();
  item().menuTitles = {"a"};
  capture.rightMouseUp(mouseEvent(EventTypeRightMouseUp));
  EXPECT_TRUE(presenter().shown().empty());
  item().isConfigurable = true;
  capture.rightMouseUp(mouseEvent(EventTypeRightMouseUp));
  EXPECT_EQ(presenter().shown().size(), 1U);
}

TEST_F(ItemMenuTest, AClickWithControlIsARightClick) {
  auto& capture = row->selectionViews().eventCaptureView();
  item().menuTitles = {"a"};
  item().isConfigurable = true;
  capture.mouseDown(mouseEvent(EventTypeLeftMouseDown, {}, EventFlagControl));
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp, {}, EventFlagControl));
  EXPECT_EQ(presenter().shown().size(), 1U);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 0);
}

TEST_F(ItemMenuTest, TheClickThatClosesItInvokesNothing) {
  auto& capture = row->selectionViews().eventCaptureView();
  item().menuTitles = {"a"};
  configure();
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp));
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 0);
  platform.runFor(0.51);
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp));
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 1);
}

TEST_F(ItemMenuTest, AMenuThatOutlivesItsRowStillCloses) {
  item().menuTitles = {"a"};
  presenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    row.reset();
    user.rest(0.3);
    user.escape();
  });
  TabRow& held = *row;
  held.configureSelectedItemWithMethod(ItemMenuMethodRightClick);
  EXPECT_EQ(provider->itemLog->back(), "item1: menuTrackingDidFinish QuillboxConfigurator");
}

/// A row in the panel, where places on the screen mean something.
class ItemMenuPlaceTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({3});
    host().arrangeTabRowsWithAnimate(false);
    open(ActivationMethodCommandDoubleTap);
    platform.runFor(0.5);
    providers[0]->item(1).menuTitles = {"Decorate", "Set Hot Key..."};
    row().setSelectedItem(row().items()[1], SelectionMethodProgram);
  }
  TabRow& row() { return *rows[0]; }
  Point placeOfMenu(std::int32_t method) {
    row().configureSelectedItemWithMethod(method);
    return platform.menuPresenter().shown().back().location;
  }
};

TEST_F(ItemMenuPlaceTest, IsBelowTheItemAfterARightClick) {
  const Rect item = row().items()[1]->view()->frame();
  // The menu is 140 points wide.
  EXPECT_EQ(placeOfMenu(ItemMenuMethodRightClick),
            onScreen(row(), {item.center().x - 70, item.maxY() + 10}));
}

TEST_F(ItemMenuPlaceTest, IsBelowTheConfigureButton) {
  const Rect button = row().selectionViews().configureButton().frame();
  EXPECT_EQ(placeOfMenu(ItemMenuMethodConfigureButton),
            onScreen(row(), {button.center().x - 70, button.maxY() + 6}));
}

}  // namespace
}  // namespace qb::test
