#include "Platform/Pasteboards.h"
#include "Quillbox/Item/DraggingItem.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/Item/ItemView.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(7, 8, 42, 42);

class ItemDragsTest : public TabRowFixture {
 protected:
  Image picture() { return platform.graphics().imageNamed("Picture"); }
  std::vector<std::shared_ptr<DragItem>> twoThings() const {
    return {std::make_shared<DragItem>(), std::make_shared<DragItem>()};
  }

  TestDrag drag{DragTypeFileURL | DragTypeText};
};

TEST_F(ItemDragsTest, KindsHaveTheirBits) {
  const std::vector<std::uint32_t> types = {DragTypeFileURL,
                                            DragTypeText,
                                            DragTypeImage,
                                            DragTypeWebSite,
                                            DragTypeAutoType,
                                            DragTypeMetaFolder,
                                            DragTypeScreenShot,
                                            DragTypeClipboard,
                                            DragTypeSeparator,
                                            DragTypeClip,
                                            DragTypeDisplayConfiguration,
                                            DragTypePreferencePane,
                                            DragTypeCubbyhole,
                                            DragTypeWebURL};
  EXPECT_EQ(types, (std::vector<std::uint32_t>{1, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096,
                                               8192, 16384}));
  EXPECT_EQ(DragOperationEvery, -1);
  EXPECT_EQ(DragOperationPrivate, 8);
}

TEST_F(ItemDragsTest, ADragOverAnItemConcernsThePanel) {
  const auto item = Item::create(cell, picture(), "One");
  const auto entered = std::make_shared<TestDrag>(DragTypeText);
  EXPECT_EQ(item->draggingEntered(entered), DragOperationEvery);
  EXPECT_TRUE(quillbox->dragOperationIsInProgress());
  EXPECT_EQ(item->draggingEntered(entered), DragOperationEvery);
  quillbox->deregisterDragOperation();
}

TEST_F(ItemDragsTest, WhatIsDraggedIsTheItemWithItsPicture) {
  const auto item = Item::create(cell, picture(), "One");
  const DraggingItem dragging = item->draggingItem();
  EXPECT_EQ(dragging.pasteboardWriter, item);
  EXPECT_EQ(dragging.draggingFrame, cell);
  EXPECT_EQ(dragging.contents, picture().withSize(cell.size));
}

TEST_F(ItemDragsTest, ItsStateIsWhatAPasteboardGetsButInNoType) {
  const auto item = Item::create(cell, picture(), "One");
  const auto pasteboard = platform.pasteboards().pasteboardWithName("drag");
  EXPECT_TRUE(item->writableTypesForPasteboard(*pasteboard).empty());
  EXPECT_EQ(item->writingOptionsForType("any", *pasteboard), 0U);
  EXPECT_EQ(item->pasteboardPropertyListForType("any"), item->state());
}

TEST_F(ItemDragsTest, AnItemThatIsArrangeableButNotDraggableStays) {
  for (const std::int32_t dragability : {0, DragabilityMovesOutOfRow + 0}) {
    makeOpenRow(3);
    provider->item(1).setArrangeable(true);
    provider->item(1).setDragability(dragability);
    select(1);
    Event press;
    press.type = EventTypeLeftMouseDown;
    press.location = row->convertPointToView({87, 40}, nullptr);
    row->mouseDownInEventCaptureView(press, row->selectionViews().eventCaptureView());
    provider->log.clear();
    moveTo({60, 10});
    EXPECT_EQ(countOf(provider->log, "drag item1"), dragability == 0 ? 0 : 1);
  }
}

TEST_F(ItemDragsTest, AnItemThatCannotTakeTheDragDimsUntilItsEnd) {
  const auto item = Item::create(cell, picture(), "One");
  item->setupForDragOperation(drag, drag.dragTypes());
  EXPECT_FALSE(item->canReceiveCurrentDragOperation());
  EXPECT_EQ(item->view()->alphaValue(), 0.25);
  item->tearDownAfterDragOperation(drag);
  EXPECT_EQ(item->view()->alphaValue(), 0.25);
  platform.runFor(0.3);
  EXPECT_EQ(item->view()->alphaValue(), 1);
}

TEST_F(ItemDragsTest, AnItemThatCanTakeTheDragIsAskedOnceAndStaysBright) {
  class Receiver : public Item {
   public:
    Receiver() : Item(cell, std::string("Receiver")) {}
    bool canReceiveDragOperation(const DragOperation&, std::uint32_t dragTypes) override {
      asked.push_back(dragTypes);
      return true;
    }
    std::vector<std::uint32_t> asked;
  };
  const auto item = std::make_shared<Receiver>();
  item->setupForDragOperation(drag, drag.dragTypes());
  EXPECT_TRUE(item->canReceiveCurrentDragOperation());
  EXPECT_TRUE(item->canReceiveCurrentDragOperation());
  EXPECT_EQ(item->asked, (std::vector<std::uint32_t>{5}));
  EXPECT_EQ(item->view()->alphaValue(), 1);
}

TEST_F(ItemDragsTest, ADropThatTheItemDoesNotTakeReachesTheProviderOfItsRow) {
  makeOpenRow(3);
  provider->takesDrops = true;
  provider->log.clear();
  EXPECT_FALSE(provider->item(0).receiveDragOperation(drag, twoThings()));
  EXPECT_EQ(provider->log, CallLog{"receive 2 at 2"});
}

TEST_F(ItemDragsTest, AProviderThatWantsNoDropsGetsNone) {
  makeOpenRow(3);
  provider->log.clear();
  EXPECT_FALSE(provider->item(0).receiveDragOperation(drag, twoThings()));
  EXPECT_TRUE(provider->log.empty());
}

TEST_F(ItemDragsTest, ADropOnAnItemOfNoRowIsLost) {
  EXPECT_FALSE(Item::create(cell, picture(), "One")->receiveDragOperation(drag, twoThings()));
}

TEST_F(ItemDragsTest, AProviderCanHaveThePanelDismissedByADrop) {
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(0.1);
  makeOpenRow(1);
  provider->takesDrops = true;
  EXPECT_FALSE(row->receiveDragOperation(drag, {}));
  platform.runFor(0.02);
  EXPECT_NE(appDelegate->state(), ActivationStateInactive);
  provider->dismissesPanelAfterDrops = true;
  EXPECT_FALSE(row->receiveDragOperation(drag, {}));
  platform.runFor(0.02);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
}

}  // namespace
}  // namespace qb::test
