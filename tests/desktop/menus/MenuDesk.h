#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "PlatformDesktop/displays/DesktopDisplays.h"
#include "PlatformDesktop/menus/DesktopMenuPresenter.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "XClient.h"

namespace qb::test {

/// Notes what a menu's delegate hears, as "highlight Title", "highlight nothing", "closed".
class RecordingMenuDelegate : public MenuDelegate {
 public:
  void menuWillHighlightItem(Menu&, MenuItem* item) override {
    heard.push_back("highlight " + (item ? item->title() : "nothing"));
  }
  void menuDidClose(Menu&) override { heard.push_back("closed"); }
  std::vector<std::string> heard;
};

/// The presenter on a desktop of its own, and a user whose hands move by XTEST. What the user does
/// while the menu is open is told ahead, step by step: each step waits until what came before is to
/// be seen, never for a time.
class MenuDesk : public ::testing::Test {
 protected:
  MenuDesk();
  ~MenuDesk() override;

  /// Adds a step: `action` once `condition` holds. It fails, and the menu closes, when that takes
  /// much too long.
  void when(std::string what, std::function<bool()> condition, std::function<void()> action);
  /// Opens the menu near the top left of the screen, and runs the steps while it is open.
  bool popUp();
  bool popUpAt(Point location);

  std::shared_ptr<MenuItem> add(const std::string& title);
  /// The widget of the innermost open menu, null without one.
  MenuWidget* innermost() const;
  bool isShown(const Menu& menu) const;
  bool isHighlighted(const MenuItem& item) const;
  /// In device pixels of the X screen; empty when the item is not shown.
  std::optional<QPoint> centerOf(const MenuItem& item) const;
  void pointAt(const MenuItem& item);
  void click();
  void press(std::uint16_t keyCode);
  /// Saves a picture of the screen where QUILLBOX_SCREENSHOTS names a folder.
  void shoot(const std::string& name) const;
  /// A key as it comes from the tap.
  static Event key(std::uint16_t keyCode);

  QtRunLoopHost host;
  RunLoop loop{host};
  DesktopDisplays displays;
  DesktopWindowServer windowServer;
  DesktopMenuPresenter presenter;
  XClient user;
  std::shared_ptr<Menu> menu = Menu::create("Menu");
  RecordingMenuDelegate delegate;

 private:
  struct Step {
    std::string what;
    std::function<bool()> condition;
    std::function<void()> action;
  };
  void goOn();

  std::deque<Step> steps_;
  Moment deadline_ = 0;
};

}  // namespace qb::test
