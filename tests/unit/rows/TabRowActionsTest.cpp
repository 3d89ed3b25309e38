#include "Platform/KeyCodes.h"
#include "QuillboxCommon/views/Button.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowActionsTest : public TabRowFixture {
 protected:
  /// An active panel, so that its dismissal shows.
  void openPanel() {
    open(ActivationMethodCommandDoubleTap);
    platform.runFor(0.1);
    makeOpenRow(3);
    select(1);
    provider->itemLog->clear();
  }
  bool panelIsDismissed() {
    platform.runFor(0.02);
    return appDelegate->state() == ActivationStateInactive;
  }
  bool invoke() { return row->handleAction(QuillboxAction::actionWithCode(QuillboxActionInvoke)); }
};

TEST_F(TabRowActionsTest, NextAndPreviousWalkRound) {
  makeOpenRow(3);
  std::vector<std::string> walked;
  for (const std::int32_t code : {1, 1, 1, 1, 2, 2}) {
    perform(code);
    walked.push_back(selectedName());
  }
  EXPECT_EQ(walked,
            (std::vector<std::string>{"item0", "item1", "item2", "item0", "item2", "item1"}));
}

TEST_F(TabRowActionsTest, PreviousWithoutASelectionTakesTheFirstItem) {
  makeOpenRow(3);
  perform(QuillboxActionPreviousItem);
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TabRowActionsTest, PreviousWithoutASelectionGoesBackwardFromTheFirst) {
  makeOpenRow(3);
  provider->item(0).setInvokable(false);
  perform(QuillboxActionPreviousItem);
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowActionsTest, TheActivatingPressMovesOnlyWhereItIsWanted) {
  makeOpenRow(3);
  select(0);
  const auto action = QuillboxAction::applicationActiviatingActionWithCode(QuillboxActionNextItem);
  EXPECT_FALSE(row->handleAction(action));
  EXPECT_EQ(selectedName(), "item0");
  provider->takesInvocationTab = true;
  EXPECT_FALSE(row->handleAction(action));
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowActionsTest, ActionsReachTheSelectedItem) {
  struct Case {
    std::int32_t code;
    const char* call;
  };
  const Case cases[] = {
      {QuillboxActionCycleData, "item1: performDataCycling"},
      {QuillboxActionClose, "item1: close"},
      {QuillboxActionCopy, "item1: performPasteboardCopy"},
      {QuillboxActionPaste, "item1: performPasteboardPaste"},
      {QuillboxActionCut, "item1: performPasteboardCut"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.call);
    makeOpenRow(3);
    select(1);
    provider->itemLog->clear();
    EXPECT_FALSE(row->handleAction(QuillboxAction::actionWithCode(one.code)));
    EXPECT_EQ(*provider->itemLog, (CallLog{one.call}));
  }
}

TEST_F(TabRowActionsTest, ActionsWithoutASelectionDoNothing) {
  makeOpenRow(3);
  provider->itemLog->clear();
  for (std::int32_t code = QuillboxActionNextTabRow; code <= QuillboxActionCut; ++code) {
    if (code == QuillboxActionInvoke || code == QuillboxActionInvokeAndStay) continue;
    EXPECT_FALSE(row->handleAction(QuillboxAction::actionWithCode(code)));
  }
  EXPECT_TRUE(provider->itemLog->empty());
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowActionsTest, CodesOfTheHostViewAndUnknownOnesDoNothing) {
  makeOpenRow(3);
  select(1);
  provider->itemLog->clear();
  for (const std::int32_t code :
       {QuillboxActionNone, QuillboxActionNextTabRow, QuillboxActionPreviousTabRow}) {
    EXPECT_FALSE(row->handleAction(QuillboxAction::actionWithCode(code)));
  }
  EXPECT_FALSE(row->handleAction(QuillboxAction::actionWithCode(99)));
  EXPECT_TRUE(provider->itemLog->empty());
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowActionsTest, InvokeDismissesThePanelFirst) {
  openPanel();
  ASSERT_TRUE(appDelegate->window()->isVisible());
  EXPECT_TRUE(invoke());
  EXPECT_FALSE(appDelegate->window()->isVisible());
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: invoke"}));
  EXPECT_TRUE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, InvokeAndStayLeavesThePanelUp) {
  openPanel();
  EXPECT_TRUE(row->handleAction(QuillboxAction::actionWithCode(QuillboxActionInvokeAndStay)));
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: invoke"}));
  EXPECT_TRUE(appDelegate->window()->isVisible());
  EXPECT_FALSE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, InvokeWithShiftLeavesThePanelUp) {
  openPanel();
  platform.keyboard().press(KeyCodeLeftShift);
  EXPECT_TRUE(invoke());
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: invoke"}));
  EXPECT_FALSE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, AnItemMayKeepThePanelUp) {
  openPanel();
  provider->item(1).dismissesPanel = false;
  EXPECT_TRUE(invoke());
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: invoke"}));
  EXPECT_FALSE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, WhatCannotBeInvokedIsStillHandled) {
  openPanel();
  provider->item(1).setInvokable(false);
  EXPECT_TRUE(invoke());
  row->setSelectedItem(nullptr, SelectionMethodProgram);
  EXPECT_TRUE(invoke());
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 0);
  EXPECT_FALSE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, AButtonIsPushedInsteadOfInvoked) {
  /// A provider of one push button.
  class ButtonProvider : public TestProvider {
   public:
    int pushes = 0;
    void createItemsWithSize(Size size) override {
      struct ButtonItem : Item {
        explicit ButtonItem(std::shared_ptr<View> view) : Item(std::move(view), "Push", "") {}
        std::int32_t type() const override { return ItemTypeButton; }
      };
      const auto button = std::make_shared<Button>(Rect{{0, 0}, size});
      button->setAction([this] { ++pushes; });
      addItem(std::make_shared<ButtonItem>(button));
    }
  };
  const auto buttons = std::make_shared<ButtonProvider>();
  buttons->names = {"Push"};
  open(ActivationMethodCommandDoubleTap);
  makeRow(buttons);
  openRow();
  select(0);
  EXPECT_TRUE(invoke());
  EXPECT_EQ(buttons->pushes, 1);
  EXPECT_FALSE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, PreviewShowsAPreviewableItemAndDismisses) {
  openPanel();
  perform(QuillboxActionPreview);
  EXPECT_TRUE(provider->itemLog->empty());
  EXPECT_FALSE(panelIsDismissed());
  provider->item(1).isPreviewable = true;
  perform(QuillboxActionPreview);
  EXPECT_EQ(*provider->itemLog, (CallLog{"item1: preview"}));
  EXPECT_TRUE(panelIsDismissed());
}

TEST_F(TabRowActionsTest, QuickRemoveNeedsARemovableItemThatSupportsIt) {
  struct Case {
    bool removable, supports, removed;
  };
  for (const Case& one : {Case{false, false, false}, Case{true, false, false},
                          Case{false, true, false}, Case{true, true, true}}) {
    SCOPED_TRACE(testing::Message() << one.removable << one.supports);
    makeOpenRow(3);
    select(1);
    provider->item(1).setRemovable(one.removable);
    provider->item(1).removesQuickly = one.supports;
    perform(QuillboxActionQuickRemove);
    EXPECT_EQ(countOf(provider->log, "removeItem item1"), one.removed ? 1 : 0);
  }
}

TEST_F(TabRowActionsTest, AQuickRemovalLeavesASelection) {
  makeOpenRow(3);
  select(1);
  EXPECT_TRUE(row->removeItemFromTabRow(provider->items()[1], false));
  EXPECT_EQ(countOf(*provider->itemLog, "item1: willBeRemovedFromTabBar"), 1);
  EXPECT_EQ(selectedName(), "none");
  row->numberOfItems();
  platform.runFor(0.1);
  ASSERT_EQ(row->items().size(), 2U);
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TabRowActionsTest, AConfirmedRemovalLeavesNoSelection) {
  makeOpenRow(3);
  select(1);
  EXPECT_TRUE(row->removeItemFromTabRow(provider->items()[1], true));
  EXPECT_EQ(countOf(provider->log, "removeItem item1 with confirmation"), 1);
  row->numberOfItems();
  platform.runFor(0.1);
  EXPECT_EQ(row->items().size(), 2U);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowActionsTest, AProviderMayRefuseARemoval) {
  makeOpenRow(3);
  select(1);
  provider->allowsRemoval = false;
  EXPECT_FALSE(row->removeItemFromTabRow(provider->items()[1], false));
  platform.runFor(0.1);
  EXPECT_EQ(row->items().size(), 3U);
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowActionsTest, KeysGoToTheProvider) {
  makeOpenRow(1);
  Event event;
  event.type = EventTypeKeyDown;
  event.keyCode = KeyCodeO;
  row->keyDown(event);
  EXPECT_EQ(countOf(provider->log, "keyDown 31"), 1);
}

}  // namespace
}  // namespace qb::test
