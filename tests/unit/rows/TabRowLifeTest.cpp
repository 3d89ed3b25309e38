// A row from its construction through openings and closings.

#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowLifeTest : public TabRowFixture {
 protected:
  /// Of the items that show, those wholly there.
  int numberOfOpaqueItems() const {
    int count = 0;
    for (const auto& item : row->items()) {
      if (item->view()->alphaValue() == 1) ++count;
    }
    return count;
  }
};

TEST_F(TabRowLifeTest, BeginsWithItsLooks) {
  makeRow(1);
  EXPECT_EQ(row->cornerRadius(), 25);
  EXPECT_EQ(row->backgroundColor(), settings().tabRowColor());
  EXPECT_FALSE(row->renderBorder());
  EXPECT_EQ(row->borderWidth(), 3);
  EXPECT_EQ(row->borderColor(), Color::white());
  EXPECT_TRUE(row->isFlipped());
  EXPECT_TRUE(row->itemSelectionEnabled());
  EXPECT_EQ(row->selectedItem(), nullptr);
  EXPECT_TRUE(row->items().empty());
  EXPECT_EQ(provider->tabRow(), row);
}

TEST_F(TabRowLifeTest, BeginsWithHiddenSelectionViews) {
  makeRow(1);
  auto& views = row->selectionViews();
  EXPECT_TRUE(views.halo().isHidden());
  EXPECT_TRUE(views.label().isHidden());
  EXPECT_TRUE(views.eventCaptureView().isHidden());
  EXPECT_EQ(views.halo().backgroundColor(), Color::colorWithCalibratedWhite(0, 0.5));
  EXPECT_TRUE(views.halo().renderBorder());
  EXPECT_EQ(views.halo().borderColor(), Color::white());
  EXPECT_EQ(views.halo().alphaValue(), 1);
  EXPECT_EQ(views.label().backgroundColor(), Color::colorWithCalibratedWhite(0, 0.5));
  EXPECT_EQ(views.label().cornerRadius(), 10);
  EXPECT_EQ(views.label().font(), Font::systemFontOfSize(14));
  EXPECT_TRUE(views.label().isShadowed());
  EXPECT_FALSE(views.label().renderBorder());
  EXPECT_EQ(views.eventCaptureView().alphaValue(), 0);
}

TEST_F(TabRowLifeTest, HaloOfARowThatWasNeverSizedHasItsFirstLook) {
  row = TabRow::create(nullptr, Rect::make(0, 0, 100, 100), nullptr);
  auto& halo = row->selectionViews().halo();
  EXPECT_EQ(halo.frame(), Rect::make(0, 0, 50, 50));
  EXPECT_EQ(halo.borderWidth(), 3);
  EXPECT_EQ(halo.cornerRadius(), 10);
  EXPECT_EQ(row->selectionViews().eventCaptureView().frame(), Rect::make(0, 0, 50, 50));
}

TEST_F(TabRowLifeTest, FirstOpeningMakesTheItems) {
  makeOpenRow(3);
  EXPECT_EQ(provider->log, (CallLog{"createItems", "itemsWillBeDisplayed"}));
  ASSERT_EQ(row->items().size(), 3U);
  for (std::size_t position = 0; position < 3; ++position) {
    const auto& item = row->items()[position];
    EXPECT_EQ(item->index(), static_cast<std::int64_t>(position));
    EXPECT_EQ(item->tabRow(), row);
    EXPECT_EQ(item->view()->superview(), row.get());
    EXPECT_EQ(item->view()->alphaValue(), 1);
    EXPECT_EQ(item->view()->frame().size, (Size{42, 42}));
  }
}

TEST_F(TabRowLifeTest, ClosingLetsGoOfTheItemsAndTheProviderKeepsThem) {
  makeOpenRow(2);
  const auto made = provider->items();
  select(1);
  provider->log.clear();
  row->hostViewWillBeDismissed();
  EXPECT_EQ(provider->log, (CallLog{"itemsWillBeDismissed"}));
  row->hostViewWasDismissed();
  EXPECT_EQ(provider->log, (CallLog{"itemsWillBeDismissed", "itemWasDeselected item1",
                                    "owningTabRowWasDismissed"}));
  EXPECT_TRUE(row->items().empty());
  EXPECT_EQ(row->selectedItem(), nullptr);
  EXPECT_EQ(provider->items(), made);
  EXPECT_EQ(made[0]->view()->superview(), nullptr);
}

TEST_F(TabRowLifeTest, NextOpeningShowsTheSameItems) {
  makeOpenRow(2);
  const auto made = provider->items();
  closeRow();
  provider->log.clear();
  openRow();
  EXPECT_EQ(row->items(), made);
  EXPECT_EQ(provider->log, (CallLog{"itemsWillBeDisplayed"}));
}

TEST_F(TabRowLifeTest, ItemsThatHaveChangedAreMadeAnewAtTheNextOpening) {
  makeOpenRow(2);
  const auto made = provider->items();
  closeRow();
  provider->log.clear();
  provider->itemsHaveChanged = true;
  openRow();
  EXPECT_EQ(provider->log, (CallLog{"deleteItems", "createItems", "itemsWillBeDisplayed"}));
  EXPECT_NE(row->items(), made);
}

TEST_F(TabRowLifeTest, EveryOpeningIsUnscrolled) {
  makeOpenRow(20);
  row->scrollItemsBy(-4);
  EXPECT_EQ(row->indexScrollOffset(), -4);
  closeRow();
  openRow();
  EXPECT_EQ(row->indexScrollOffset(), 0);
  EXPECT_EQ(row->items()[0]->view()->frame().x(), 16);
}

TEST_F(TabRowLifeTest, PositionsWithoutAnItemStayUnused) {
  makeRow(2);
  provider->surplus = 3;
  openRow();
  EXPECT_EQ(row->numberOfItems(), 5);
  EXPECT_EQ(row->items().size(), 2U);
}

TEST_F(TabRowLifeTest, ARowWithoutAProviderHasNoItems) {
  row = TabRow::create(nullptr, Rect::make(0, 0, 100, 100), nullptr);
  row->setFrame(Rect::make(0, 0, 600, 80), {50, 50}, false);
  EXPECT_EQ(row->numberOfItems(), 0);
  openRow();
  row->gainActiveStatusAsDefault(true);
  row->selectInitialItem();
  EXPECT_TRUE(row->items().empty());
  EXPECT_EQ(row->selectedItem(), nullptr);
  closeRow();
  EXPECT_EQ(row->provider(), nullptr);
}

TEST_F(TabRowLifeTest, ActiveStatusReachesTheProviderOnce) {
  makeOpenRow(2);
  provider->log.clear();
  row->gainActiveStatusAsDefault(true);
  row->gainActiveStatusAsDefault(false);
  EXPECT_EQ(provider->log, (CallLog{"gainActiveStatus"}));
  row->relinquishActiveStatus();
  row->relinquishActiveStatus();
  EXPECT_EQ(provider->log, (CallLog{"gainActiveStatus", "relinquishActiveStatus"}));
}

TEST_F(TabRowLifeTest, LeavingARowTakesItsSelectionAway) {
  makeOpenRow(2);
  row->gainActiveStatusAsDefault(true);
  select(1);
  row->relinquishActiveStatus();
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowLifeTest, AnotherProviderTakesOver) {
  makeOpenRow(2);
  row->gainActiveStatusAsDefault(true);
  row->showInstructionalMessage("Drop items here");
  provider->log.clear();
  const auto other = TestProvider::withItems(3);
  other->title = "Others";
  row->setProvider(other);
  EXPECT_EQ(provider->log, (CallLog{"itemsWillBeDismissed", "deleteItems", "relinquishActiveStatus",
                                    "prepareForDeallocation"}));
  EXPECT_EQ(row->provider(), other);
  EXPECT_EQ(other->tabRow(), row);
  EXPECT_EQ(other->log, (CallLog{"createItems", "itemsWillBeDisplayed", "gainActiveStatus"}));
  EXPECT_EQ(row->providerSelector().nameLabel().text(), "Others");
  EXPECT_EQ(row->instructionalMessageLabel(), nullptr);
}

TEST_F(TabRowLifeTest, AClosedRowGetsAnotherProviderWithoutShowingItsItems) {
  makeOpenRow(2);
  closeRow();
  const auto other = TestProvider::withItems(3);
  row->setProvider(other);
  EXPECT_EQ(other->log, (CallLog{"createItems"}));
  EXPECT_TRUE(row->items().empty());
  openRow();
  EXPECT_EQ(other->log, (CallLog{"createItems", "itemsWillBeDisplayed"}));
  EXPECT_EQ(row->items().size(), 3U);
}

TEST_F(TabRowLifeTest, ItemsOfAFormerProviderAreNoLongerSelected) {
  makeOpenRow(2);
  row->setSelectedItem(row->items()[1], SelectionMethodKeyboard);
  const std::weak_ptr<Item> selected = row->selectedItem();
  row->setProvider(TestProvider::withItems(3));
  EXPECT_EQ(row->selectedItem(), nullptr);
  EXPECT_TRUE(selected.expired());
  EXPECT_TRUE(row->selectionViews().halo().isHidden());
  row->handleAction(QuillboxAction::actionWithCode(QuillboxActionInvokeAndStay));
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 0);
}

TEST_F(TabRowLifeTest, ItemsOfANewProviderFadeInOneAfterTheOther) {
  makeOpenRow(3);
  row->setProvider(TestProvider::withItems(3));
  ASSERT_EQ(row->items().size(), 3U);
  EXPECT_EQ(row->items()[0]->view()->alphaValue(), 0);
  // The first starts 0.05 second on and takes 0.25.
  platform.runFor(0.049);
  EXPECT_EQ(row->items()[0]->view()->alphaValue(), 0);
  platform.runFor(0.1);
  EXPECT_GT(row->items()[0]->view()->alphaValue(), 0);
  EXPECT_GT(row->items()[0]->view()->alphaValue(), row->items()[1]->view()->alphaValue());
  platform.runFor(0.16);
  EXPECT_EQ(numberOfOpaqueItems(), 1);
  platform.runFor(0.05);
  EXPECT_EQ(numberOfOpaqueItems(), 2);
  platform.runFor(0.05);
  EXPECT_EQ(numberOfOpaqueItems(), 3);
}

TEST_F(TabRowLifeTest, OnlyTheFirstFiftyOneItemsFadeIn) {
  makeOpenRow(60);
  row->setProvider(TestProvider::withItems(60));
  ASSERT_EQ(row->items().size(), 60U);
  EXPECT_EQ(row->items()[50]->view()->alphaValue(), 0);
  EXPECT_EQ(row->items()[51]->view()->alphaValue(), 1);
  EXPECT_EQ(numberOfOpaqueItems(), 9);
  platform.runFor(51 * 0.05 + 0.3);
  EXPECT_EQ(numberOfOpaqueItems(), 60);
}

TEST_F(TabRowLifeTest, NewSettingsRecolourTheRow) {
  makeRow(1);
  settings().setTabRowColorWithRed(0.5, 0.25, 0.125);
  settings().synthesizeTabRowColor();
  row->settingsChanged();
  EXPECT_EQ(row->backgroundColor(), settings().tabRowColor());
}

TEST_F(TabRowLifeTest, AHilitedRowHasABorderAndHalfTheColour) {
  makeRow(1);
  settings().setTabRowColor(Color::colorWithCalibratedRed(0.5, 0.25, 1, 0.75));
  row->setHilited(true);
  EXPECT_TRUE(row->renderBorder());
  EXPECT_EQ(row->backgroundColor(), Color::colorWithCalibratedRed(0.25, 0.125, 0.5, 0.75));
  row->setHilited(false);
  EXPECT_FALSE(row->renderBorder());
  EXPECT_EQ(row->backgroundColor(), Color::colorWithCalibratedRed(0.5, 0.25, 1, 0.75));
}

TEST_F(TabRowLifeTest, ClosingEndsTheHilite) {
  makeOpenRow(1);
  row->setHilited(true);
  row->hostViewWillBeDismissed();
  EXPECT_FALSE(row->renderBorder());
}

TEST_F(TabRowLifeTest, AnInstructionalMessageFillsTheRow) {
  makeRow(0);
  row->showInstructionalMessage("Drop items here");
  LabelView* label = row->instructionalMessageLabel();
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(), "Drop items here");
  EXPECT_EQ(label->frame(), Rect::make(0, 0, 600, 80));
  EXPECT_FALSE(label->renderBackground());
  EXPECT_TRUE(label->isShadowed());
  EXPECT_EQ(label->textColor(), Color::colorWithCalibratedRed(0.996078431372549, 0.611764705882353,
                                                              0.10980392156862745, 0.8));
  EXPECT_EQ(label->alphaValue(), 1);
  row->showInstructionalMessage("Another");
  EXPECT_EQ(row->instructionalMessageLabel(), label);
  EXPECT_EQ(label->text(), "Another");
  row->setFrame(Rect::make(0, 0, 700, 90), {60, 60}, false);
  EXPECT_EQ(label->frame(), Rect::make(0, 0, 700, 90));
  row->hideInstructionalMessage();
  EXPECT_EQ(row->instructionalMessageLabel(), nullptr);
}

TEST_F(TabRowLifeTest, AHiddenMessageLeavesTheRow) {
  makeRow(0);
  const std::size_t before = row->subviews().size();
  row->showInstructionalMessage("Drop items here");
  EXPECT_EQ(row->subviews().size(), before + 1);
  row->hideInstructionalMessage();
  row->hideInstructionalMessage();
  EXPECT_EQ(row->subviews().size(), before);
}

}  // namespace
}  // namespace qb::test
