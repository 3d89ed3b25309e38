#include "ContractTest.h"
#include "Platform/Graphics.h"

namespace qb {
namespace {

class GraphicsContract : public ContractTest {
 protected:
  Size measure(std::string_view text, double size = 14) {
    return platform_.graphics().measureText(text, Font::systemFontOfSize(size));
  }
};

TEST_F(GraphicsContract, MoreTextIsWiderAndNoHigher) {
  EXPECT_GT(measure("mmmm").width, measure("mm").width);
  EXPECT_GT(measure("mm").width, 0);
  EXPECT_EQ(measure("mmmm").height, measure("mm").height);
}

TEST_F(GraphicsContract, TheEmptyTextHasTheHeightOfALine) {
  EXPECT_EQ(measure("").width, 0);
  EXPECT_EQ(measure("").height, measure("m").height);
  EXPECT_GT(measure("").height, 0);
}

TEST_F(GraphicsContract, ALargerFontIsWiderAndHigher) {
  EXPECT_GT(measure("text", 28).width, measure("text", 14).width);
  EXPECT_GT(measure("text", 28).height, measure("text", 14).height);
  EXPECT_GE(measure("text", 14).height, 14);
}

TEST_F(GraphicsContract, SeveralLinesAreAsWideAsTheWidest) {
  EXPECT_EQ(measure("m\nmmmm\nmm").width, measure("mmmm").width);
}

TEST_F(GraphicsContract, CharactersAreMeasuredNotBytes) {
  EXPECT_LT(measure("\xc3\xa9\xc3\xa9").width, measure("eeee").width);
}

TEST_F(GraphicsContract, TheTrueIconComesOnceThroughUpdateAndIsKept) {
  int updates = 0;
  Image icon;
  const Image generic =
      platform_.graphics().iconForFile(desktop_->clientPath(), [&](const Image& image) {
        ++updates;
        icon = image;
      });
  EXPECT_TRUE(generic);
  EXPECT_EQ(updates, 0);
  ASSERT_TRUE(waitUntil([&] { return updates > 0; }));
  EXPECT_TRUE(icon);
  EXPECT_FALSE(icon.size().width == 0 || icon.size().height == 0);
  EXPECT_EQ(
      platform_.graphics().iconForFile(desktop_->clientPath(), [&](const Image&) { ++updates; }),
      icon);
  int others = 0;
  platform_.graphics().iconForFile("/no/such/file", [&](const Image&) { ++others; });
  EXPECT_TRUE(waitUntil([&] { return others > 0; }));
  EXPECT_EQ(updates, 1);
}

TEST_F(GraphicsContract, AFreedIconIsLookedUpAnew) {
  int updates = 0;
  const auto ask = [&] {
    return platform_.graphics().iconForFile(desktop_->clientPath(),
                                            [&](const Image&) { ++updates; });
  };
  ask();
  EXPECT_TRUE(waitUntil([&] { return updates == 1; }));
  platform_.graphics().freeIconForFile(desktop_->clientPath());
  EXPECT_TRUE(ask());
  EXPECT_TRUE(waitUntil([&] { return updates == 2; }));
  platform_.graphics().freeIconForFile("/no/such/file");
}

TEST_F(GraphicsContract, APictureComesFromItsFileLaterThanItIsAskedFor) {
  const std::string path = desktop_->folder() + "/picture.png";
  desktop_->writeImageFile(path, {40, 30});
  std::vector<Image> images;
  platform_.graphics().loadImageOfFile(path, {400, 400},
                                       [&](const Image& image) { images.push_back(image); });
  EXPECT_TRUE(images.empty());
  ASSERT_TRUE(waitUntil([&] { return !images.empty(); }));
  ASSERT_EQ(images.size(), 1U);
  ASSERT_TRUE(images[0]);
  EXPECT_EQ(images[0].size().width, 40);
  EXPECT_EQ(images[0].size().height, 30);
}

TEST_F(GraphicsContract, APictureInLessDetailHasItsSize) {
  const std::string path = desktop_->folder() + "/picture.png";
  desktop_->writeImageFile(path, {400, 300});
  Image image;
  platform_.graphics().loadImageOfFile(path, {40, 40},
                                       [&](const Image& loaded) { image = loaded; });
  ASSERT_TRUE(waitUntil([&] { return static_cast<bool>(image); }));
  EXPECT_EQ(image.size().width, 400);
  EXPECT_EQ(image.size().height, 300);
}

TEST_F(GraphicsContract, AFileWithoutAPictureGivesAnEmptyOne) {
  const std::string damaged = desktop_->folder() + "/damaged.png";
  desktop_->writeRawFile(damaged, "no picture");
  int answers = 0;
  for (const std::string& path : {damaged, desktop_->folder() + "/none.png", desktop_->folder()}) {
    platform_.graphics().loadImageOfFile(path, {400, 400}, [&](const Image& image) {
      ++answers;
      EXPECT_FALSE(image);
    });
    platform_.graphics().loadPNGDataOfFile(path, [&](const PropertyList::Data& data) {
      ++answers;
      EXPECT_TRUE(data.empty());
    });
  }
  EXPECT_TRUE(waitUntil([&] { return answers == 6; }));
}

TEST_F(GraphicsContract, APictureComesAsDataTooLaterThanItIsAskedFor) {
  const std::string path = desktop_->folder() + "/picture.png";
  desktop_->writeImageFile(path, {40, 30});
  PropertyList::Data data;
  platform_.graphics().loadPNGDataOfFile(path,
                                         [&](const PropertyList::Data& loaded) { data = loaded; });
  EXPECT_TRUE(data.empty());
  EXPECT_TRUE(waitUntil([&] { return !data.empty(); }));
}

TEST_F(GraphicsContract, ADrawnPictureHasTheSizeThatItWasGiven) {
  const Image drawn = platform_.graphics().imageWithSize(
      {40, 30}, [](Canvas& canvas) { canvas.fill(Rect::make(0, 0, 40, 30), Color::black()); });
  ASSERT_TRUE(drawn);
  EXPECT_EQ(drawn.size().width, 40);
  EXPECT_EQ(drawn.size().height, 30);
}

TEST_F(GraphicsContract, NoPictureIsDrawnInNoSpace) {
  bool hasDrawn = false;
  EXPECT_FALSE(
      platform_.graphics().imageWithSize({0, 30}, [&hasDrawn](Canvas&) { hasDrawn = true; }));
  EXPECT_FALSE(hasDrawn);
}

TEST_F(GraphicsContract, APictureGoesIntoBytesAndComesOutOfThem) {
  const Image drawn = platform_.graphics().imageWithSize(
      {32, 32}, [](Canvas& canvas) { canvas.fill(Rect::make(0, 0, 32, 32), Color::black()); });
  const auto data = platform_.graphics().pngDataOfImage(drawn);
  ASSERT_TRUE(data);
  const Image read = platform_.graphics().imageWithData(*data);
  ASSERT_TRUE(read);
  EXPECT_EQ(read.size().width, 32);
  EXPECT_EQ(read.size().height, 32);
  EXPECT_EQ(platform_.graphics().pngDataOfImage({}), std::nullopt);
}

TEST_F(GraphicsContract, InLessDetailAPictureInBytesHasItsSizeToo) {
  const Image drawn = platform_.graphics().imageWithSize(
      {32, 32}, [](Canvas& canvas) { canvas.fill(Rect::make(0, 0, 32, 32), Color::black()); });
  const auto data = platform_.graphics().pngDataOfImage(drawn);
  ASSERT_TRUE(data);
  for (const double edge : {8.0, 1000.0}) {
    const Image read = platform_.graphics().imageWithData(*data, Size{edge, edge});
    ASSERT_TRUE(read);
    EXPECT_EQ(read.size().width, 32);
    EXPECT_EQ(read.size().height, 32);
  }
  EXPECT_FALSE(platform_.graphics().imageWithData({}, Size{8, 8}));
}

TEST_F(GraphicsContract, BytesThatAreNoPictureGiveNone) {
  EXPECT_FALSE(platform_.graphics().imageWithData({}));
  EXPECT_FALSE(platform_.graphics().imageWithData({0x89, 'P', 'N', 'G', 13, 10}));
}

TEST_F(GraphicsContract, NamesThatNoImageBeginsWithGiveNone) {
  EXPECT_TRUE(platform_.graphics().imageNames("NoImageBeginsSo").empty());
}

TEST_F(GraphicsContract, AnIconNeedsNoReceiver) {
  EXPECT_TRUE(platform_.graphics().iconForFile(desktop_->clientPath(), nullptr));
}

}  // namespace
}  // namespace qb
