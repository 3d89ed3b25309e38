#include "ContractTest.h"
#include "Platform/WindowPictures.h"
#include "Platform/Workspace.h"

namespace qb {
namespace {

class WindowPicturesContract : public ContractTest {
 protected:
  Image picture() {
    return platform_.windowPictures().imageOfWindow(desktop_->clientWindow(client_), {1000, 1000});
  }
  /// Until the client has painted its window.
  bool waitForPicture() {
    return waitUntil([&] {
      const auto color = desktop_->colorInMiddle(picture());
      return color && *color == desktop_->clientColor();
    });
  }

  const ProcessSerialNumber client_ = desktop_->startClient();
};

TEST_F(WindowPicturesContract, APictureShowsTheWindowInItsSize) {
  ASSERT_TRUE(waitForPicture());
  EXPECT_EQ(picture().size(), desktop_->clientWindowFrame(client_).size);
}

TEST_F(WindowPicturesContract, ASmallPictureIsOfTheWholeWindowAllTheSame) {
  ASSERT_TRUE(waitForPicture());
  const Image small =
      platform_.windowPictures().imageOfWindow(desktop_->clientWindow(client_), {32, 32});
  EXPECT_EQ(small.size(), desktop_->clientWindowFrame(client_).size);
  EXPECT_EQ(desktop_->colorInMiddle(small), desktop_->clientColor());
}

TEST_F(WindowPicturesContract, AWindowThatIsNotShownHasItsLastPicture) {
  ASSERT_TRUE(waitForPicture());
  const auto application = platform_.workspace().runningApplicationsWithBundleIdentifier(
      desktop_->clientBundleIdentifier());
  ASSERT_EQ(application.size(), 1U);
  application.front()->hide();
  ASSERT_TRUE(waitUntil([&] { return application.front()->isHidden(); }));
  EXPECT_EQ(desktop_->colorInMiddle(picture()), desktop_->clientColor());
}

TEST_F(WindowPicturesContract, AWindowThatIsNotThereHasNone) {
  EXPECT_FALSE(platform_.windowPictures().imageOfWindow(0, {100, 100}));
  const WindowID window = desktop_->clientWindow(client_);
  desktop_->stopClient(client_);
  EXPECT_TRUE(waitUntil([&] {
    return !platform_.windowPictures().imageOfWindow(window, {100, 100});
  }));
}

}  // namespace
}  // namespace qb
