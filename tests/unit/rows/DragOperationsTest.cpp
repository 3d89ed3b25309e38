#include "Quillbox/rows/DragOperations.h"

#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class DragOperationsTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({3});
    present(ActivationMethodCommandDoubleTap);
    providers[0]->item(1).takesDrags = true;
  }
  TabRow& row() { return *rows[0]; }
  const std::shared_ptr<Item>& item(std::size_t index) { return row().items()[index]; }
  std::shared_ptr<TestDrag> drag = std::make_shared<TestDrag>(DragTypeText);
};

TEST_F(DragOperationsTest, IsInProgressFromRegistrationToDeregistration) {
  EXPECT_FALSE(quillbox->dragOperationIsInProgress());
  EXPECT_EQ(quillbox->registerDragOperation(drag), -1);
  EXPECT_TRUE(quillbox->dragOperationIsInProgress());
  quillbox->deregisterDragOperation();
  EXPECT_FALSE(quillbox->dragOperationIsInProgress());
  quillbox->deregisterDragOperation();
}

TEST_F(DragOperationsTest, ItemsThatCannotTakeItDim) {
  row().setSelectedItem(item(0), SelectionMethodProgram);
  quillbox->registerDragOperation(drag);
  EXPECT_EQ(row().selectedItem(), nullptr);
  EXPECT_EQ(item(0)->view()->alphaValue(), 0.25);
  EXPECT_EQ(item(1)->view()->alphaValue(), 1);
  EXPECT_FALSE(item(0)->canReceiveCurrentDragOperation());
  EXPECT_TRUE(item(1)->canReceiveCurrentDragOperation());
  quillbox->deregisterDragOperation();
  platform.runFor(0.3);
  EXPECT_EQ(item(0)->view()->alphaValue(), 1);
}

TEST_F(DragOperationsTest, TheSameDragIsRegisteredOnce) {
  quillbox->registerDragOperation(drag);
  item(0)->view()->setAlphaValue(1);
  EXPECT_EQ(quillbox->registerDragOperation(drag), -1);
  EXPECT_EQ(item(0)->view()->alphaValue(), 1);
}

TEST_F(DragOperationsTest, ThePointerSelectsOnlyWhatCanTakeIt) {
  quillbox->registerDragOperation(drag);
  row().setSelectedItem(item(1), SelectionMethodPointer);
  EXPECT_EQ(selectedName(0), "item1");
  row().setSelectedItem(item(2), SelectionMethodPointer);
  EXPECT_EQ(selectedName(0), "none");
}

TEST_F(DragOperationsTest, EndsTheHiliteOfRows) {
  quillbox->registerDragOperation(drag);
  row().setHilited(true);
  quillbox->deregisterDragOperation();
  EXPECT_FALSE(row().renderBorder());
}

TEST_F(DragOperationsTest, EndsWithThePanel) {
  quillbox->registerDragOperation(drag);
  dismiss();
  EXPECT_FALSE(quillbox->dragOperationIsInProgress());
}

}  // namespace
}  // namespace qb::test
