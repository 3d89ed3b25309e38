#include <gmock/gmock.h>
#include <xcb/composite.h>

#include <array>
#include <memory>

#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/windows/DesktopWindowPictures.h"
#include "XServer.h"

namespace qb::test {
namespace {

constexpr std::uint32_t red = 0xC03020, green = 0x20A040, blue = 0x3050D0;

class WindowPicturesTest : public ::testing::Test {
 protected:
  WindowPicturesTest() {
    setenv("DISPLAY", server_.display().c_str(), 1);
    x_ = std::make_unique<XConnection>();
  }

  /// A window of one colour straight on the root; nobody manages it.
  xcb_window_t showWindow(const QRect& place, std::uint32_t color, int border = 0) {
    return showWindowIn(x_->root(), place, color, border);
  }
  xcb_window_t showWindowIn(xcb_window_t parent, const QRect& place, std::uint32_t color,
                            int border = 0) {
    const xcb_window_t window = xcb_generate_id(x_->get());
    const std::array<std::uint32_t, 2> values{color, 0xFFFFFF};
    xcb_create_window(x_->get(), XCB_COPY_FROM_PARENT, window, parent,
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()),
                      static_cast<std::uint16_t>(border), XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL, values.data());
    xcb_map_window(x_->get(), window);
    sync();
    return window;
  }
  void hide(xcb_window_t window) {
    xcb_unmap_window(x_->get(), window);
    sync();
  }
  void destroy(xcb_window_t window) {
    xcb_destroy_window(x_->get(), window);
    sync();
  }
  void resize(xcb_window_t window, std::uint32_t width, std::uint32_t height) {
    const std::array<std::uint32_t, 2> size{width, height};
    xcb_configure_window(x_->get(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size.data());
    sync();
  }
  /// What a compositing manager does, as long as its connection lives.
  void redirectAllWindows() {
    compositor_ = std::make_unique<XConnection>();
    xcb_composite_redirect_subwindows(compositor_->get(), compositor_->root(),
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    std::free(xcb_get_input_focus_reply(compositor_->get(), xcb_get_input_focus(compositor_->get()),
                                        nullptr));
  }
  void sync() {
    std::free(xcb_get_input_focus_reply(x_->get(), xcb_get_input_focus(x_->get()), nullptr));
  }

  Image picture(xcb_window_t window, Size largest = {1000, 1000}) {
    return pictures_.imageOfWindow(window, largest);
  }
  /// Hears of all that has happened up to now: the answers to one question come after it.
  void letTime() {
    picture(x_->root());
    picture(x_->root());
  }
  /// The corners and the middle, if they have one colour; 0 for no picture.
  static std::uint32_t colorOf(const Image& image) {
    const auto source = std::dynamic_pointer_cast<const DesktopImage>(image.source());
    if (!source) return 0;
    const QImage pixels = source->scaled(
        QSize(static_cast<int>(image.size().width), static_cast<int>(image.size().height)));
    const QRect all = pixels.rect();
    const QRgb color = pixels.pixel(all.center());
    for (const QPoint point :
         {all.topLeft(), all.topRight(), all.bottomLeft(), all.bottomRight()}) {
      if (pixels.pixel(point) != color) return 0xFFFFFFFF;
    }
    return color & 0xFFFFFFU;
  }

  XServer server_{{"-screen", "0", "800x600x24"}};
  std::unique_ptr<XConnection> x_, compositor_;
  DesktopWindowPictures pictures_{1};
};

TEST_F(WindowPicturesTest, WhatNothingCoversIsSeenWithoutACompositor) {
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(picture(window).size(), (Size{120, 80}));
}

TEST_F(WindowPicturesTest, WhatIsCoveredHasThePictureOfBefore) {
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  ASSERT_EQ(colorOf(picture(window)), red);
  const xcb_window_t above = showWindow(QRect(100, 100, 300, 300), green);
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(colorOf(picture(above)), green);
}

TEST_F(WindowPicturesTest, WhatWasNeverSeenHasNone) {
  const xcb_window_t covered = showWindow(QRect(50, 60, 120, 80), red);
  showWindow(QRect(100, 100, 300, 300), green);
  const xcb_window_t hidden = showWindow(QRect(500, 60, 120, 80), blue);
  hide(hidden);
  const xcb_window_t outside = showWindow(QRect(750, 400, 120, 80), blue);
  EXPECT_FALSE(picture(covered));
  EXPECT_FALSE(picture(hidden));
  EXPECT_FALSE(picture(outside));
}

TEST_F(WindowPicturesTest, AHiddenWindowKeepsItsPictureUntilItGoes) {
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  ASSERT_EQ(colorOf(picture(window)), red);
  hide(window);
  showWindow(QRect(50, 60, 120, 80), green);
  EXPECT_EQ(colorOf(picture(window)), red);
  destroy(window);
  EXPECT_FALSE(picture(window));
}

TEST_F(WindowPicturesTest, UnderACompositorCoveredWindowsAreSeen) {
  redirectAllWindows();
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  const xcb_window_t outside = showWindow(QRect(750, 60, 120, 80), blue);
  showWindow(QRect(0, 0, 800, 600), green);
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(colorOf(picture(outside)), blue);
}

TEST_F(WindowPicturesTest, UnderACompositorHiddenWindowsKeepTheirsUnasked) {
  redirectAllWindows();
  const xcb_window_t first = showWindow(QRect(0, 0, 30, 30), blue);
  ASSERT_EQ(colorOf(picture(first)), blue);
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  letTime();
  hide(window);
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(picture(window).size(), (Size{120, 80}));
}

TEST_F(WindowPicturesTest, TheLastPictureHasTheLastSize) {
  redirectAllWindows();
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  ASSERT_EQ(colorOf(picture(window)), red);
  resize(window, 200, 150);
  letTime();
  hide(window);
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(picture(window).size(), (Size{200, 150}));
}

TEST_F(WindowPicturesTest, ACompositorThatCameLaterServesToo) {
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), red);
  ASSERT_EQ(colorOf(picture(window)), red);
  redirectAllWindows();
  showWindow(QRect(0, 0, 800, 600), green);
  EXPECT_EQ(colorOf(picture(window)), red);
}

TEST_F(WindowPicturesTest, AFrameAndItsBorderAreLeftOut) {
  for (const bool isRedirected : {false, true}) {
    if (isRedirected) redirectAllWindows();
    const xcb_window_t frame = showWindow(QRect(40, 50, 300, 200), green, 5);
    const xcb_window_t client = showWindowIn(frame, QRect(10, 30, 280, 160), red);
    EXPECT_EQ(colorOf(picture(client)), red) << isRedirected;
    EXPECT_EQ(picture(client).size(), (Size{280, 160}));
    destroy(frame);
  }
}

TEST_F(WindowPicturesTest, AShadowThatAClientDrawsItselfIsLeftOut) {
  const xcb_window_t window = showWindow(QRect(50, 60, 120, 80), green);
  showWindowIn(window, QRect(10, 5, 90, 65), red);
  // Left, right, top, bottom.
  const std::array<std::uint32_t, 4> extents{10, 20, 5, 10};
  xcb_change_property(x_->get(), XCB_PROP_MODE_REPLACE, window, x_->atom("_GTK_FRAME_EXTENTS"),
                      XCB_ATOM_CARDINAL, 32, extents.size(), extents.data());
  sync();
  EXPECT_EQ(colorOf(picture(window)), red);
  EXPECT_EQ(picture(window).size(), (Size{90, 65}));
}

TEST_F(WindowPicturesTest, NoMorePixelsAreKeptThanAreAskedFor) {
  const xcb_window_t window = showWindow(QRect(50, 60, 400, 200), red);
  const Image small = picture(window, {40, 40});
  EXPECT_EQ(small.size(), (Size{400, 200}));
  EXPECT_EQ(colorOf(small), red);
}

TEST_F(WindowPicturesTest, PixelsBecomePointsByTheScale) {
  const xcb_window_t window = showWindow(QRect(50, 60, 400, 200), red);
  DesktopWindowPictures pictures(2);
  EXPECT_EQ(pictures.imageOfWindow(window, {1000, 1000}).size(), (Size{200, 100}));
}

TEST_F(WindowPicturesTest, WhatIsNoWindowHasNone) {
  EXPECT_FALSE(picture(XCB_NONE));
  EXPECT_FALSE(picture(0x7FFFFF));
}

}  // namespace
}  // namespace qb::test
