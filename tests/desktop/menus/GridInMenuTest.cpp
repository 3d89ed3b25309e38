// Grids in menus under the pointer, also where the menu is higher than the screen and scrolls.
#include "MenuDesk.h"
#include "Platform/KeyCodes.h"
#include "QuillboxCommon/views/GridView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb::test {
namespace {

class GridChoice : public GridViewDelegate {
 public:
  explicit GridChoice(Menu& menu) : menu_(menu) {}
  void itemWasSelected(GridViewItem& item, GridView&) override {
    chosen = std::any_cast<std::string>(item.userInfo);
    menu_.cancelTracking();
  }
  void itemWillBeHighlighted(GridViewItem&, GridView&) override {}
  std::string chosen;

 private:
  Menu& menu_;
};

class GridInMenuTest : public MenuDesk {
 protected:
  /// Of two columns, the cells of which are "cell 0" and so on.
  std::shared_ptr<GridView> createGrid(double height, std::int64_t rows) {
    auto grid = std::make_shared<GridView>(Rect::make(0, 0, 120, height));
    grid->setDelegate(choice);
    grid->setGeometry({rows, 2, 15, 15, {-5, -5}});
    std::vector<std::shared_ptr<GridViewItem>> cells;
    for (std::int64_t number = 0; number < 2 * rows; ++number) {
      auto cell = std::make_shared<RoundedRectangleView>(Rect::make(0, 0, 30, 30));
      cell->setBackgroundColor(Color::colorWithCalibratedRed(0.9, 0.5, 0.2, 1));
      cells.push_back(
          std::make_shared<GridViewItem>(GridViewItem{cell, "cell " + std::to_string(number)}));
    }
    auto highlight = std::make_shared<RoundedRectangleView>(Rect::make(0, 0, 40, 40));
    highlight->setRenderBorder(true);
    highlight->setBorderWidth(3);
    highlight->setRenderBackground(false);
    highlight->setBorderColor(Color::colorWithCalibratedRed(0, 0.7, 1, 1));
    grid->setContentItems(std::move(cells), highlight);
    return grid;
  }
  std::function<bool()> shown() {
    return [this] { return isShown(*menu); };
  }
  static std::function<bool()> highlighted(const std::shared_ptr<GridView>& grid,
                                           std::size_t cell) {
    return [grid, cell] { return grid->highlightedItem() == grid->items()[cell]; };
  }
  /// Where a point of a grid is in the menu's widget, and the other way round.
  QPointF cornerOf(const MenuItem& item, const GridView& grid) const {
    const QRectF area = innermost()->geometryOf(item);
    const Size size = grid.frame().size;
    return area.center() - QPointF(size.width, size.height) / 2;
  }
  QPoint centerOfCell(const MenuItem& item, const GridView& grid, std::size_t cell) const {
    const Point center = grid.items().at(cell)->view->frame().center();
    return (cornerOf(item, grid) + QPointF(center.x, center.y)).toPoint();
  }
  std::shared_ptr<GridViewItem> cellAt(QPoint place, const MenuItem& item,
                                       const GridView& grid) const {
    const QPointF inGrid = place - cornerOf(item, grid);
    for (const auto& cell : grid.items()) {
      if (contains(cell->view->frame(), Point{inGrid.x(), inGrid.y()})) return cell;
    }
    return nullptr;
  }
  void pointAtPlace(QPoint inMenu) {
    const QPoint place = innermost()->mapToGlobal(inMenu) * innermost()->devicePixelRatioF();
    user.movePointer(place.x() - 1, place.y());
    user.movePointer(place.x(), place.y());
  }

  std::shared_ptr<GridChoice> choice = std::make_shared<GridChoice>(*menu);
};

TEST_F(GridInMenuTest, FollowsThePointerAndTakesTheClick) {
  const auto item = add("Grid");
  const auto grid = createGrid(60, 1);
  item->setView(grid);
  when("shown", shown(), [&] { pointAtPlace(centerOfCell(*item, *grid, 0)); });
  when("left cell", highlighted(grid, 0), [&] {
    EXPECT_TRUE(isHighlighted(*item));
    EXPECT_FALSE(grid->highlightView()->isHidden());
    pointAtPlace(centerOfCell(*item, *grid, 1));
  });
  when("right cell", highlighted(grid, 1), [&] {
    shoot("grid");
    presenter.keyDown(key(KeyCodeReturn));
    click();
  });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(choice->chosen, "cell 1");
  EXPECT_TRUE(grid->highlightView()->isHidden()) << "the pointer has left with the menu";
}

/// A grid almost as high as the screen, with another one below it.
class ScrollingGridsTest : public GridInMenuTest {
 protected:
  ScrollingGridsTest() {
    const double screen = displays.screens().front().frame.height();
    upperGrid = createGrid(screen - 40, static_cast<std::int64_t>(screen / 60) - 1);
    lowerGrid = createGrid(60, 1);
    upper->setView(upperGrid);
    lower->setView(lowerGrid);
  }
  /// Of the arrows by which the menu scrolls.
  QPoint lowerArrow() const { return {innermost()->width() / 2, innermost()->height() - 12}; }
  QPoint upperArrow() const { return {innermost()->width() / 2, 12}; }
  int topOfUpper() const { return innermost()->geometryOf(*upper).top(); }
  /// Runs the steps, beginning with a place to point at once the menu shows its upper part.
  std::function<void()> noteTopAndPointAt(std::function<QPoint()> place) {
    return [this, place = std::move(place)] {
      top = topOfUpper();
      EXPECT_LT(innermost()->height(), presenter.menuSize(*menu).height);
      pointAtPlace(place());
    };
  }

  std::shared_ptr<MenuItem> upper = add("Upper"), lower = add("Lower");
  std::shared_ptr<GridView> upperGrid, lowerGrid;
  int top = 0;
};

TEST_F(ScrollingGridsTest, AGridStaysWhereItIsUnderThePointer) {
  when("shown", shown(), noteTopAndPointAt([&] { return centerOfCell(*upper, *upperGrid, 2); }));
  when("cell highlighted", highlighted(upperGrid, 2), [&] {
    EXPECT_TRUE(isHighlighted(*upper));
    EXPECT_EQ(topOfUpper(), top) << "the menu has scrolled by itself";
    click();
  });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(choice->chosen, "cell 2");
}

TEST_F(ScrollingGridsTest, TheArrowBringsWhatIsBelowToBeChosen) {
  when("shown", shown(), noteTopAndPointAt([&] { return lowerArrow(); }));
  when(
      "scrolled to the end",
      [&] { return innermost()->geometryOf(*lower).bottom() < innermost()->height(); },
      [&] {
        shoot("scrolled-grids");
        EXPECT_EQ(upperGrid->highlightedItem(), nullptr) << "the arrow is not the grid's";
        pointAtPlace(centerOfCell(*lower, *lowerGrid, 1));
      });
  when("cell highlighted", highlighted(lowerGrid, 1), [&] { click(); });
  EXPECT_FALSE(popUp());
  EXPECT_EQ(choice->chosen, "cell 1");
}

TEST_F(ScrollingGridsTest, TheOtherArrowBringsBackWhatIsAbove) {
  when("shown", shown(), noteTopAndPointAt([&] { return lowerArrow(); }));
  when(
      "scrolled", [&] { return topOfUpper() < top; }, [&] { pointAtPlace(upperArrow()); });
  when(
      "scrolled back", [&] { return topOfUpper() == top; }, [&] { menu->cancelTracking(); });
  EXPECT_FALSE(popUp());
}

TEST_F(ScrollingGridsTest, TheWheelScrollsAndTheHighlightIsWhereThePointerIs) {
  QPoint place;
  when("shown", shown(),
       noteTopAndPointAt([&] { return place = centerOfCell(*upper, *upperGrid, 2); }));
  when("cell highlighted", highlighted(upperGrid, 2), [&] {
    user.button(5, true);
    user.button(5, false);
  });
  when(
      "scrolled", [&] { return topOfUpper() < top; },
      [&] {
        EXPECT_EQ(upperGrid->highlightedItem(), cellAt(place, *upper, *upperGrid));
        EXPECT_NE(upperGrid->highlightedItem(), upperGrid->items()[2]);
        menu->cancelTracking();
      });
  EXPECT_FALSE(popUp());
}

}  // namespace
}  // namespace qb::test
