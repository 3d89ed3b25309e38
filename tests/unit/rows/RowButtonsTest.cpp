// The buttons that a row has for itself.

#include "Quillbox/rows/RowButtons.h"

#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class RowButtonsTest : public TabRowFixture {
 protected:
  void makeShownRow() {
    makeOpenRow(3);
    row->setCanBeDeleted(true);
    row->setCanBeMoved(true);
    row->hostViewWasDisplayed();
    // The count of polls in the bottom band outlasts the rows.
    moveTo({400, 10});
  }
  RowButtons& buttons() { return row->rowButtons(); }
  double deleteAlpha() { return buttons().deleteButton().alphaValue(); }
  double addAlpha() { return buttons().addButton().alphaValue(); }
  double dragAlpha() { return buttons().dragButton().alphaValue(); }

  static constexpr Point inBottomBand{400, 49};
};

TEST_F(RowButtonsTest, StandAtTheirPlacesWithTheirPictures) {
  makeRow(1);
  EXPECT_EQ(buttons().deleteButton().frame(), Rect::make(0, -1, 24, 24));
  EXPECT_EQ(buttons().addButton().frame(), Rect::make(286, 49, 28, 28));
  EXPECT_EQ(buttons().dragButton().frame(), Rect::make(577, -1, 24, 24));
  EXPECT_EQ(simulatedImageName(buttons().deleteButton().image()), "DeleteTabRowButton");
  EXPECT_EQ(simulatedImageName(buttons().addButton().image()), "AddTabRowButton");
  EXPECT_EQ(simulatedImageName(buttons().dragButton().image()), "DragTabRowButton");
  EXPECT_EQ(buttons().deleteButton().image().size(), (Size{24, 24}));
  EXPECT_EQ(buttons().addButton().image().size(), (Size{28, 28}));
  EXPECT_EQ(buttons().dragButton().image().size(), (Size{24, 24}));
}

TEST_F(RowButtonsTest, FollowTheSizeOfTheRow) {
  makeRow(1);
  row->setFrame(Rect::make(0, 0, 701, 135), {83, 83}, false);
  EXPECT_EQ(buttons().deleteButton().frame(), Rect::make(0, -1, 24, 24));
  EXPECT_EQ(buttons().addButton().frame(), Rect::make(336.5, 104, 28, 28));
  EXPECT_EQ(buttons().dragButton().frame(), Rect::make(678, -1, 24, 24));
}

TEST_F(RowButtonsTest, AreHiddenAtFirstAndAtEveryOpening) {
  makeOpenRow(1);
  for (RowButton* button : {&buttons().deleteButton(), &buttons().addButton(),
                            static_cast<RowButton*>(&buttons().dragButton())}) {
    EXPECT_TRUE(button->isHidden());
    EXPECT_EQ(button->alphaValue(), 0);
  }
  row->setCanBeDeleted(true);
  row->hostViewWasDisplayed();
  closeRow();
  EXPECT_TRUE(buttons().deleteButton().isHidden());
  EXPECT_TRUE(buttons().addButton().isHidden());
  EXPECT_TRUE(buttons().dragButton().isHidden());
}

TEST_F(RowButtonsTest, AreThereButUnseenOnceThePanelIsUp) {
  makeShownRow();
  EXPECT_FALSE(buttons().deleteButton().isHidden());
  EXPECT_FALSE(buttons().addButton().isHidden());
  EXPECT_FALSE(buttons().dragButton().isHidden());
  EXPECT_EQ(deleteAlpha() + addAlpha() + dragAlpha(), 0);
}

TEST_F(RowButtonsTest, ARowThatCannotBeDeletedHasNoDeleteButton) {
  makeOpenRow(1);
  row->hostViewWasDisplayed();
  EXPECT_TRUE(buttons().deleteButton().isHidden());
  EXPECT_FALSE(buttons().dragButton().isHidden());
}

TEST_F(RowButtonsTest, UnseenButtonsLeaveClicksToWhatLiesBelow) {
  makeShownRow();
  row->arrangeProviderSelector();
  const Point middle = buttons().deleteButton().frame().center();
  // Row coordinates are those of a superview that the row stands in at its origin, flipped.
  EXPECT_EQ(buttons().deleteButton().hitTest(middle), nullptr);
  row->mouseEntered();
  platform.runFor(0.11);
  EXPECT_EQ(buttons().deleteButton().hitTest(middle), &buttons().deleteButton());
}

TEST_F(RowButtonsTest, FadeInWithinATenthOfASecondWhenThePointerEnters) {
  makeShownRow();
  row->mouseEntered();
  EXPECT_TRUE(buttons().deleteButtonShown());
  EXPECT_TRUE(buttons().dragButtonShown());
  EXPECT_FALSE(buttons().addButtonShown());
  platform.runFor(0.05);
  EXPECT_GT(deleteAlpha(), 0);
  EXPECT_LT(deleteAlpha(), 1);
  platform.runFor(0.051);
  EXPECT_EQ(deleteAlpha(), 1);
  EXPECT_EQ(dragAlpha(), 1);
  EXPECT_EQ(addAlpha(), 0);
}

TEST_F(RowButtonsTest, OnlyWhatTheRowCanDoIsOffered) {
  makeShownRow();
  row->setCanBeDeleted(false);
  row->setCanBeMoved(false);
  row->mouseEntered();
  platform.runFor(0.2);
  EXPECT_EQ(deleteAlpha() + dragAlpha(), 0);
}

TEST_F(RowButtonsTest, WhatTheRowCanNoLongerDoFadesOut) {
  makeShownRow();
  row->mouseEntered();
  platform.runFor(0.2);
  row->setCanBeDeleted(false);
  row->setCanBeMoved(false);
  platform.runFor(0.2);
  EXPECT_EQ(deleteAlpha() + dragAlpha(), 0);
}

TEST_F(RowButtonsTest, FadeOutWhenThePointerLeavesAndStayThere) {
  makeShownRow();
  row->mouseEntered();
  moveTo(inBottomBand);
  moveTo({401, 60});
  platform.runFor(0.2);
  ASSERT_EQ(deleteAlpha() + addAlpha() + dragAlpha(), 3);
  row->mouseExited();
  platform.runFor(0.2);
  EXPECT_EQ(deleteAlpha() + addAlpha() + dragAlpha(), 0);
  EXPECT_FALSE(buttons().deleteButton().isHidden());
}

TEST_F(RowButtonsTest, ComeAgainAtTheNextOpeningThoughThePointerHasNotLeft) {
  makeShownRow();
  row->mouseEntered();
  platform.runFor(0.2);
  closeRow();
  openRow();
  row->hostViewWasDisplayed();
  EXPECT_EQ(deleteAlpha(), 0);
  row->mouseEntered();
  platform.runFor(0.2);
  EXPECT_EQ(deleteAlpha(), 1);
  EXPECT_EQ(dragAlpha(), 1);
}

TEST_F(RowButtonsTest, AddButtonShowsFromTheSecondPollInTheBottomBand) {
  makeShownRow();
  moveTo(inBottomBand);
  EXPECT_FALSE(buttons().addButtonShown());
  moveTo({402, 50});
  EXPECT_TRUE(buttons().addButtonShown());
  platform.runFor(0.2);
  EXPECT_EQ(addAlpha(), 1);
  moveTo({402, 48.9});
  EXPECT_FALSE(buttons().addButtonShown());
  platform.runFor(0.2);
  EXPECT_EQ(addAlpha(), 0);
  moveTo(inBottomBand);
  EXPECT_FALSE(buttons().addButtonShown());
}

TEST_F(RowButtonsTest, PollsInTheBottomBandCountAcrossRows) {
  makeShownRow();
  moveTo(inBottomBand);
  const auto first = row;
  makeOpenRow(3);
  row->hostViewWasDisplayed();
  moveTo(inBottomBand);
  EXPECT_TRUE(buttons().addButtonShown());
  moveTo({400, 10});
}

TEST_F(RowButtonsTest, WithoutAnimationTheAlphaIsThereAtOnce) {
  makeShownRow();
  buttons().showAddButton(true, false);
  EXPECT_EQ(addAlpha(), 1);
  buttons().showAddButton(false, false);
  EXPECT_EQ(addAlpha(), 0);
}

TEST_F(RowButtonsTest, ARequestToShowIsRefusedDuringADrag) {
  makeShownRow();
  buttons().showDeleteButton(true, false);
  quillbox->registerDragOperation(std::make_shared<TestDrag>(DragTypeText));
  buttons().showAddButton(true, false);
  EXPECT_FALSE(buttons().addButtonShown());
  EXPECT_EQ(addAlpha(), 0);
  buttons().showDeleteButton(false, false);
  EXPECT_EQ(deleteAlpha(), 0);
  quillbox->deregisterDragOperation();
  buttons().showAddButton(true, false);
  EXPECT_EQ(addAlpha(), 1);
}

TEST_F(RowButtonsTest, DeletionIsUpToTheProvider) {
  makeShownRow();
  row->mouseEntered();
  platform.runFor(0.2);
  provider->confirmsItsDeletion = false;
  row->deleteTabButtonPressed();
  EXPECT_EQ(deleteAlpha(), 1);
  EXPECT_FALSE(buttons().addButton().isHidden());
  provider->confirmsItsDeletion = true;
  row->deleteTabButtonPressed();
  EXPECT_EQ(deleteAlpha() + dragAlpha(), 0);
  EXPECT_TRUE(buttons().addButton().isHidden());
}

TEST_F(RowButtonsTest, PressingTheAddButtonTakesTheButtonsAway) {
  makeShownRow();
  row->mouseEntered();
  moveTo(inBottomBand);
  moveTo(inBottomBand);
  platform.runFor(0.2);
  buttons().addButton().performClick();
  EXPECT_EQ(deleteAlpha() + addAlpha() + dragAlpha(), 0);
}

TEST_F(RowButtonsTest, WorkWithoutTheirPictures) {
  platform.graphics().setImageMissing("DeleteTabRowButton");
  makeShownRow();
  EXPECT_FALSE(buttons().deleteButton().image());
  EXPECT_EQ(buttons().deleteButton().frame(), Rect::make(0, -1, 24, 24));
}

}  // namespace
}  // namespace qb::test
