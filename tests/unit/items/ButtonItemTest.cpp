#include "Quillbox/Item/ButtonItem.h"

#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);

class ButtonItemTest : public TabRowFixture {
 protected:
  static Button& buttonOf(const Item& item) { return dynamic_cast<Button&>(*item.view()); }
  static std::string imageNameOf(const Item& item) {
    return simulatedImageName(buttonOf(item).image());
  }
  Button::Action press() {
    return [this] { ++presses; };
  }

  int presses = 0;
};

TEST_F(ButtonItemTest, IsAButtonThatShowsItsPictureAtItsOwnSize) {
  const auto item =
      ButtonItem::create(cell, platform.graphics().imageNamed("Picture"), "Push", press());
  EXPECT_EQ(item->type(), ItemTypeButton);
  EXPECT_EQ(item->name(), "Push");
  EXPECT_FALSE(item->uniqueID().empty());
  EXPECT_TRUE(item->isInvokable());
  EXPECT_EQ(item->itemView(), nullptr);
  EXPECT_EQ(imageNameOf(*item), "Picture");
  EXPECT_EQ(buttonOf(*item).image().size(), cell.size);
  item->setViewFrame(Rect::make(5, 0, 82, 82), false);
  EXPECT_EQ(buttonOf(*item).image().size(), (Size{82, 82}));
  buttonOf(*item).performClick();
  EXPECT_EQ(presses, 1);
}

TEST_F(ButtonItemTest, TakesNoOtherImage) {
  const auto item =
      ButtonItem::create(cell, platform.graphics().imageNamed("Picture"), "Push", press());
  EXPECT_FALSE(item->setImage(platform.graphics().imageNamed("Other")));
  EXPECT_EQ(imageNameOf(*item), "Picture");
}

TEST_F(ButtonItemTest, ButtonsOfAKindHaveTheirPictures) {
  const auto add = AddButtonItem::create(cell, "Add Item", press());
  const auto reveal = RevealButtonItem::create(cell, "Open in Finder", press());
  EXPECT_EQ(add->name(), "Add Item");
  EXPECT_EQ(imageNameOf(*add), "AddItemButton");
  EXPECT_EQ(reveal->name(), "Open in Finder");
  EXPECT_EQ(imageNameOf(*reveal), "openinfinder");
  for (const Item* item : std::initializer_list<const Item*>{add.get(), reveal.get()}) {
    EXPECT_EQ(item->type(), ItemTypeButton);
    buttonOf(*item).performClick();
  }
  EXPECT_EQ(presses, 2);
}

TEST_F(ButtonItemTest, TheRowPressesItInsteadOfInvokingIt) {
  class OneButton : public TestProvider {
   public:
    std::function<void()> action;
    std::int64_t numberOfItems() override { return 1; }
    void createItemsWithSize(Size size) override {
      addItem(AddButtonItem::create({{0, 0}, size}, "Add Item", action));
    }
  };
  const auto buttons = std::make_shared<OneButton>();
  buttons->action = press();
  makeRow(buttons);
  openRow();
  select(0);
  EXPECT_TRUE(row->handleAction(QuillboxAction::actionWithCode(QuillboxActionInvoke)));
  EXPECT_EQ(presses, 1);
}

}  // namespace
}  // namespace qb::test
