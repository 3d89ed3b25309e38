// Rows that come and go while the panel is up, and what is kept of the stack.

#include <gmock/gmock.h>

#include "Quillbox/activation/Settings.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class HostViewStackTest : public HostViewFixture {
 protected:
  void openPanel() {
    open(ActivationMethodCorner);
    platform.runFor(0.1);
  }
  std::uint64_t saves() { return host().stateChanged().generation(); }
  Rect slot(std::size_t index) const {
    return host().frameForTabRowAtIndex(index, host().haloSize());
  }
};

TEST_F(HostViewStackTest, DeletingFadesTheRowForAQuarterOfASecond) {
  makeRows({3, 3});
  openPanel();
  double alphaHalfWay = 1;
  platform.schedule(0.125, [&] { alphaHalfWay = rows[0]->alphaValue(); });
  const Moment begun = platform.runLoop().now();
  host().deleteTabRow(*rows[0]);
  EXPECT_DOUBLE_EQ(platform.runLoop().now() - begun, 0.25);
  EXPECT_GT(alphaHalfWay, 0.2);
  EXPECT_LT(alphaHalfWay, 0.8);
  EXPECT_EQ(rows[0]->alphaValue(), 0);
  EXPECT_EQ(rows[0]->superview(), nullptr);
  EXPECT_THAT(host().tabRows(), SizeIs(2));
  EXPECT_EQ(host().tabRows()[0], rows[1]);
  EXPECT_EQ(rows[1]->index(), 0U);
}

TEST_F(HostViewStackTest, TheGapClosesAndTheRowsTakeTheirNewSize) {
  makeRows({9, 3});
  openPanel();
  const double before = rows[1]->frame().y();
  host().deleteTabRow(*rows[0]);
  EXPECT_EQ(host().largestNumberOfTabRowItems(), 3);
  EXPECT_EQ(rows[1]->frame().y(), before);
  platform.runFor(0.26);
  EXPECT_EQ(rows[1]->frame(), slot(0));
}

TEST_F(HostViewStackTest, TheGapClosesAlsoWhenTheLargestCountStaysOrIsZero) {
  for (const int count : {3, 0}) {
    SCOPED_TRACE(count);
    makeRows({count, count});
    openPanel();
    const auto second = rows.back();
    host().deleteTabRow(*rows[rows.size() - 2]);
    platform.runFor(0.26);
    EXPECT_EQ(second->frame(), slot(second->index()));
    host().deleteTabRow(*second);
    close();
    rows.clear();
  }
}

TEST_F(HostViewStackTest, DeletingIsKeptAndHasThePointerLookedAtAnew) {
  makeRows({3, 3});
  openPanel();
  platform.pointer().moveTo(onItem(0, 1));
  platform.runFor(0.051);
  ASSERT_EQ(host().tabRowUnderMouse(), rows[0].get());
  const auto before = saves();
  host().deleteTabRow(*rows[0]);
  EXPECT_EQ(saves(), before + 1);
  platform.runFor(0.4);
  EXPECT_NE(host().tabRowUnderMouse(), rows[0].get());
}

TEST_F(HostViewStackTest, ADeletedRowIsNeitherActiveNorTheLastActiveOne) {
  makeRows({3, 3, 3});
  openPanel();
  host().setActiveTabRow(rows[0], false);
  host().setActiveTabRow(rows[1], false);
  host().deleteTabRow(*rows[1]);
  EXPECT_FALSE(rows[1]->hasActiveStatus());
  EXPECT_EQ(host().activeTabRow(), nullptr);
  EXPECT_EQ(host().lastActiveTabRow(), rows[0].get());
  host().deleteTabRow(*rows[0]);
  EXPECT_EQ(host().lastActiveTabRow(), nullptr);
}

TEST_F(HostViewStackTest, ARowThatThePointerActivatesWhileItFadesGivesTheKeysBack) {
  makeRows({3, 3});
  openPanel();
  platform.pointer().moveTo(onItem(0, 0));
  platform.runFor(0.051);
  platform.schedule(0.1, [&] { platform.pointer().moveTo(onItem(0, 2)); });
  host().deleteTabRow(*rows[0]);
  EXPECT_FALSE(rows[0]->hasActiveStatus());
  EXPECT_NE(host().activeTabRow(), rows[0].get());
  platform.pointer().moveTo({5, 5});
  platform.runFor(0.2);
  EXPECT_NE(host().lastActiveTabRow(), rows[0].get());
  host().handleAction(QuillboxAction::actionWithCode(QuillboxActionNextTabRow));
  EXPECT_FALSE(rows[0]->hasActiveStatus());
}

TEST_F(HostViewStackTest, TheRowThatIsLeftCanBeNeitherDeletedNorMoved) {
  makeRows({3});
  openPanel();
  TabRow& last = *host().tabRows()[1];
  EXPECT_TRUE(last.canBeDeleted());
  EXPECT_TRUE(last.canBeMoved());
  host().deleteTabRow(*rows[0]);
  EXPECT_FALSE(last.canBeDeleted());
  EXPECT_FALSE(last.canBeMoved());
}

TEST_F(HostViewStackTest, TheLastRowStaysHoweverQuicklyTheOthersGo) {
  makeRows({3});
  openPanel();
  const auto other = host().tabRows()[1];
  platform.schedule(0.1, [&] {
    host().deleteTabRow(*rows[0]);
    host().deleteTabRow(*other);
  });
  host().deleteTabRow(*rows[0]);
  EXPECT_THAT(host().tabRows(), ElementsAre(other));
}

TEST_F(HostViewStackTest, TwoRowsMayFadeAtATime) {
  makeRows({3, 3});
  openPanel();
  platform.schedule(0.1, [&] { host().deleteTabRow(*rows[1]); });
  host().deleteTabRow(*rows[0]);
  EXPECT_THAT(host().tabRows(), SizeIs(1));
}

TEST_F(HostViewStackTest, ThePanelMayCloseWhileARowFades) {
  makeRows({3, 3});
  openPanel();
  platform.schedule(0.1, [&] { close(); });
  host().deleteTabRow(*rows[0]);
  EXPECT_THAT(host().tabRows(), SizeIs(2));
  openPanel();
  EXPECT_EQ(host().activeTabRow(), rows[1].get());
}

TEST_F(HostViewStackTest, ANewRowStandsBelowOrAboveTheOneThatAskedForIt) {
  makeRows({3, 3});
  openPanel();
  const auto below = host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow);
  EXPECT_EQ(host().tabRows()[1], below);
  const auto above = host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementAbove);
  EXPECT_EQ(host().tabRows()[0], above);
  EXPECT_EQ(above->index(), 0U);
  EXPECT_EQ(rows[0]->index(), 1U);
  EXPECT_EQ(below->index(), 2U);
  EXPECT_EQ(below->provider(), nullptr);
  EXPECT_TRUE(below->canBeDeleted());
}

TEST_F(HostViewStackTest, TheOthersMakeRoomBeforeANewRowFadesIn) {
  makeRows({3, 3});
  openPanel();
  double alphaWhileMakingRoom = 1;
  platform.schedule(0.2, [&] { alphaWhileMakingRoom = host().tabRows()[1]->alphaValue(); });
  const auto before = saves();
  const Moment begun = platform.runLoop().now();
  const auto row = host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow);
  EXPECT_DOUBLE_EQ(platform.runLoop().now() - begun, 0.25);
  EXPECT_EQ(alphaWhileMakingRoom, 0);
  EXPECT_EQ(rows[1]->frame(), slot(2));
  EXPECT_EQ(row->frame(), slot(1));
  EXPECT_EQ(saves(), before + 1);
  EXPECT_LT(row->alphaValue(), 0.1);
  platform.runFor(0.26);
  EXPECT_EQ(row->alphaValue(), 1);
}

TEST_F(HostViewStackTest, ANewRowOfAnOpenPanelIsDisplayed) {
  makeRows({3});
  openPanel();
  const auto row = host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow);
  const auto provider = TestProvider::withItems(2);
  row->setProvider(provider);
  platform.runFor(0.6);
  EXPECT_THAT(row->items(), SizeIs(2));
  provider->names = {"item0", "item1", "item2"};
  row->itemsHaveChangedWithMaintainSelection(false, false);
  platform.runFor(0.1);
  EXPECT_THAT(row->items(), SizeIs(3));
}

TEST_F(HostViewStackTest, ANewRowOfAClosedPanelHoldsNoItems) {
  makeRows({3});
  const auto row = host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow);
  row->itemsHaveChangedWithMaintainSelection(false, false);
  platform.runFor(0.1);
  EXPECT_THAT(row->items(), IsEmpty());
}

TEST_F(HostViewStackTest, NoRowIsAddedBeyondWhatTheScreenHolds) {
  makeRows({1, 1, 1, 1, 1});
  settings().setLowerTabRowItemHaloHeight(50);
  host().setMaximumFrame(Rect::make(0, 0, 1000, 800));
  ASSERT_EQ(host().calculateMaximumTabRowsSupportedByMainScreen(), 6);
  openPanel();
  host().setMaximumFrame(Rect::make(0, 0, 1000, 800));
  platform.dialogs().answerAlert("OK");
  EXPECT_EQ(host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow), nullptr);
  EXPECT_THAT(host().tabRows(), SizeIs(6));
  ASSERT_THAT(platform.dialogs().shownAlerts(), SizeIs(1));
  const auto& alert = platform.dialogs().shownAlerts()[0];
  EXPECT_EQ(alert.messageText, "Maximum Tab Rows");
  EXPECT_EQ(alert.informativeText,
            "You have reached the maximum number of Tab Rows that can currently fit your "
            "screen.\r\rYou may be able to fit more Tab Rows if you reduce the minimum icon size "
            "in the Quillbox Settings.");
  EXPECT_THAT(alert.buttons, ElementsAre("OK"));
}

TEST_F(HostViewStackTest, OneMoreRowThanTheNaturalSizeHoldsIsAddedAtTheSmallest) {
  makeRows({1, 1, 1, 1});
  openPanel();
  host().setMaximumFrame(Rect::make(0, 0, 1000, 800));
  EXPECT_NE(host().addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow), nullptr);
  EXPECT_THAT(host().tabRows(), SizeIs(6));
}

TEST_F(HostViewStackTest, TheFacadeAddsRowsToo) {
  makeRows({3});
  const auto row = quillbox->addTabRowRelativeToTabRow(*rows[0], TabRowPlacementBelow);
  EXPECT_EQ(host().tabRows()[1], row);
}

TEST_F(HostViewStackTest, ChangedItemsAreToBeKept) {
  makeRows({3});
  openPanel();
  const auto before = saves();
  host().tabRowItemsHaveChanged(*rows[0]);
  EXPECT_EQ(saves(), before + 1);
}

TEST_F(HostViewStackTest, SavesWithinASecondAreOne) {
  const auto before = saves();
  for (int call = 0; call < 10; ++call) {
    quillbox->saveStateCoallesced();
    platform.runFor(0.09);
  }
  EXPECT_EQ(saves(), before);
  platform.runFor(0.11);
  EXPECT_EQ(saves(), before + 1);
  quillbox->saveStateCoallesced();
  platform.runFor(1.01);
  EXPECT_EQ(saves(), before + 2);
  quillbox->saveState();
  EXPECT_EQ(saves(), before + 3);
}

}  // namespace
}  // namespace qb::test
