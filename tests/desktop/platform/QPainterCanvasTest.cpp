#include "PlatformDesktop/graphics/QPainterCanvas.h"

#include <gmock/gmock.h>

#include "PlatformDesktop/graphics/PixelImage.h"

namespace qb {
namespace {

class QPainterCanvasTest : public ::testing::Test {
 protected:
  QPainterCanvasTest() { target_.fill(Qt::transparent); }

  /// Draws through a canvas over `region`, or the whole picture.
  template <class Drawing>
  void draw(Drawing drawing, double scale = 1, QRegion region = {}) {
    if (region.isEmpty()) region = target_.rect();
    QPainterCanvas canvas(target_, region, scale, texts_);
    drawing(canvas);
    touched_ = canvas.touched();
  }
  QColor at(int x, int y) const { return target_.pixelColor(x, y); }
  static Image square(const QColor& color) {
    QImage pixels(64, 64, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(color);
    return Image(std::make_shared<PixelImage>(pixels, Size{32, 32}));
  }

  QImage target_{100, 80, QImage::Format_ARGB32_Premultiplied};
  QRegion touched_;
  TextCache texts_;
  const Color red_ = Color::colorWithCalibratedRed(1, 0, 0, 1);
};

TEST_F(QPainterCanvasTest, FillsFromTheTopLeft) {
  draw([&](Canvas& canvas) { canvas.fill(Rect::make(10, 20, 30, 40), red_); });
  EXPECT_EQ(at(10, 20), QColor(255, 0, 0));
  EXPECT_EQ(at(39, 59), QColor(255, 0, 0));
  EXPECT_EQ(at(9, 20).alpha(), 0);
  EXPECT_EQ(at(40, 20).alpha(), 0);
  EXPECT_EQ(at(10, 60).alpha(), 0);
}

TEST_F(QPainterCanvasTest, ARoundedRectangleHasRoundCorners) {
  draw([&](Canvas& canvas) {
    canvas.fill(Path::roundedRect(Rect::make(10, 10, 60, 40), 12), red_);
  });
  EXPECT_EQ(at(10, 10).alpha(), 0);
  EXPECT_EQ(at(69, 10).alpha(), 0);
  EXPECT_EQ(at(10, 49).alpha(), 0);
  EXPECT_EQ(at(69, 49).alpha(), 0);
  EXPECT_EQ(at(40, 10).alpha(), 255);
  EXPECT_EQ(at(10, 30).alpha(), 255);
  EXPECT_EQ(at(40, 30), QColor(255, 0, 0));
}

TEST_F(QPainterCanvasTest, ARoundedRectangleWithoutARadiusHasSharpCorners) {
  draw(
      [&](Canvas& canvas) { canvas.fill(Path::roundedRect(Rect::make(10, 10, 60, 40), 0), red_); });
  EXPECT_EQ(at(10, 10).alpha(), 255);
  EXPECT_EQ(at(69, 49).alpha(), 255);
  EXPECT_EQ(at(70, 49).alpha(), 0);
}

TEST_F(QPainterCanvasTest, AStrokeLiesOnBothSidesOfItsPath) {
  draw([&](Canvas& canvas) {
    canvas.stroke(Path::roundedRect(Rect::make(20, 20, 40, 30), 4), red_, 4);
  });
  EXPECT_EQ(at(40, 18).alpha(), 255);
  EXPECT_EQ(at(40, 21).alpha(), 255);
  EXPECT_EQ(at(40, 17).alpha(), 0);
  EXPECT_EQ(at(40, 22).alpha(), 0);
  EXPECT_EQ(at(40, 35).alpha(), 0);
}

TEST_F(QPainterCanvasTest, AlphaMultipliesUntilRestored) {
  draw([&](Canvas& canvas) {
    canvas.save();
    canvas.multiplyAlpha(0.5);
    canvas.multiplyAlpha(0.5);
    canvas.fill(Rect::make(0, 0, 10, 10), red_);
    canvas.restore();
    canvas.fill(Rect::make(20, 0, 10, 10), red_);
  });
  EXPECT_NEAR(at(5, 5).alpha(), 64, 1);
  EXPECT_EQ(at(25, 5).alpha(), 255);
}

TEST_F(QPainterCanvasTest, TranslationMovesClipAndDrawing) {
  draw([&](Canvas& canvas) {
    canvas.save();
    canvas.translate(10, 10);
    canvas.clip(Rect::make(0, 0, 5, 5));
    canvas.fill(Rect::make(0, 0, 50, 50), red_);
    EXPECT_TRUE(canvas.needsDrawing(Rect::make(4, 4, 1, 1)));
    EXPECT_FALSE(canvas.needsDrawing(Rect::make(6, 6, 10, 10)));
    canvas.restore();
    EXPECT_TRUE(canvas.needsDrawing(Rect::make(16, 16, 1, 1)));
  });
  EXPECT_EQ(at(14, 14).alpha(), 255);
  EXPECT_EQ(at(15, 14).alpha(), 0);
  EXPECT_EQ(at(9, 10).alpha(), 0);
}

TEST_F(QPainterCanvasTest, OnlyTheRegionIsDrawn) {
  const QRegion region = QRegion(0, 0, 10, 10) + QRegion(50, 50, 10, 10);
  draw(
      [&](Canvas& canvas) {
        EXPECT_TRUE(canvas.needsDrawing(Rect::make(5, 5, 1, 1)));
        EXPECT_TRUE(canvas.needsDrawing(Rect::make(55, 55, 20, 20)));
        EXPECT_FALSE(canvas.needsDrawing(Rect::make(20, 20, 20, 20)));
        canvas.fill(Rect::make(0, 0, 100, 80), red_);
      },
      1, region);
  EXPECT_EQ(at(9, 9).alpha(), 255);
  EXPECT_EQ(at(10, 9).alpha(), 0);
  EXPECT_EQ(at(55, 55).alpha(), 255);
  EXPECT_EQ(touched_, region);
}

TEST_F(QPainterCanvasTest, NothingNeedsDrawingAtAlphaZero) {
  draw([&](Canvas& canvas) {
    canvas.multiplyAlpha(0);
    EXPECT_FALSE(canvas.needsDrawing(Rect::make(0, 0, 10, 10)));
  });
}

TEST_F(QPainterCanvasTest, ClearColoursTouchNothing) {
  draw([&](Canvas& canvas) {
    canvas.fill(Rect::make(0, 0, 10, 10), Color::clear());
    canvas.stroke(Path::roundedRect(Rect::make(0, 0, 10, 10), 2), red_, 0);
  });
  EXPECT_TRUE(touched_.isEmpty());
}

TEST_F(QPainterCanvasTest, WhatIsTouchedLiesAroundWhatIsDrawn) {
  draw([&](Canvas& canvas) {
    canvas.fill(Path::roundedRect(Rect::make(10, 10, 30, 20), 5), red_);
    canvas.fill(Rect::make(12, 12, 5, 5), red_);
  });
  EXPECT_EQ(touched_.rectCount(), 1);
  EXPECT_EQ(touched_.boundingRect(), QRect(10, 10, 30, 20));
}

TEST_F(QPainterCanvasTest, ImagesAreScaledIntoTheirRectangle) {
  draw([&](Canvas& canvas) {
    canvas.drawImage(square(Qt::green), Rect::make(10, 10, 20, 20),
                     CompositingOperation::SourceOver, 1);
  });
  EXPECT_EQ(at(10, 10), QColor(Qt::green));
  EXPECT_EQ(at(29, 29), QColor(Qt::green));
  EXPECT_EQ(at(30, 29).alpha(), 0);
}

TEST_F(QPainterCanvasTest, AnEmptyImageDrawsNothing) {
  draw([&](Canvas& canvas) {
    canvas.drawImage(Image(), Rect::make(10, 10, 20, 20), CompositingOperation::SourceOver, 1);
    canvas.drawImage(square(Qt::green), Rect::make(10, 10, 0, 20), CompositingOperation::SourceOver,
                     1);
  });
  EXPECT_TRUE(touched_.isEmpty());
}

TEST_F(QPainterCanvasTest, TheFractionIsTheImagesOpacity) {
  draw([&](Canvas& canvas) {
    canvas.drawImage(square(Qt::green), Rect::make(0, 0, 10, 10), CompositingOperation::SourceOver,
                     0.5);
  });
  EXPECT_NEAR(at(5, 5).alpha(), 128, 1);
}

struct OperationCase {
  CompositingOperation operation;
  int alphaOnRed, alphaOnNothing;
};
class CanvasOperation : public QPainterCanvasTest,
                        public ::testing::WithParamInterface<OperationCase> {};

TEST_P(CanvasOperation, MeetsWhatLiesBeneath) {
  const QColor half(0, 255, 0, 128);
  draw([&](Canvas& canvas) {
    canvas.fill(Rect::make(0, 0, 10, 10), red_);
    canvas.drawImage(square(half), Rect::make(0, 0, 20, 10), GetParam().operation, 1);
  });
  EXPECT_NEAR(at(5, 5).alpha(), GetParam().alphaOnRed, 1);
  EXPECT_NEAR(at(15, 5).alpha(), GetParam().alphaOnNothing, 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, CanvasOperation,
    ::testing::Values(OperationCase{CompositingOperation::SourceOver, 255, 128},
                      OperationCase{CompositingOperation::Copy, 128, 128},
                      OperationCase{CompositingOperation::SourceAtop, 255, 0},
                      OperationCase{CompositingOperation::DestinationOut, 127, 0},
                      OperationCase{CompositingOperation::DestinationOver, 255, 128}));

TEST_P(CanvasOperation, IsTheSameForAPlainColour) {
  draw([&](Canvas& canvas) {
    canvas.fill(Rect::make(0, 0, 10, 10), red_);
    canvas.fillUsingOperation(Rect::make(0, 0, 20, 10),
                              Color::colorWithCalibratedRed(0, 1, 0, 128.0 / 255),
                              GetParam().operation);
    canvas.fill(Rect::make(0, 20, 10, 10), red_);
  });
  EXPECT_NEAR(at(5, 5).alpha(), GetParam().alphaOnRed, 1);
  EXPECT_NEAR(at(15, 5).alpha(), GetParam().alphaOnNothing, 1);
  EXPECT_EQ(at(5, 25), QColor(255, 0, 0)) << "what follows lies on top again";
}

TEST_F(QPainterCanvasTest, ATintChangesNoTransparentPixel) {
  draw([&](Canvas& canvas) {
    canvas.fill(Rect::make(0, 0, 10, 10), red_);
    canvas.fillUsingOperation(Rect::make(0, 0, 20, 10), Color::colorWithCalibratedRed(0, 0, 1, 0.5),
                              CompositingOperation::SourceAtop);
  });
  EXPECT_NEAR(at(5, 5).red(), 127, 1);
  EXPECT_NEAR(at(5, 5).blue(), 128, 1);
  EXPECT_EQ(at(5, 5).alpha(), 255);
  EXPECT_EQ(at(15, 5).alpha(), 0);
}

// Scaled and flipped.

/// Red, with a green quarter at the top left.
Image marked() {
  QImage pixels(64, 64, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) pixels.setPixelColor(x, y, Qt::green);
  }
  return Image(std::make_shared<PixelImage>(pixels, Size{32, 32}));
}

TEST_F(QPainterCanvasTest, AFlippedImageIsMirroredInItsPlace) {
  const auto greenCorner = [&](double sx, double sy) {
    target_.fill(Qt::transparent);
    draw([&](Canvas& canvas) {
      canvas.translate(sx < 0 ? 64 : 0, sy < 0 ? 64 : 0);
      canvas.scale(sx, sy);
      canvas.drawImage(marked(), Rect::make(0, 0, 64, 64), CompositingOperation::SourceOver, 1);
    });
    for (const QPoint corner : {QPoint(8, 8), QPoint(56, 8), QPoint(8, 56), QPoint(56, 56)}) {
      if (at(corner.x(), corner.y()) == QColor(Qt::green)) return corner;
    }
    return QPoint();
  };
  EXPECT_EQ(greenCorner(1, 1), QPoint(8, 8));
  EXPECT_EQ(greenCorner(-1, 1), QPoint(56, 8));
  EXPECT_EQ(greenCorner(1, -1), QPoint(8, 56));
  EXPECT_EQ(greenCorner(-1, -1), QPoint(56, 56));
}

TEST_F(QPainterCanvasTest, ScaleStretchesAllThatFollowsUntilRestored) {
  draw([&](Canvas& canvas) {
    canvas.save();
    canvas.scale(2, 3);
    canvas.translate(5, 5);
    canvas.fill(Rect::make(0, 0, 4, 2), red_);
    EXPECT_TRUE(canvas.needsDrawing(Rect::make(44, 0, 1, 1)));
    EXPECT_FALSE(canvas.needsDrawing(Rect::make(46, 0, 1, 1)));
    canvas.restore();
    canvas.fill(Rect::make(0, 0, 4, 2), red_);
  });
  EXPECT_EQ(at(10, 15).alpha(), 255);
  EXPECT_EQ(at(17, 20).alpha(), 255);
  EXPECT_EQ(at(18, 20).alpha(), 0);
  EXPECT_EQ(at(17, 21).alpha(), 0);
  EXPECT_EQ(at(3, 1).alpha(), 255);
}

// Shadows.

TEST_F(QPainterCanvasTest, AnImageCastsItsShadowUntilRestored) {
  draw([&](Canvas& canvas) {
    canvas.save();
    canvas.setShadow({Color::black().withAlpha(0.5), {2, 4}, 0});
    canvas.drawImage(square(Qt::green), Rect::make(10, 10, 20, 20),
                     CompositingOperation::SourceOver, 1);
    canvas.restore();
    canvas.drawImage(square(Qt::green), Rect::make(60, 10, 20, 20),
                     CompositingOperation::SourceOver, 1);
  });
  EXPECT_EQ(at(20, 29), QColor(Qt::green)) << "it lies beneath";
  EXPECT_NEAR(at(31, 33).alpha(), 128, 1);
  EXPECT_EQ(at(32, 33).alpha(), 0);
  EXPECT_EQ(at(31, 34).alpha(), 0);
  EXPECT_EQ(at(11, 31).alpha(), 0) << "it is moved to the right";
  EXPECT_EQ(at(70, 31).alpha(), 0);
}

TEST_F(QPainterCanvasTest, ABlurredShadowFadesAndKeepsItsWeight) {
  draw([&](Canvas& canvas) {
    canvas.setShadow({Color::black(), {0, 40}, 6});
    canvas.fill(Path::roundedRect(Rect::make(30, 5, 30, 30), 0), red_);
  });
  int weight = 0;
  for (int y = 36; y < 80; ++y) {
    for (int x = 0; x < 100; ++x) weight += at(x, y).alpha();
  }
  EXPECT_NEAR(weight / 255.0, 900, 40);
  EXPECT_GT(at(45, 60).alpha(), 250);
  EXPECT_NEAR(at(30, 60).alpha(), 128, 24) << "half on the edge";
  EXPECT_GT(at(27, 60).alpha(), 0);
  EXPECT_LT(at(27, 60).alpha(), at(32, 60).alpha());
  EXPECT_EQ(at(18, 60).alpha(), 0);
}

TEST_F(QPainterCanvasTest, APointIsSeveralPixelsOnADenseDisplay) {
  draw(
      [&](Canvas& canvas) {
        canvas.translate(5, 5);
        canvas.fill(Rect::make(0, 0, 10, 10), red_);
        canvas.drawImage(square(Qt::green), Rect::make(20, 0, 10, 10),
                         CompositingOperation::SourceOver, 1);
      },
      2);
  EXPECT_EQ(at(10, 10).alpha(), 255);
  EXPECT_EQ(at(29, 29).alpha(), 255);
  EXPECT_EQ(at(30, 29).alpha(), 0);
  EXPECT_EQ(at(50, 10), QColor(Qt::green));
  EXPECT_EQ(at(69, 29), QColor(Qt::green));
}

TEST_F(QPainterCanvasTest, TextStandsWhereItsAlignmentSays) {
  const auto inked = [&](TextAlignment alignment) {
    target_.fill(Qt::transparent);
    draw([&](Canvas& canvas) {
      canvas.drawText("ill", Rect::make(0, 10, 100, 20), Font::systemFontOfSize(14), Color::white(),
                      alignment);
    });
    QRegion ink;
    for (int y = 0; y < target_.height(); ++y) {
      for (int x = 0; x < target_.width(); ++x) {
        if (at(x, y).alpha() > 0) ink += QRect(x, y, 1, 1);
      }
    }
    return ink.boundingRect();
  };
  const QRect left = inked(TextAlignmentLeft), right = inked(TextAlignmentRight),
              center = inked(TextAlignmentCenter);
  ASSERT_FALSE(left.isEmpty());
  EXPECT_LT(left.x(), 5);
  EXPECT_GT(right.right(), 94);
  EXPECT_NEAR(center.center().x(), 50, 3);
  EXPECT_GE(left.y(), 10);
}

TEST_F(QPainterCanvasTest, WhatIsWiderThanItsRectangleSticksOutOnBothSidesWhenCentred) {
  draw([&](Canvas& canvas) {
    canvas.drawText("mmmm", Rect::make(45, 10, 10, 20), Font::systemFontOfSize(14), Color::white(),
                    TextAlignmentCenter);
  });
  EXPECT_LT(touched_.boundingRect().left(), 40);
  EXPECT_GT(touched_.boundingRect().right(), 60);
}

TEST(LinesOfText, EndAtEachKindOfLineEnd) {
  using ::testing::ElementsAre;
  EXPECT_THAT(linesOfText("a\nb\rc\r\nd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(linesOfText(""), ElementsAre(""));
  EXPECT_THAT(linesOfText("a\n"), ElementsAre("a", ""));
}

}  // namespace
}  // namespace qb
