#include <gmock/gmock.h>

#include "Quillbox/rows/SelectionViews.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "Studio.h"
#include "support/QuillboxFixture.h"

namespace qb::pictures {
namespace {

const QColor desktop(70, 110, 160);
const Color shade = Color::colorWithCalibratedWhite(0, 0.5);

std::shared_ptr<RoundedRectangleView> box(const Rect& frame, double radius, double borderWidth) {
  auto view = std::make_shared<RoundedRectangleView>(frame);
  view->setCornerRadius(radius);
  view->setBackgroundColor(shade);
  view->setRenderBorder(borderWidth > 0);
  view->setBorderWidth(borderWidth);
  view->setBorderColor(Color::white());
  return view;
}

TEST(PanelShapes, RoundedRectangles) {
  Studio studio;
  const auto board = std::make_shared<View>(Rect::make(0, 0, 220, 120));
  board->addSubview(box(Rect::make(10, 10, 60, 100), 25, 0));
  board->addSubview(box(Rect::make(80, 10, 60, 45), 10, 3));
  board->addSubview(box(Rect::make(80, 65, 60, 45), 5, 1));
  board->addSubview(box(Rect::make(150, 10, 60, 20), 40, 0));
  board->addSubview(box(Rect::make(150, 40, 60, 30), 0, 2));
  const auto inset = box(Rect::make(150, 80, 60, 30), 8, 2);
  inset->setInset({6, 4});
  board->addSubview(inset);
  EXPECT_EQ(differenceFromKept(studio.drawn({220, 120}, 1, desktop, board), "rounded"), "");
  EXPECT_EQ(differenceFromKept(studio.drawn({220, 120}, 2, desktop, board), "rounded@2"), "");
}

TEST(PanelShapes, LabelsWithAndWithoutTheirShadow) {
  Studio studio;
  const auto board = std::make_shared<View>(Rect::make(0, 0, 160, 80));
  const auto add = [&](const Rect& frame, bool shadowed, bool background) {
    auto label = std::make_shared<LabelView>(studio.graphics(), frame);
    label->setBackgroundColor(shade);
    label->setRenderBackground(background);
    label->setShadowed(shadowed);
    label->setText("Terminal gq");
    board->addSubview(label);
  };
  add(Rect::make(10, 6, 140, 19), true, true);
  add(Rect::make(10, 30, 140, 19), true, false);
  add(Rect::make(10, 54, 140, 19), false, false);
  EXPECT_EQ(differenceFromKept(studio.drawn({160, 80}, 1, desktop, board), "labels"), "");
  EXPECT_EQ(differenceFromKept(studio.drawn({160, 80}, 2, desktop, board), "labels@2"), "");
}

class HaloPictures : public test::QuillboxFixture {};

TEST_F(HaloPictures, TheHaloHasALookForEachOfThreeSizes) {
  Studio studio;
  for (const int height : {56, 50, 40}) {
    SelectionViews selection;
    selection.setLookForHaloHeight(height);
    RoundedRectangleView& halo = selection.halo();
    halo.setFrame(Rect::make(6, 6, height, height));
    halo.setHidden(false);
    const Size size{height + 12.0, height + 12.0};
    const auto row = std::make_shared<RoundedRectangleView>(Rect{{0, 0}, size});
    row->setBackgroundColor(Color::colorWithCalibratedWhite(0, 0.35));
    row->setCornerRadius(0);
    row->addSubview(std::static_pointer_cast<View>(halo.shared_from_this()));
    const auto icon = std::make_shared<ImageView>(Rect::make(10, 10, height - 8.0, height - 8.0));
    icon->setImage(studio.graphics().imageNamed("ApplicationIcon"));
    row->addSubview(icon);
    for (const int scale : {1, 2}) {
      EXPECT_EQ(differenceFromKept(studio.drawn(size, scale, desktop, row),
                                   stringWithFormat("halo-%i@%i", height, scale)),
                "");
    }
  }
}

}  // namespace
}  // namespace qb::pictures
