#include "Quillbox/activation/PopUpViews.h"

#include <gmock/gmock.h>

#include "Quillbox/activation/Settings.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// An item of 50 by 50 that stands at (`x`, 15) in a row of 80 points at `rowY`, in a host of 1000
/// by 800.
PopUpViewPlaces places(double rowY, double x = 400) {
  return {.hostSize = {1000, 800},
          .tabRowFrame = Rect::make(100, rowY, 800, 80),
          .itemFrame = Rect::make(x, 15, 50, 50),
          .itemOrigin = {100 + x, rowY + 15}};
}

struct Placement {
  const char* name;
  double rowY;
  double x;
  Size wanted;
  Rect frame;
};

void PrintTo(const Placement& placement, std::ostream* out) { *out << placement.name; }

class PopUpViewPlacementTest : public testing::TestWithParam<Placement> {};

TEST_P(PopUpViewPlacementTest, IsPlaced) {
  const Placement& placement = GetParam();
  EXPECT_EQ(popUpViewFrame(placement.wanted, places(placement.rowY, placement.x)), placement.frame);
}

INSTANTIATE_TEST_SUITE_P(
    Places, PopUpViewPlacementTest,
    testing::Values(
        Placement{"FitsBelow", 400, 400, {200, 100}, Rect::make(425, 305, 200, 100)},
        Placement{
            "ExactlyAsTallAsTheRegionBelow", 400, 400, {200, 400}, Rect::make(425, 5, 200, 400)},
        Placement{"FitsAboveOnly", 100, 400, {200, 300}, Rect::make(425, 197, 200, 300)},
        Placement{"TallerThanBothGoesToTheTallerAbove",
                  100,
                  400,
                  {1000, 1240},
                  Rect::make(275, 197, 500, 620)},
        Placement{"TallerThanBothGoesToTheTallerBelow",
                  500,
                  400,
                  {400, 1000},
                  Rect::make(425, 5, 200, 500)},
        Placement{"TallerThanTwoEqualRegionsGoesBelow",
                  360,
                  400,
                  {400, 720},
                  Rect::make(425, 5, 200, 360)},
        Placement{"AtTheFarLeftItStartsAtZero", 400, -90, {200, 100}, Rect::make(0, 305, 200, 100)},
        Placement{"AtTheFarRightItEndsAtTheHostsWidth",
                  400,
                  840,
                  {200, 100},
                  Rect::make(800, 305, 200, 100)},
        Placement{
            "FractionsGrowToWholePoints", 400, 400, {101, 99.5}, Rect::make(474, 305, 102, 100)}),
    [](const auto& placement) { return placement.param.name; });

TEST(PopUpViewSideTest, IsThatOfTheItemInItsRowAgainstTheRegionInTheHost) {
  PopUpViewPlaces lowest = places(400);
  lowest.itemFrame.origin.y = 0.5;
  EXPECT_EQ(popUpViewFrame({200, 100}, lowest), Rect::make(425, 305, 200, 100));
  lowest.itemFrame.origin.y = 0;
  EXPECT_EQ(popUpViewFrame({200, 100}, lowest), Rect::make(425, 497, 200, 100));
}

/// Pops up a view of a given size after a given delay.
class PoppingItem : public Item {
 public:
  static std::shared_ptr<PoppingItem> create() {
    return std::shared_ptr<PoppingItem>(new PoppingItem);
  }
  bool pops = true;
  TimeInterval changedDelay = 0;
  TimeInterval givenDelay = 0;
  int questions = 0, generated = 0;

  bool shouldDisplayPopUpViewWithDelay(TimeInterval& delay) override {
    ++questions;
    givenDelay = delay;
    if (changedDelay > 0) delay = changedDelay;
    return pops;
  }
  std::shared_ptr<View> generatePopUpView() override {
    ++generated;
    return std::make_shared<View>(Rect::make(0, 0, 100, 40));
  }

 private:
  PoppingItem() : Item(Rect::make(0, 0, 50, 50), std::string("popping")) {}
};

class PopUpViewsTest : public ActivationFixture {
 protected:
  PopUpViewsTest() {
    hold({KeyCodeLeftCommand, KeyCodeTab});
    platform.runFor(0.5);
  }
  Item& item(int index) const { return *row().items().at(static_cast<std::size_t>(index)); }
  static std::shared_ptr<View> viewOf(double width, double height) {
    return std::make_shared<View>(Rect::make(0, 0, width, height));
  }
  std::vector<View*> popUpsOnScreen() {
    std::vector<View*> popUps;
    for (const auto& view : host().subviews()) {
      const auto* row = dynamic_cast<TabRow*>(view.get());
      if (row == nullptr && dynamic_cast<RoundedRectangleView*>(view.get()) != nullptr) {
        popUps.push_back(view.get());
      }
    }
    return popUps;
  }
  /// An item of this test that stands in the row's place of its first item.
  std::shared_ptr<PoppingItem> poppingItem() {
    auto popping = PoppingItem::create();
    popping->setTabRow(sharedFrom(row()));
    popping->setViewFrame(item(0).viewFrame(), false);
    row().addSubview(popping->view());
    return popping;
  }
};

TEST_F(PopUpViewsTest, TheViewStandsFramedInTheHostView) {
  settings().setTabRowColor(Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.5));
  const auto view = viewOf(100, 40);
  quillbox->presentPopUpView(view, item(0));
  const auto container = item(0).popUpView();
  ASSERT_TRUE(container);
  EXPECT_EQ(container->superview(), &host());
  // Half a point of the item's place makes it a point wider.
  EXPECT_EQ(container->frame().width(), 125);
  EXPECT_EQ(container->frame().height(), 64);
  EXPECT_EQ(container->alphaValue(), 1);
  EXPECT_EQ(container->cornerRadius(), 8);
  EXPECT_EQ(container->inset(), Size{});
  EXPECT_TRUE(container->renderBackground());
  EXPECT_FALSE(container->renderBorder());
  EXPECT_EQ(container->borderWidth(), 1);
  EXPECT_EQ(container->backgroundColor(), settings().tabRowColor());
  EXPECT_EQ(container->borderColor(), Color::black());
  EXPECT_EQ(view->superview(), container.get());
  EXPECT_EQ(view->frame(), Rect::make(12, 12, 101, 40));
}

TEST_F(PopUpViewsTest, TheFrameFollowsFromRowAndItem) {
  quillbox->presentPopUpView(viewOf(100, 40), item(2));
  const Rect itemFrame = item(2).view()->frame();
  const Point origin{row().frame().x() + itemFrame.x(), row().frame().y() + itemFrame.y()};
  EXPECT_EQ(item(2).popUpView()->frame(),
            popUpViewFrame({124, 64}, {.hostSize = host().frame().size,
                                       .tabRowFrame = row().frame(),
                                       .itemFrame = itemFrame,
                                       .itemOrigin = origin}));
}

TEST_F(PopUpViewsTest, AnAbsentOrEmptyViewDoesNothing) {
  quillbox->presentPopUpView(viewOf(100, 40), item(0));
  const auto present = item(0).popUpView();
  quillbox->presentPopUpView(nullptr, item(0));
  quillbox->presentPopUpView(viewOf(0, 40), item(0));
  EXPECT_EQ(item(0).popUpView(), present);
  EXPECT_THAT(popUpsOnScreen(), SizeIs(1));
}

TEST_F(PopUpViewsTest, PresentingTwiceForOneItemLeavesOneView) {
  quillbox->presentPopUpView(viewOf(100, 40), item(0));
  quillbox->presentPopUpView(viewOf(200, 60), item(0));
  ASSERT_THAT(popUpsOnScreen(), SizeIs(1));
  EXPECT_EQ(popUpsOnScreen().front(), item(0).popUpView().get());
  EXPECT_EQ(item(0).popUpView()->frame().height(), 84);
}

TEST_F(PopUpViewsTest, DismissingTakesTheViewAway) {
  quillbox->presentPopUpView(viewOf(100, 40), item(0));
  quillbox->dismissPopUpViewForItem(item(0));
  EXPECT_FALSE(item(0).popUpView());
  EXPECT_THAT(popUpsOnScreen(), IsEmpty());
  quillbox->dismissPopUpViewForItem(item(0));
}

TEST_F(PopUpViewsTest, AllCanBeDismissedAtOnce) {
  quillbox->presentPopUpView(viewOf(100, 40), item(0));
  quillbox->presentPopUpView(viewOf(100, 40), item(1));
  ASSERT_THAT(popUpsOnScreen(), SizeIs(2));
  quillbox->dismissPopUpViewsForAllItems();
  EXPECT_THAT(popUpsOnScreen(), IsEmpty());
  EXPECT_FALSE(item(0).popUpView());
  EXPECT_FALSE(item(1).popUpView());
}

TEST_F(PopUpViewsTest, TheLargestViewFillsTheGreaterRoom) {
  const View& view = *item(0).view();
  const double originY = row().frame().y() + view.frame().y();
  const double farY =
      view.convertPointToView({view.frame().width(), view.frame().height()}, &host()).y;
  const double below = originY - 120;
  const double above = host().frame().height() - farY - 160;
  EXPECT_EQ(quillbox->maximumPopUpViewSizeForItem(item(0)),
            (Size{host().frame().width(), std::max(below, above)}));
}

TEST_F(PopUpViewsTest, AnItemPopsUpAfterARest) {
  const auto popping = poppingItem();
  popping->wasSelected();
  EXPECT_EQ(popping->givenDelay, 0.5);
  platform.runFor(0.49);
  EXPECT_FALSE(popping->popUpView());
  platform.runFor(0.02);
  EXPECT_TRUE(popping->popUpView());
  popping->wasDeselected();
  EXPECT_FALSE(popping->popUpView());
  EXPECT_THAT(popUpsOnScreen(), IsEmpty());
}

TEST_F(PopUpViewsTest, AnItemMayChangeTheRest) {
  const auto popping = poppingItem();
  popping->changedDelay = 2;
  popping->wasSelected();
  platform.runFor(1.99);
  EXPECT_EQ(popping->generated, 0);
  platform.runFor(0.02);
  EXPECT_EQ(popping->generated, 1);
}

TEST_F(PopUpViewsTest, AnItemThatDoesNotWantToDoesNotPopUp) {
  const auto popping = poppingItem();
  popping->pops = false;
  popping->wasSelected();
  platform.runFor(2);
  EXPECT_EQ(popping->generated, 0);
}

TEST_F(PopUpViewsTest, ADeselectionWithinTheRestShowsNothing) {
  const auto popping = poppingItem();
  popping->wasSelected();
  platform.runFor(0.3);
  popping->wasDeselected();
  platform.runFor(1);
  EXPECT_EQ(popping->generated, 0);
}

TEST_F(PopUpViewsTest, AnOpenMenuAtTheEndOfTheRestShowsNothing) {
  const auto popping = poppingItem();
  popping->wasSelected();
  const auto menu = Menu::create();
  menu->addItem(MenuItem::create("entry"));
  platform.menuPresenter().whenMenuOpens([](SimulatedMenuUser& user) {
    user.rest(1);
    user.escape();
  });
  quillbox->popUpMenu(menu, nullptr, {}, &host(), nullptr);
  EXPECT_EQ(popping->generated, 0);
}

TEST_F(PopUpViewsTest, AnItemWithAPopUpIsNotAskedAgain) {
  const auto popping = poppingItem();
  popping->wasSelected();
  platform.runFor(0.51);
  ASSERT_TRUE(popping->popUpView());
  popping->wasSelected();
  EXPECT_EQ(popping->questions, 1);
}

TEST_F(PopUpViewsTest, AnItemThatGoesWithinTheRestShowsNothing) {
  auto popping = poppingItem();
  popping->wasSelected();
  popping->view()->removeFromSuperview();
  popping.reset();
  platform.runFor(1);
  EXPECT_THAT(popUpsOnScreen(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
