#include "Quillbox/activation/MenuHelpers.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

class MenuHelpersTest : public QuillboxFixture {
 protected:
  std::shared_ptr<MenuItem> make(const std::string& label) {
    platform.graphics().setImageSize("Keys", {110, 24});
    return quillbox->customMenuItemWithImage(platform.graphics().imageNamed("Keys"), label,
                                             {"setHotKeySelected", [this](MenuItem& item) {
                                                performed.push_back(&item);
                                                openAtAction =
                                                    platform.menuPresenter().menuIsOpen();
                                              }});
  }
  static GridView& gridOf(const MenuItem& item) { return dynamic_cast<GridView&>(*item.view()); }

  std::vector<MenuItem*> performed;
  bool openAtAction = false;
};

TEST_F(MenuHelpersTest, TheNameInATitleIsBold) {
  const AttributedString title =
      Quillbox::menuTitleWithBeginning("Exempt ", "Editor", " from Recent Applications");
  AttributedString expected;
  expected.append("Exempt ", Font::systemFontOfSize(14));
  expected.append("Editor", Font::boldSystemFontOfSize(14));
  expected.append(" from Recent Applications", Font::systemFontOfSize(14));
  EXPECT_EQ(title, expected);
}

TEST_F(MenuHelpersTest, AnImageItemIsAGridOfOneTile) {
  const auto item = make("");
  EXPECT_EQ(item->title(), "");
  EXPECT_TRUE(item->isEnabled());
  EXPECT_EQ(item->action().name, "setHotKeySelected");
  GridView& grid = gridOf(*item);
  EXPECT_EQ(std::any_cast<std::shared_ptr<GridView>>(item->representedObject()).get(), &grid);
  EXPECT_EQ(grid.frame().size, (Size{110 + 20 + 50, 24 + 16 + 30}));
  EXPECT_EQ(grid.owningMenuItem(), item);
  EXPECT_EQ(grid.alernateTag(), std::nullopt);
  ASSERT_EQ(grid.numberOfCells(), 1U);
  const auto& picture = dynamic_cast<const ImageView&>(*grid.items()[0]->view);
  EXPECT_EQ(picture.frame(), Rect::make(25, 15, 130, 40));
  EXPECT_EQ(simulatedImageName(picture.image()), "Keys");
}

TEST_F(MenuHelpersTest, TheHighlightIsAFramedTile) {
  const auto item = make("");
  const View& highlight = *gridOf(*item).highlightView();
  EXPECT_EQ(highlight.frame().size, (Size{130, 40}));
  ASSERT_EQ(highlight.subviews().size(), 1U);
  const auto& frame = dynamic_cast<const RoundedRectangleView&>(*highlight.subviews()[0]);
  EXPECT_EQ(frame.cornerRadius(), 10);
  EXPECT_EQ(frame.backgroundColor(),
            Color::colorWithCalibratedRed(0.7764705882352941, 0.8627450980392157,
                                          0.9215686274509803, 0.5));
  EXPECT_TRUE(frame.renderBorder());
  EXPECT_EQ(frame.borderWidth(), 3);
  EXPECT_EQ(frame.borderColor(),
            Color::colorWithCalibratedRed(0.0196078431372549, 0.6968627450980391,
                                          0.9764705882352941, 1.0));
}

TEST_F(MenuHelpersTest, ALabelStandsInTheHighlight) {
  const auto item = make("Clip");
  EXPECT_EQ(std::any_cast<std::string>(gridOf(*item).userInfo()), "Clip");
  const View& highlight = *gridOf(*item).highlightView();
  ASSERT_EQ(highlight.subviews().size(), 2U);
  const auto& label = dynamic_cast<const LabelView&>(*highlight.subviews()[1]);
  EXPECT_EQ(label.text(), "Clip");
  EXPECT_EQ(label.frame().size, (Size{100, 20}));
  EXPECT_EQ(label.textColor(), Color::black());
}

TEST_F(MenuHelpersTest, AClickOnTheTileClosesTheMenuAndActsHalfASecondLater) {
  const auto menu = Menu::create();
  const auto item = make("");
  menu->addItem(item);
  platform.menuPresenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    user.highlight(std::size_t{0});
    user.clickInView({90, 35});
    EXPECT_FALSE(user.menuIsOpen());
  });
  quillbox->popUpMenu(menu, nullptr, {}, nullptr, nullptr);
  platform.runFor(0.499);
  EXPECT_TRUE(performed.empty());
  platform.runFor(0.001);
  EXPECT_EQ(performed, std::vector{item.get()});
  EXPECT_FALSE(openAtAction);
}

}  // namespace
}  // namespace qb::test
