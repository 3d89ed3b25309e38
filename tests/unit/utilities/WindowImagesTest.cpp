#include "Quillbox/activation/utilities/WindowImages.h"

#include <gmock/gmock.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::SizeIs;

constexpr WindowID window = 7;
constexpr WindowID missing = 8;

class WindowImagesTest : public QuillboxFixture {
 protected:
  Image ofSize(Size size, double margin, const Image& defaultImage = {}) {
    return quillbox->generateWindowImageWithID(window, nullptr, size, margin, defaultImage);
  }
  Image ofMaximumSize(Size size, double margin, const Image& defaultImage = {}) {
    return quillbox->generateWindowImageWithID(window, nullptr, MaximumSize{size}, margin,
                                               defaultImage);
  }
  Image namedImage(const std::string& name, Size size) {
    platform.graphics().setImageSize(name, size);
    return platform.graphics().imageNamed(name);
  }
};

struct FitRow {
  Size window, wanted;
  double margin;
  /// The picture on the canvas of the wanted size, and on one of its own.
  Rect centred;
  Size fitted;
};

TEST_F(WindowImagesTest, PicturesAreFittedAndCentredWithTheMarginAround) {
  const FitRow rows[] = {
      // Too high, too wide, both, neither.
      {{100, 200}, {128, 100}, 0, Rect::make(39, 0, 50, 100), {50, 100}},
      {{400, 100}, {200, 200}, 0, Rect::make(0, 75, 200, 50), {200, 50}},
      {{1600, 1200}, {200, 300}, 0, Rect::make(0, 75, 200, 150), {200, 150}},
      {{80, 60}, {100, 100}, 0, Rect::make(10, 20, 80, 60), {80, 60}},
      {{100, 200}, {128, 100}, 4, Rect::make(43, 4, 42, 92), {50, 100}},
      {{80, 60}, {100, 100}, 2.5, Rect::make(12.5, 22.5, 75, 55), {80, 60}},
      {{21, 21}, {32, 32}, 0, Rect::make(5.5, 5.5, 21, 21), {21, 21}},
  };
  for (const FitRow& row : rows) {
    SCOPED_TRACE(testing::Message() << row.window.width << " x " << row.window.height << " in "
                                    << row.wanted.width << " x " << row.wanted.height);
    platform.windowPictures().putWindow(window, row.window);
    const Image centred = ofSize(row.wanted, row.margin);
    EXPECT_EQ(centred.size(), row.wanted);
    ASSERT_THAT(simulatedImageOperations(centred), SizeIs(1));
    EXPECT_EQ(simulatedImageOperations(centred).front().rect, row.centred);

    const Image own = ofMaximumSize(row.wanted, row.margin);
    EXPECT_EQ(own.size(), row.fitted);
    ASSERT_THAT(simulatedImageOperations(own), SizeIs(1));
    EXPECT_EQ(simulatedImageOperations(own).front().rect,
              inset({{0, 0}, row.fitted}, row.margin, row.margin));
  }
}

TEST_F(WindowImagesTest, OnlyThePictureInTheMiddleThrowsAShadow) {
  platform.windowPictures().putWindow(window, {400, 300});
  const DrawOperation centred = simulatedImageOperations(ofSize({100, 100}, 0)).at(0);
  EXPECT_EQ(simulatedImageName(centred.image), "window:7");
  EXPECT_EQ(centred.operation, CompositingOperation::Copy);
  EXPECT_EQ(centred.fraction, 1);
  EXPECT_EQ(centred.shadow, (Shadow{Color::black().withAlpha(0.33), {0, 4}, 3}));
  const DrawOperation own = simulatedImageOperations(ofMaximumSize({100, 100}, 0)).at(0);
  EXPECT_EQ(own.operation, CompositingOperation::Copy);
  EXPECT_EQ(own.shadow, Shadow());
}

TEST_F(WindowImagesTest, AWindowThatIsTooSmallGivesTheDefaultImage) {
  const Image defaultImage = namedImage("WindowLarge", {64, 64});
  for (const Size size : {Size{20, 400}, Size{400, 20}, Size{20, 20}, Size{1, 1}}) {
    platform.windowPictures().putWindow(window, size);
    EXPECT_EQ(simulatedImageName(ofSize({100, 100}, 0, defaultImage)), "WindowLarge");
    EXPECT_EQ(simulatedImageName(ofMaximumSize({100, 100}, 0, defaultImage)), "WindowLarge");
  }
}

TEST_F(WindowImagesTest, TheDefaultImageIsACopyThatIsNeverEnlarged) {
  struct Row {
    Size defaultImage, wanted, scaled;
  };
  const Row rows[] = {
      {{128, 128}, {32, 32}, {32, 32}},
      {{128, 64}, {32, 32}, {32, 16}},
      {{64, 128}, {32, 32}, {16, 32}},
      {{16, 16}, {32, 32}, {16, 16}},
  };
  for (const Row& row : rows) {
    const Image defaultImage = namedImage("WindowLarge", row.defaultImage);
    const Image copy =
        quillbox->generateWindowImageWithID(missing, nullptr, row.wanted, 2, defaultImage);
    EXPECT_EQ(simulatedImageName(copy), "WindowLarge");
    EXPECT_EQ(copy.size(), row.scaled);
    EXPECT_EQ(defaultImage.size(), row.defaultImage);
    EXPECT_EQ(quillbox->generateWindowImageWithID(missing, nullptr, MaximumSize{row.wanted}, 2,
                                                  defaultImage),
              copy);
  }
}

TEST_F(WindowImagesTest, WithoutPictureAndDefaultThereIsNone) {
  EXPECT_FALSE(quillbox->generateWindowImageWithID(missing, nullptr, Size{32, 32}, 0, {}));
}

TEST_F(WindowImagesTest, NoFinerPictureIsAskedForThanIsShown) {
  platform.windowPictures().putWindow(window, {400, 300});
  ofMaximumSize({32, 24}, 0);
  EXPECT_EQ(platform.windowPictures().lastLargest(), (Size{32, 24}));
}

}  // namespace
}  // namespace qb::test
