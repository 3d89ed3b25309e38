#include "Platform/KeyCodes.h"
#include "Quillbox/managers/ApplicationManager.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class HostViewOpeningTest : public HostViewFixture {};

TEST_F(HostViewOpeningTest, RowsAreMadeInTheNextPass) {
  const auto later = HostView::create(Rect::make(0, 0, 1000, 800));
  EXPECT_TRUE(later->tabRows().empty());
  platform.runFor(0.002);
  EXPECT_EQ(later->tabRows().size(), 1U);
}

TEST_F(HostViewOpeningTest, AHostViewThatGoesAtOnceMakesNoRows) {
  auto later = HostView::create(Rect::make(0, 0, 1000, 800));
  later.reset();
  platform.runFor(0.01);
  EXPECT_EQ(host().tabRows().size(), 1U);
}

TEST_F(HostViewOpeningTest, FirstRowShowsTheActiveApplicationsAndIsTheDefaultForBothKeys) {
  ASSERT_EQ(host().tabRows().size(), 1U);
  TabRow& row = *host().tabRows()[0];
  EXPECT_EQ(row.provider()->name(), "Active Applications");
  EXPECT_TRUE(row.isDefaultCommandTabRow());
  EXPECT_TRUE(row.isDefaultOptionTabRow());
  EXPECT_EQ(host().getActiveApplicationsTabRow(), &row);
  EXPECT_EQ(row.hostView().get(), &host());
}

TEST_F(HostViewOpeningTest, CatalogueMakesProviders) {
  ASSERT_FALSE(host().tabRowProviderInformations().empty());
  const auto provider =
      host().createTabRowProviderWithInformation(*host().tabRowProviderInformations()[0]);
  EXPECT_TRUE(provider->isActiveApplicationsProvider());
}

TEST_F(HostViewOpeningTest, DefaultRowOpensActiveWithItsInitialItem) {
  struct Case {
    std::int32_t method;
    std::size_t activeRow;
    bool selects;
  };
  // Row 1 is the default for Command-Tab and row 2 for Option-Tab.
  const Case cases[] = {
      {ActivationMethodCommandDoubleTap, 0, false},
      {ActivationMethodCommandTab, 1, true},
      {ActivationMethodOptionTab, 2, true},
      {ActivationMethodCorner, 0, false},
  };
  makeRows({2, 2, 2});
  makeDefaults(1, 2);
  for (const Case& one : cases) {
    SCOPED_TRACE(one.method);
    present(one.method);
    EXPECT_EQ(host().activeTabRow(), rows[one.activeRow].get());
    EXPECT_EQ(rows[one.activeRow]->selectedItem() != nullptr, one.selects);
    for (std::size_t index = 0; index < rows.size(); ++index) {
      EXPECT_EQ(rows[index]->hasActiveStatus(), index == one.activeRow);
    }
    dismiss();
  }
}

TEST_F(HostViewOpeningTest, EveryRowGoesThroughTheOpeningInOrder) {
  makeRows({2, 2});
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(providers[0]->log, (CallLog{"noteEnvironment", "createItems", "itemsWillBeDisplayed",
                                        "gainActiveStatus"}));
  EXPECT_EQ(providers[1]->log, (CallLog{"noteEnvironment", "createItems", "itemsWillBeDisplayed"}));
}

TEST_F(HostViewOpeningTest, EveryRowGoesThroughTheClosing) {
  makeRows({2, 2});
  present(ActivationMethodCommandDoubleTap);
  for (const auto& provider : providers) provider->log.clear();
  dismiss();
  EXPECT_EQ(providers[0]->log, (CallLog{"itemsWillBeDismissed", "owningTabRowWasDismissed",
                                        "relinquishActiveStatus"}));
  EXPECT_EQ(providers[1]->log, (CallLog{"itemsWillBeDismissed", "owningTabRowWasDismissed"}));
  EXPECT_TRUE(rows[0]->items().empty());
}

TEST_F(HostViewOpeningTest, ClosingTakesDownWhatItemsHavePoppedUp) {
  makeRows({2});
  present(ActivationMethodCommandDoubleTap);
  Item& item = *rows[0]->items()[1];
  quillbox->presentPopUpView(std::make_shared<View>(Rect::make(0, 0, 40, 30)), item);
  ASSERT_NE(item.popUpView(), nullptr);
  const std::size_t shown = host().subviews().size();
  dismiss();
  EXPECT_EQ(item.popUpView(), nullptr);
  EXPECT_EQ(host().subviews().size(), shown - 1);
}

TEST_F(HostViewOpeningTest, ActiveRowIsRememberedUntilTheNextOpening) {
  makeRows({2, 2});
  present(ActivationMethodCommandDoubleTap);
  dismiss();
  EXPECT_EQ(host().activeTabRow(), rows[0].get());
  EXPECT_FALSE(rows[0]->hasActiveStatus());
}

TEST_F(HostViewOpeningTest, KeysGoToTheHostView) {
  makeRows({2});
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(appDelegate->window()->firstResponder(), &host());
}

TEST_F(HostViewOpeningTest, ApplicationManagerKnowsOfThePanel) {
  makeRows({2});
  present(ActivationMethodCommandDoubleTap);
  EXPECT_TRUE(quillbox->applicationManager().quillboxUIIsVisible());
  dismiss();
  EXPECT_FALSE(quillbox->applicationManager().quillboxUIIsVisible());
}

TEST_F(HostViewOpeningTest, APlainOpeningMovesNoRow) {
  makeRows({4, 2});
  present(ActivationMethodCommandDoubleTap);
  dismiss();
  const Rect before = rows[1]->frame();
  rows[1]->setFrame(offset(before, 1, 1));
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rows[1]->frame(), offset(before, 1, 1));
}

TEST_F(HostViewOpeningTest, HilitesRowsTogetherOrAlone) {
  makeRows({1, 1});
  host().hiliteTabRow(rows[0].get(), false);
  host().hiliteTabRow(rows[1].get(), false);
  EXPECT_TRUE(rows[0]->renderBorder());
  EXPECT_TRUE(rows[1]->renderBorder());
  host().hiliteTabRow(rows[1].get(), true);
  EXPECT_FALSE(rows[0]->renderBorder());
  EXPECT_TRUE(rows[1]->renderBorder());
  host().hiliteTabRow(nullptr, true);
  EXPECT_FALSE(rows[1]->renderBorder());
}

TEST_F(HostViewOpeningTest, CommandTabSelectsTheApplicationBeforeTheFrontOne) {
  platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
  platform.processes().launchInFront({"org.viewer", "Viewer", "/apps/Viewer.desktop"});
  platform.runFor(1.0);
  platform.keyboard().press(KeyCodeLeftCommand);
  platform.keyboard().type(KeyCodeTab);
  platform.runFor(0.1);
  ASSERT_NE(host().activeTabRow(), nullptr);
  EXPECT_EQ(host().activeTabRow()->selectedItem()->name(), "Editor");
  platform.keyboard().type(KeyCodeTab);
  platform.runFor(0.1);
  EXPECT_EQ(host().activeTabRow()->selectedItem()->name(), "Viewer");
}

TEST_F(HostViewOpeningTest, TwoCommandTabsInARowAlternateBetweenTwoApplications) {
  const auto editor =
      platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
  const auto viewer =
      platform.processes().launchInFront({"org.viewer", "Viewer", "/apps/Viewer.desktop"});
  platform.processes().launch({"org.player", "Player", "/apps/Player.desktop"});
  platform.runFor(1.0);
  for (const auto expected : {editor, viewer, editor}) {
    platform.keyboard().press(KeyCodeLeftCommand);
    platform.keyboard().type(KeyCodeTab);
    platform.runFor(0.1);
    platform.keyboard().release(KeyCodeLeftCommand);
    platform.runFor(1.5);
    EXPECT_EQ(platform.processes().frontClient(), expected);
  }
}

}  // namespace
}  // namespace qb::test
