#include <gmock/gmock.h>

#include "Quillbox/Item/FileContents.h"
#include "Quillbox/Item/FileItem.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/TextView.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

const std::string textPath = "/work/a.txt", imagePath = "/work/a.png", pagePath = "/work/a.pdf";

/// A row of one text, one image, one page and one of no such kind.
class FilesProvider : public TestProvider {
 public:
  std::int64_t numberOfItems() override { return 4; }
  void createItemsWithSize(Size size) override {
    for (const std::string& path : {textPath, imagePath, pagePath, std::string("/work/a.xyz")}) {
      addItem(FileItem::create({{0, 0}, size}, path));
    }
  }
};

class FileItemPopUpTest : public HostViewFixture {
 protected:
  FileItemPopUpTest() {
    for (const std::string& path : {textPath, imagePath, pagePath, std::string("/work/a.xyz")}) {
      platform.fileSystem().putRaw(path, "One line of text.\nAnother.\n");
    }
    platform.graphics().putImageFile(imagePath, {400, 300});
    platform.graphics().putImageFile(pagePath, {600, 800});
    const auto provider = std::make_shared<FilesProvider>();
    rows.push_back(host().createTabRowAtIndex(0, provider, false));
    present(ActivationMethodCommandTab);
    for (const auto& item : provider->items()) {
      items.push_back(std::static_pointer_cast<FileItem>(item));
    }
    if (text().isSelected()) text().wasDeselected();
    platform.runFor(1);
  }

  FileItem& text() { return *items[0]; }
  FileItem& image() { return *items[1]; }
  FileItem& page() { return *items[2]; }
  FileItem& other() { return *items[3]; }
  std::shared_ptr<View> pictureView(const std::string& path) {
    std::shared_ptr<View> shown;
    FileContents(platform).loadPictureView(path, [&](const auto& view) { shown = view; });
    platform.runPending();
    return shown;
  }
  /// What has popped up for an item, without its frame; null for nothing.
  template <class T = View>
  std::shared_ptr<T> poppedUp(const Item& item) {
    if (!item.popUpView()) return nullptr;
    return std::dynamic_pointer_cast<T>(item.popUpView()->subviews().at(0));
  }

  std::vector<std::shared_ptr<FileItem>> items;
};

TEST_F(FileItemPopUpTest, TakesHalfASecondWhateverIsUsual) {
  for (const auto& item : items) {
    TimeInterval delay = 3;
    EXPECT_TRUE(item->shouldDisplayPopUpViewWithDelay(delay));
    EXPECT_EQ(delay, 0.5);
  }
}

TEST_F(FileItemPopUpTest, AnImageShowsInItsOwnSize) {
  image().wasSelected();
  platform.runFor(0.49);
  EXPECT_EQ(image().popUpView(), nullptr);
  platform.runFor(0.02);
  const auto view = poppedUp<ImageView>(image());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(simulatedImageName(view->image()), "file:" + imagePath);
  EXPECT_EQ(view->image().size(), (Size{400, 300}));
  // On whole points, wherever the item is.
  EXPECT_NEAR(view->frame().width(), 400, 1);
  EXPECT_NEAR(view->frame().height(), 300, 1);
  EXPECT_EQ(platform.graphics().largestImageWanted(), (Size{768, 512}));
}

TEST_F(FileItemPopUpTest, ALargeImageIsFittedIntoItsLimit) {
  struct Row {
    Size natural, shown;
  };
  for (const Row& row : {Row{{1536, 512}, {768, 256}}, Row{{400, 1024}, {200, 512}},
                         Row{{7680, 10240}, {384, 512}}, Row{{768, 512}, {768, 512}}}) {
    platform.graphics().putImageFile(imagePath, row.natural);
    const auto shown = pictureView(imagePath);
    ASSERT_NE(shown, nullptr);
    EXPECT_NEAR(shown->frame().width(), row.shown.width, 1e-4);
    EXPECT_NEAR(shown->frame().height(), row.shown.height, 1e-4);
  }
}

TEST_F(FileItemPopUpTest, APageStandsOnPaper) {
  const auto paper = std::dynamic_pointer_cast<RoundedRectangleView>(pictureView(pagePath));
  ASSERT_NE(paper, nullptr);
  EXPECT_NEAR(paper->frame().width(), 384, 1e-4);
  EXPECT_NEAR(paper->frame().height(), 512, 1e-4);
  EXPECT_EQ(paper->backgroundColor(), Color::white());
  EXPECT_TRUE(paper->renderBackground());
  EXPECT_EQ(paper->cornerRadius(), 5);
  ASSERT_EQ(paper->subviews().size(), 1U);
  const auto& picture = dynamic_cast<ImageView&>(*paper->subviews()[0]);
  EXPECT_EQ(simulatedImageName(picture.image()), "file:" + pagePath);
  EXPECT_EQ(picture.frame(), paper->bounds());
  paper->setFrame(Rect::make(12, 12, 192, 256));
  EXPECT_EQ(picture.frame(), Rect::make(0, 0, 192, 256));
  page().wasSelected();
  platform.runFor(0.51);
  EXPECT_NE(poppedUp<RoundedRectangleView>(page()), nullptr);
}

TEST_F(FileItemPopUpTest, ATextIsAsHighAsItIs) {
  const auto view = std::dynamic_pointer_cast<TextView>(text().generatePopUpView());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->text().string(), "One line of text.\nAnother.\n");
  EXPECT_EQ(view->backgroundColor(), Color::white());
  // Two lines of 12 points at 1.2 of that.
  EXPECT_EQ(view->frame().size, (Size{768, view->naturalHeight()}));
  EXPECT_EQ(view->naturalHeight(), 28);
  text().wasSelected();
  platform.runFor(0.51);
  EXPECT_NE(poppedUp<TextView>(text()), nullptr);
}

TEST_F(FileItemPopUpTest, ALongTextIsShownFromItsBeginning) {
  std::string contents;
  for (int i = 0; i < 3000; ++i) contents += "\u00e4";
  platform.fileSystem().putRaw(textPath, contents);
  const auto view = std::dynamic_pointer_cast<TextView>(text().generatePopUpView());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->text().string(), contents.substr(0, 2 * 2000));
}

TEST_F(FileItemPopUpTest, TheHeightOfATextHasNoLimit) {
  std::string contents;
  for (int i = 0; i < 1000; ++i) contents += "a\n";
  platform.fileSystem().putRaw(textPath, contents);
  const auto view = text().generatePopUpView();
  ASSERT_NE(view, nullptr);
  EXPECT_NEAR(view->frame().height(), 1000 * 14.4, 1);
}

TEST_F(FileItemPopUpTest, RichTextIsShownAsItLooks) {
  platform.fileSystem().putRaw("/work/a.rtf", R"({\rtf1\ansi Dear {\b Reader}})");
  const auto item = FileItem::create(Rect::make(0, 0, 42, 42), std::string("/work/a.rtf"));
  const auto view = std::dynamic_pointer_cast<TextView>(item->generatePopUpView());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->text().string(), "Dear Reader");
  EXPECT_TRUE(view->text().runs().back().font.bold);
}

TEST_F(FileItemPopUpTest, NothingPopsUpWhereThereIsNothingToShow) {
  platform.fileSystem().putRaw(textPath, "");
  EXPECT_EQ(text().generatePopUpView(), nullptr);
  platform.fileSystem().putRaw(textPath, "no \xff text");
  EXPECT_EQ(text().generatePopUpView(), nullptr);
  platform.fileSystem().removeItemAtPath(textPath);
  EXPECT_EQ(text().generatePopUpView(), nullptr);
  EXPECT_EQ(other().generatePopUpView(), nullptr);
}

TEST_F(FileItemPopUpTest, AMissingPictureIsNotEvenLookedFor) {
  platform.fileSystem().removeItemAtPath(imagePath);
  image().wasSelected();
  platform.runFor(1);
  EXPECT_EQ(image().popUpView(), nullptr);
  EXPECT_FALSE(platform.graphics().largestImageWanted());
}

TEST_F(FileItemPopUpTest, APictureThatCannotBeLoadedDoesNotPopUp) {
  platform.fileSystem().putRaw("/work/damaged.png", "text");
  const auto item = FileItem::create(Rect::make(0, 0, 42, 42), std::string("/work/damaged.png"));
  item->setTabRow(rows[0]);
  item->wasSelected();
  platform.runFor(1);
  EXPECT_EQ(item->popUpView(), nullptr);
}

// A picture that takes its time.

TEST_F(FileItemPopUpTest, ASlowPicturePopsUpWhenItHasCome) {
  platform.graphics().holdImages(true);
  image().wasSelected();
  platform.runFor(5);
  EXPECT_EQ(image().popUpView(), nullptr);
  platform.graphics().deliverImages();
  EXPECT_NE(poppedUp<ImageView>(image()), nullptr);
}

TEST_F(FileItemPopUpTest, ASlowPictureOfAnItemThatIsLeftDoesNotPopUp) {
  platform.graphics().holdImages(true);
  image().wasSelected();
  platform.runFor(1);
  image().wasDeselected();
  platform.graphics().deliverImages();
  EXPECT_EQ(image().popUpView(), nullptr);
}

TEST_F(FileItemPopUpTest, ASecondSelectionWaitsForItsOwnPicture) {
  platform.graphics().holdImages(true);
  image().wasSelected();
  platform.runFor(1);
  image().wasDeselected();
  image().wasSelected();
  platform.graphics().deliverImages();
  EXPECT_EQ(image().popUpView(), nullptr);
  platform.runFor(0.51);
  platform.graphics().deliverImages();
  EXPECT_NE(image().popUpView(), nullptr);
}

TEST_F(FileItemPopUpTest, ASlowPictureDoesNotComeOverAMenu) {
  platform.graphics().holdImages(true);
  image().wasSelected();
  platform.runFor(1);
  const auto menu = Menu::create();
  menu->addItem(MenuItem::create("Entry"));
  platform.menuPresenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    platform.graphics().deliverImages();
    user.escape();
  });
  quillbox->popUpMenu(menu, nullptr, {}, nullptr, nullptr);
  EXPECT_EQ(image().popUpView(), nullptr);
}

TEST_F(FileItemPopUpTest, ASlowPictureOfAnItemThatHasGoneIsDropped) {
  platform.graphics().holdImages(true);
  auto item = FileItem::create(Rect::make(0, 0, 42, 42), imagePath);
  item->wasSelected();
  platform.runFor(1);
  item.reset();
  platform.graphics().deliverImages();
}

}  // namespace
}  // namespace qb::test
