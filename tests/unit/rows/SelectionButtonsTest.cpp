// The two small buttons of the selected item.

#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class SelectionButtonsTest : public TabRowFixture {
 protected:
  void SetUp() override {
    makeOpenRow(3);
    for (std::size_t index = 0; index < 3; ++index) {
      provider->item(index).setRemovable(true);
      provider->item(index).isConfigurable = true;
    }
    row->hostViewWasDisplayed();
  }
  RowButton& removeButton() { return row->selectionViews().removeButton(); }
  RowButton& configureButton() { return row->selectionViews().configureButton(); }
  bool bothAreHidden() { return removeButton().isHidden() && configureButton().isHidden(); }
  void pointAt(int index) {
    row->setSelectedItem(provider->items().at(static_cast<std::size_t>(index)),
                         SelectionMethodPointer);
  }
};

TEST_F(SelectionButtonsTest, StandOverTheCornersOfTheHalo) {
  select(1);
  // The item's view is at 66, 19 and measures 42 by 42.
  EXPECT_EQ(row->selectionViews().halo().frame(), Rect::make(62, 15, 50, 50));
  EXPECT_EQ(removeButton().frame(), Rect::make(55, 8, 20, 20));
  EXPECT_EQ(configureButton().frame(), Rect::make(100, 8, 20, 20));
}

TEST_F(SelectionButtonsTest, ShowTheirPicturesAtTheirSize) {
  EXPECT_EQ(simulatedImageName(removeButton().image()), "DeleteItemButton");
  EXPECT_EQ(simulatedImageName(configureButton().image()), "ConfigureItemButton");
  EXPECT_EQ(removeButton().image().size(), (Size{20, 20}));
  EXPECT_EQ(configureButton().image().size(), (Size{20, 20}));
}

TEST_F(SelectionButtonsTest, SelectionViewsAreStackedFromTheBackToTheFront) {
  row = TabRow::create(nullptr, Rect::make(0, 0, 100, 100), nullptr);
  const auto& all = row->subviews();
  ASSERT_GE(all.size(), 5U);
  EXPECT_EQ(all[0].get(), &row->selectionViews().label());
  EXPECT_EQ(all[1].get(), &row->selectionViews().halo());
  EXPECT_EQ(all[2].get(), &row->selectionViews().removeButton());
  EXPECT_EQ(all[3].get(), &row->selectionViews().configureButton());
  EXPECT_EQ(all[4].get(), &row->selectionViews().eventCaptureView());
}

TEST_F(SelectionButtonsTest, StayAboveTheItemsInTheirOrder) {
  const auto& all = row->subviews();
  ASSERT_GE(all.size(), 3U);
  EXPECT_EQ(all[all.size() - 3].get(), &row->selectionViews().eventCaptureView());
  EXPECT_EQ(all[all.size() - 2].get(), &removeButton());
  EXPECT_EQ(all[all.size() - 1].get(), &configureButton());
}

TEST_F(SelectionButtonsTest, AreThereAtAlphaZeroOnceThePanelIsUp) {
  EXPECT_FALSE(removeButton().isHidden());
  EXPECT_FALSE(configureButton().isHidden());
  EXPECT_EQ(removeButton().alphaValue() + configureButton().alphaValue(), 0);
}

TEST_F(SelectionButtonsTest, AnySelectionHidesThem) {
  select(0);
  EXPECT_TRUE(bothAreHidden());
  row->hostViewWasDisplayed();
  row->setSelectedItem(nullptr, SelectionMethodProgram);
  EXPECT_TRUE(bothAreHidden());
}

TEST_F(SelectionButtonsTest, OpeningAndClosingHideThem) {
  pointAt(0);
  platform.runFor(1);
  row->hostViewWillBeDismissed();
  EXPECT_TRUE(bothAreHidden());
  row->hostViewWasDismissed();
  openRow();
  EXPECT_TRUE(bothAreHidden());
  EXPECT_EQ(removeButton().alphaValue() + configureButton().alphaValue(), 0);
}

TEST_F(SelectionButtonsTest, ThePointerBringsThemHalfASecondLater) {
  pointAt(1);
  platform.runFor(0.499);
  EXPECT_TRUE(bothAreHidden());
  platform.runFor(0.002);
  EXPECT_FALSE(removeButton().isHidden());
  EXPECT_FALSE(configureButton().isHidden());
  EXPECT_EQ(removeButton().alphaValue(), 0);
  platform.runFor(0.25);
  EXPECT_EQ(removeButton().alphaValue(), 1);
  EXPECT_EQ(configureButton().alphaValue(), 1);
}

TEST_F(SelectionButtonsTest, NeitherKeysNorTheProgramBringThem) {
  for (const std::int32_t method : {SelectionMethodProgram, SelectionMethodKeyboard}) {
    row->setSelectedItem(nullptr, SelectionMethodProgram);
    row->setSelectedItem(provider->items()[1], method);
    platform.runFor(1);
    EXPECT_TRUE(bothAreHidden());
  }
}

TEST_F(SelectionButtonsTest, AnItemLeftInTimeHasNone) {
  pointAt(0);
  platform.runFor(0.3);
  pointAt(1);
  platform.runFor(0.3);
  EXPECT_TRUE(bothAreHidden());
  platform.runFor(0.3);
  EXPECT_FALSE(bothAreHidden());
}

TEST_F(SelectionButtonsTest, WhatDoesNotApplyStaysUnseenThoughItIsThere) {
  struct Case {
    bool removable, configurable;
    double removeAlpha, configureAlpha;
    bool hidden;
  };
  for (const Case& one : {Case{true, false, 1, 0, false}, Case{false, true, 0, 1, false},
                          Case{false, false, 0, 0, true}, Case{true, true, 1, 1, false}}) {
    SCOPED_TRACE(testing::Message() << one.removable << one.configurable);
    row->setSelectedItem(nullptr, SelectionMethodProgram);
    provider->item(2).setRemovable(one.removable);
    provider->item(2).isConfigurable = one.configurable;
    pointAt(2);
    platform.runFor(1);
    EXPECT_EQ(removeButton().alphaValue(), one.removeAlpha);
    EXPECT_EQ(configureButton().alphaValue(), one.configureAlpha);
    EXPECT_EQ(removeButton().isHidden(), one.hidden);
    EXPECT_EQ(configureButton().isHidden(), one.hidden);
  }
}

TEST_F(SelectionButtonsTest, AnUnseenOneLeavesTheClickToTheItem) {
  provider->item(1).setRemovable(false);
  pointAt(1);
  platform.runFor(1);
  EXPECT_EQ(removeButton().hitTest(removeButton().frame().center()), nullptr);
  EXPECT_EQ(configureButton().hitTest(configureButton().frame().center()), &configureButton());
}

TEST_F(SelectionButtonsTest, TheSelectionStaysWhileThePointerIsOnThem) {
  pointAt(1);
  platform.runFor(1);
  moveTo({60, 9});
  EXPECT_EQ(selectedName(), "item1");
  moveTo({118, 9});
  EXPECT_EQ(selectedName(), "item1");
  moveTo({121, 9});
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(SelectionButtonsTest, AHiddenOneHoldsNoSelection) {
  pointAt(1);
  moveTo({60, 9});
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(SelectionButtonsTest, WithoutAMenuNotEvenTheRemoveButtonHoldsTheSelection) {
  provider->item(1).isConfigurable = false;
  pointAt(1);
  platform.runFor(1);
  ASSERT_EQ(removeButton().alphaValue(), 1);
  moveTo({60, 9});
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(SelectionButtonsTest, RemoveButtonRemovesWithConfirmation) {
  pointAt(1);
  platform.runFor(1);
  removeButton().performClick();
  EXPECT_EQ(countOf(provider->log, "removeItem item1 with confirmation"), 1);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: willBeRemovedFromTabBar"), 1);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(SelectionButtonsTest, ConfigureButtonOpensTheMenuOfTheItem) {
  provider->item(1).menuTitles = {"Decorate", "Set Hot Key..."};
  pointAt(1);
  platform.runFor(1);
  configureButton().performClick();
  ASSERT_EQ(platform.menuPresenter().shown().size(), 1U);
  EXPECT_EQ(platform.menuPresenter().shown()[0].title, "QuillboxConfigurator");
  EXPECT_EQ(platform.menuPresenter().shown()[0].items,
            (std::vector<std::string>{"Decorate", "Set Hot Key..."}));
}

}  // namespace
}  // namespace qb::test
