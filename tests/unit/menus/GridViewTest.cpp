#include "QuillboxCommon/views/GridView.h"

#include <gmock/gmock.h>

#include "PlatformSimulated/SimulatedPlatform.h"
#include "support/PrintGeometry.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

class Choices : public GridViewDelegate {
 public:
  void itemWasSelected(GridViewItem& item, GridView&) override { note("selected ", item); }
  void itemWillBeHighlighted(GridViewItem& item, GridView&) override { note("highlight ", item); }
  std::vector<std::string> heard;

 private:
  void note(const char* what, const GridViewItem& item) {
    heard.push_back(what + std::any_cast<std::string>(item.userInfo));
  }
};

class GridViewTest : public testing::Test {
 protected:
  GridViewTest() {
    grid->setGeometry({2, 3, 15, 15, {-5, -5}});
    grid->setDelegate(choices);
  }
  void fill(int count) {
    items.clear();
    for (int i = 0; i < count; ++i) {
      items.push_back(std::make_shared<GridViewItem>(
          GridViewItem{makeView(Rect::make(0, 0, 30, 30)), std::to_string(i)}));
    }
    grid->setContentItems(items, highlight);
  }
  /// Puts the grid into a menu's item and has a user there.
  void use(SimulatedMenuPresenter::Script script) {
    const auto menu = Menu::create();
    const auto item = MenuItem::create("Grid");
    item->setView(grid);
    menu->addItem(item);
    platform.menuPresenter().whenMenuOpens([script](SimulatedMenuUser& user) {
      user.highlight("Grid");
      script(user);
      user.escape();
    });
    platform.menuPresenter().popUpMenu(menu, nullptr, {});
  }
  /// The middle of a cell from the grid's lower left.
  Point middleOf(std::size_t index) const {
    const Point center = items[index]->view->frame().center();
    return {center.x, grid->frame().height() - center.y};
  }

  SimulatedPlatform platform;
  std::shared_ptr<GridView> grid = std::make_shared<GridView>(Rect::make(0, 0, 148, 120));
  std::shared_ptr<View> highlight = makeView(Rect::make(0, 0, 40, 40));
  std::shared_ptr<Choices> choices = std::make_shared<Choices>();
  std::vector<std::shared_ptr<GridViewItem>> items;
};

TEST_F(GridViewTest, CellsStandRowByRowFromTheTopLeft) {
  fill(6);
  EXPECT_EQ(grid->numberOfCells(), 6U);
  EXPECT_EQ(items[0]->view->frame(), Rect::make(15, 15, 30, 30));
  EXPECT_EQ(items[2]->view->frame(), Rect::make(103, 15, 30, 30)) << "the right margin is the left";
  EXPECT_EQ(items[4]->view->frame(), Rect::make(59, 59, 30, 30));
  EXPECT_TRUE(highlight->isHidden());
}

TEST_F(GridViewTest, ItemsPastTheLastRowHaveNoCell) {
  fill(8);
  EXPECT_EQ(grid->numberOfCells(), 6U);
  EXPECT_EQ(items[6]->view->superview(), nullptr);
}

TEST_F(GridViewTest, TheCellsEndWithTheItems) {
  fill(4);
  EXPECT_EQ(grid->numberOfCells(), 4U);
}

TEST_F(GridViewTest, WithoutRowsThereAreNoCells) {
  grid->setGeometry({0, 3, 15, 15, {}});
  fill(2);
  EXPECT_EQ(grid->numberOfCells(), 0U);
}

TEST_F(GridViewTest, FillingAgainReplacesTheCells) {
  fill(6);
  const auto former = items[0]->view;
  fill(2);
  EXPECT_EQ(former->superview(), nullptr);
  EXPECT_EQ(grid->numberOfCells(), 2U);
}

TEST_F(GridViewTest, TheHighlightFollowsThePointer) {
  fill(6);
  use([&](SimulatedMenuUser& user) {
    user.moveInView(middleOf(1));
    EXPECT_EQ(grid->highlightedItem(), items[1]);
    EXPECT_FALSE(highlight->isHidden());
    EXPECT_EQ(highlight->frame().origin, (Point{54, 10}));
    user.moveInView({2, 2});
    EXPECT_EQ(grid->highlightedItem(), nullptr);
    EXPECT_TRUE(highlight->isHidden());
    user.moveInView(middleOf(4));
    user.highlightNothing();
    EXPECT_EQ(grid->highlightedItem(), nullptr) << "the pointer has left";
  });
  EXPECT_THAT(choices->heard, ElementsAre("highlight 1", "highlight 4"));
}

TEST_F(GridViewTest, AClickOnACellSelectsIt) {
  fill(6);
  use([&](SimulatedMenuUser& user) {
    user.clickInView({2, 2});
    user.clickInView(middleOf(5));
    EXPECT_TRUE(user.menuIsOpen()) << "closing is the delegate's affair";
  });
  EXPECT_THAT(choices->heard, ElementsAre("highlight 5", "selected 5"));
}

TEST_F(GridViewTest, EveryPointIsTheGrids) {
  fill(6);
  EXPECT_EQ(grid->hitTest({30, 30}), grid.get());
  EXPECT_EQ(grid->hitTest({500, 500}), grid.get());
}

}  // namespace
}  // namespace qb::test
