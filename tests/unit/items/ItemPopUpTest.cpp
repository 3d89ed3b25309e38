#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

/// Pops up a view, and counts how often it is asked about it.
class PopUpItem : public Item {
 public:
  static std::shared_ptr<PopUpItem> create(Size size) {
    return std::shared_ptr<PopUpItem>(new PopUpItem({{0, 0}, size}));
  }

  TimeInterval wantedDelay = 0;
  TimeInterval offeredDelay = 0;
  bool popsUp = true;
  int questions = 0, viewsMade = 0;

  bool shouldDisplayPopUpViewWithDelay(TimeInterval& delay) override {
    ++questions;
    offeredDelay = delay;
    if (wantedDelay > 0) delay = wantedDelay;
    return popsUp;
  }
  std::shared_ptr<View> generatePopUpView() override {
    ++viewsMade;
    return std::make_shared<View>(Rect::make(0, 0, 100, 50));
  }

 private:
  explicit PopUpItem(const Rect& frame) : Item(frame, std::string("Pops Up")) {}
};

class PopUpProvider : public TestProvider {
 public:
  std::int64_t numberOfItems() override { return 1; }
  void createItemsWithSize(Size size) override { addItem(PopUpItem::create(size)); }
};

class ItemPopUpTest : public HostViewFixture {
 protected:
  ItemPopUpTest() {
    const auto provider = std::make_shared<PopUpProvider>();
    rows.push_back(host().createTabRowAtIndex(0, provider, false));
    present(ActivationMethodCommandTab);
    item = std::static_pointer_cast<PopUpItem>(provider->items().at(0));
    if (item->isSelected()) item->wasDeselected();
    item->questions = 0;
  }

  std::shared_ptr<PopUpItem> item;
};

TEST_F(ItemPopUpTest, PopsUpAfterHalfASecondOnIt) {
  item->wasSelected();
  EXPECT_EQ(item->offeredDelay, 0.5);
  platform.runFor(0.499);
  EXPECT_EQ(item->viewsMade, 0);
  platform.runFor(0.002);
  EXPECT_EQ(item->viewsMade, 1);
  ASSERT_NE(item->popUpView(), nullptr);
  EXPECT_EQ(item->popUpView()->superview(), &host());
}

TEST_F(ItemPopUpTest, AnItemChoosesItsDelay) {
  item->wantedDelay = 2;
  item->wasSelected();
  platform.runFor(1.999);
  EXPECT_EQ(item->popUpView(), nullptr);
  platform.runFor(0.002);
  EXPECT_NE(item->popUpView(), nullptr);
}

TEST_F(ItemPopUpTest, AnItemCanDoWithout) {
  item->popsUp = false;
  item->wasSelected();
  platform.runFor(1);
  EXPECT_EQ(item->viewsMade, 0);
}

TEST_F(ItemPopUpTest, ADeselectWithinTheDelayShowsNone) {
  item->wasSelected();
  platform.runFor(0.4);
  item->wasDeselected();
  platform.runFor(1);
  EXPECT_EQ(item->viewsMade, 0);
  EXPECT_EQ(item->popUpView(), nullptr);
}

TEST_F(ItemPopUpTest, TheFirstSelectionsDelayServesASecondOneToo) {
  item->wasSelected();
  platform.runFor(0.4);
  item->wasDeselected();
  item->wasSelected();
  platform.runFor(0.101);
  EXPECT_EQ(item->viewsMade, 1);
}

TEST_F(ItemPopUpTest, AnOpenMenuAtTheEndOfTheDelayShowsNone) {
  item->wasSelected();
  const auto menu = Menu::create();
  menu->addItem(MenuItem::create("Entry"));
  platform.menuPresenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    user.rest(0.6);
    user.escape();
  });
  quillbox->popUpMenu(menu, nullptr, {}, nullptr, nullptr);
  platform.runFor(1);
  EXPECT_EQ(item->viewsMade, 0);
}

TEST_F(ItemPopUpTest, AnItemWhoseViewIsUpIsNotAskedAgain) {
  item->wasSelected();
  platform.runFor(0.6);
  ASSERT_EQ(item->questions, 1);
  item->wasSelected();
  platform.runFor(1);
  EXPECT_EQ(item->questions, 1);
  EXPECT_EQ(item->viewsMade, 1);
}

TEST_F(ItemPopUpTest, DeselectionTakesItDown) {
  item->wasSelected();
  platform.runFor(0.6);
  const std::weak_ptr<View> view = item->popUpView();
  item->wasDeselected();
  EXPECT_EQ(item->popUpView(), nullptr);
  EXPECT_TRUE(view.expired());
}

TEST_F(ItemPopUpTest, ConfiguringTakesItDown) {
  item->wasSelected();
  platform.runFor(0.6);
  item->configure();
  EXPECT_EQ(item->popUpView(), nullptr);
}

TEST_F(ItemPopUpTest, AnItemThatIsGoneAtTheEndOfTheDelayShowsNone) {
  auto lonely = PopUpItem::create({42, 42});
  lonely->wasSelected();
  const std::weak_ptr<Item> weak = lonely;
  lonely.reset();
  EXPECT_TRUE(weak.expired());
  platform.runFor(1);
}

}  // namespace
}  // namespace qb::test
