#include "Quillbox/Item/Item.h"

#include "Quillbox/Item/ItemView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Button.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);

class ItemTest : public QuillboxFixture {
 protected:
  Image picture() { return platform.graphics().imageNamed("Picture"); }
};

PropertyList savedItem(const std::string& name, const std::string& uniqueID) {
  return PropertyList::dictionary({{"Item Name", name}, {"Item Unique ID", uniqueID}});
}

TEST_F(ItemTest, HasItsDefaults) {
  const auto item = Item::create(cell, picture(), "One");
  EXPECT_EQ(item->name(), "One");
  EXPECT_EQ(item->description(), "Generic Item");
  EXPECT_EQ(item->type(), ItemTypeGeneric);
  EXPECT_EQ(item->index(), 0);
  EXPECT_EQ(item->tag(), 0);
  EXPECT_EQ(item->dragability(), 0);
  EXPECT_TRUE(item->isInvokable());
  EXPECT_FALSE(item->isSelected());
  EXPECT_FALSE(item->isRemovable());
  EXPECT_FALSE(item->isTrashable());
  EXPECT_FALSE(item->isArrangeable());
  EXPECT_FALSE(item->configurable());
  EXPECT_FALSE(item->previewable());
  EXPECT_FALSE(item->decorateable());
  EXPECT_FALSE(item->representsFileSystemItem());
  EXPECT_FALSE(item->represenedFileSystemItemExists());
  EXPECT_TRUE(item->shouldDismissQuillboxWhenInvoked());
  EXPECT_FALSE(item->supportsQuickRemoval());
  EXPECT_FALSE(item->performPasteboardCut());
  EXPECT_FALSE(item->performPasteboardCopy());
  EXPECT_FALSE(item->performPasteboardPaste());
  EXPECT_FALSE(item->getBaseIconImage());
  EXPECT_EQ(item->tabRow(), nullptr);
  EXPECT_FALSE(item->representedObject().has_value());
  EXPECT_FALSE(item->canReceiveCurrentDragOperation());
}

TEST_F(ItemTest, TypeCodesAndDragabilityBitsHaveTheirValues) {
  const std::vector<std::int32_t> types = {ItemTypeGeneric,
                                           ItemTypeFile,
                                           ItemTypeServer,
                                           ItemTypeVolume,
                                           ItemTypeFolder,
                                           ItemTypeApplication,
                                           ItemTypeButton,
                                           ItemTypeWindow,
                                           ItemTypeWebPage,
                                           ItemTypeCubbyhole,
                                           ItemTypeScreenShot,
                                           ItemTypeAutoType,
                                           ItemTypeSeparator,
                                           ItemTypeMetaFolder,
                                           ItemTypeClip,
                                           ItemTypeClipboard,
                                           ItemTypeDisplayConfiguration,
                                           ItemTypeDragAndDropPlaceholder};
  for (std::size_t code = 0; code < types.size(); ++code) {
    EXPECT_EQ(types[code], static_cast<std::int32_t>(code));
  }
  EXPECT_EQ(DragabilityMovesOutOfRow, 2);
  EXPECT_EQ(DragabilityDimsInRow, 4);
  EXPECT_EQ(DragabilityWatchesMouseUp, 8);
}

TEST_F(ItemTest, GetsAnIdentityThatNoOtherHas) {
  const auto one = Item::create(cell, picture(), "One");
  const auto other = Item::create(cell, picture(), "One");
  EXPECT_FALSE(one->uniqueID().empty());
  EXPECT_NE(one->uniqueID(), other->uniqueID());
  EXPECT_EQ(one->hotKeyIdentifier(), one->uniqueID());
  EXPECT_EQ(one->decorationKey(), one->uniqueID());
}

TEST_F(ItemTest, TakesNameAndIdentityFromSavedState) {
  const auto item = Item::create(cell, savedItem("Kept", "id-1"));
  EXPECT_EQ(item->name(), "Kept");
  EXPECT_EQ(item->uniqueID(), "id-1");
  EXPECT_EQ(item->view()->frame(), cell);
  EXPECT_EQ(item->state(), savedItem("Kept", "id-1"));
}

TEST_F(ItemTest, EmptySavedIdentityIsReplaced) {
  EXPECT_FALSE(Item::create(cell, savedItem("Kept", ""))->uniqueID().empty());
}

TEST_F(ItemTest, MissingSavedIdentityIsReplaced) {
  const auto item = Item::create(cell, PropertyList::dictionary());
  EXPECT_FALSE(item->uniqueID().empty());
  EXPECT_EQ(item->name(), "");
}

TEST_F(ItemTest, DuplicateKeepsTheNameUnderAnIdentityOfItsOwn) {
  const auto item = Item::create(cell, savedItem("Kept", "id-1"));
  const auto copy = item->duplicate();
  EXPECT_EQ(copy->name(), "Kept");
  EXPECT_NE(copy->uniqueID(), "id-1");
  EXPECT_FALSE(copy->uniqueID().empty());
  EXPECT_EQ(copy->view()->frame(), cell);
}

TEST_F(ItemTest, IsRegisteredForAsLongAsItLives) {
  auto item = Item::create(cell, savedItem("Kept", "id-1"));
  EXPECT_EQ(quillbox->registeredItemWithUniqueID("id-1"), item.get());
  item.reset();
  EXPECT_EQ(quillbox->registeredItemWithUniqueID("id-1"), nullptr);
}

TEST_F(ItemTest, ItsViewKnowsItForAsLongAsItLives) {
  auto item = Item::create(cell, picture(), "One");
  const auto view = item->view();
  ASSERT_EQ(item->itemView(), view.get());
  EXPECT_EQ(item->itemView()->item(), item.get());
  item.reset();
  EXPECT_EQ(static_cast<ItemView&>(*view).item(), nullptr);
}

TEST_F(ItemTest, ShowsItsImageAtTheSizeOfTheView) {
  const auto item = Item::create(cell, picture(), "One");
  EXPECT_EQ(item->image(), picture().withSize({42, 42}));
  EXPECT_EQ(item->itemView()->imageScaling(), ImageScaleProportionallyDown);
}

TEST_F(ItemTest, WithoutAnItemViewItTakesNoImage) {
  const auto item = Item::create(std::make_shared<Button>(cell), "Push");
  EXPECT_EQ(item->itemView(), nullptr);
  EXPECT_FALSE(item->setImage(picture()));
  EXPECT_FALSE(item->image());
  EXPECT_FALSE(static_cast<Button&>(*item->view()).image());
}

TEST_F(ItemTest, ImageFollowsTheFrame) {
  const auto item = Item::create(cell, picture(), "One");
  item->setViewFrame(Rect::make(5, 6, 30, 30), false);
  EXPECT_EQ(item->view()->frame(), Rect::make(5, 6, 30, 30));
  EXPECT_EQ(item->image().size(), (Size{30, 30}));
  EXPECT_EQ(item->viewFrame(), Rect::make(5, 6, 30, 30));
}

TEST_F(ItemTest, ImageFollowsAnAnimatedFrameToItsEnd) {
  const auto item = Item::create(cell, picture(), "One");
  item->setViewFrame(Rect::make(100, 0, 82, 82), true);
  EXPECT_EQ(item->view()->frame(), cell);
  EXPECT_EQ(item->viewFrame(), Rect::make(100, 0, 82, 82));
  platform.runFor(0.3);
  EXPECT_EQ(item->view()->frame(), Rect::make(100, 0, 82, 82));
  EXPECT_EQ(item->image().size(), (Size{82, 82}));
}

TEST_F(ItemTest, ANameThatWasNeverSavedIsNotSaved) {
  const auto item = Item::create(cell, PropertyList::dictionary({{"Item Unique ID", "id-1"}}));
  EXPECT_EQ(item->name(), "");
  EXPECT_EQ(item->state(), PropertyList::dictionary({{"Item Unique ID", "id-1"}}));
  item->setName("");
  EXPECT_EQ(item->state(), savedItem("", "id-1"));
}

TEST_F(ItemTest, SelectionIsRemembered) {
  const auto item = Item::create(cell, picture(), "One");
  item->wasSelected();
  EXPECT_TRUE(item->isSelected());
  item->wasDeselected();
  EXPECT_FALSE(item->isSelected());
}

TEST_F(ItemTest, ItsRowIsForgottenWithTheRow) {
  const auto item = Item::create(cell, picture(), "One");
  auto row = TabRow::create(nullptr, cell, nullptr);
  item->setTabRow(row);
  EXPECT_EQ(item->tabRow(), row);
  row.reset();
  EXPECT_EQ(item->tabRow(), nullptr);
}

}  // namespace
}  // namespace qb::test
