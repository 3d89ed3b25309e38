#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPoint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "PlatformDesktop/dialogs/DesktopDialogs.h"
#include "PlatformDesktop/dialogs/DialogWindow.h"
#include "PlatformDesktop/displays/DesktopDisplays.h"
#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/Window.h"
#include "XClient.h"

namespace qb::test {

/// The dialogs on a desktop of their own, and a user whose hands move by XTEST, in front of a
/// window of another program that has the focus. What the user does while a dialog is up is told
/// ahead, step by step: each step waits until what came before is to be seen, never for a time.
class DialogDesk : public ::testing::Test {
 protected:
  DialogDesk();
  ~DialogDesk() override;

  /// Adds a step: `action` once `condition` holds. It fails, and the dialogs close, when that takes
  /// much too long.
  void when(std::string what, std::function<bool()> condition, std::function<void()> action);
  /// Runs `dialog`, and the steps meanwhile.
  template <class Run>
  auto during(Run&& dialog) {
    const auto timer = startSteps();
    auto answer = dialog();
    endSteps(*timer);
    return answer;
  }
  std::int32_t run(Alert& alert) {
    return during([&] { return dialogs.runModal(alert); });
  }
  /// Serves the loop until it holds; false when that takes much too long.
  bool waitFor(const std::function<bool()>& condition);

  /// The innermost dialog, null without one.
  static DialogWindow* dialog();
  /// It is on the screen and has the X focus.
  std::function<bool()> shown(int dialogsUp = 1);
  std::uint32_t focusOwner();
  static std::uint32_t idOf(const QWidget& widget);
  /// The direct child of the root that the pointer would meet there.
  std::uint32_t topmostAt(QPoint pixel);
  /// Of a place in the innermost dialog, in device pixels of the X screen.
  static QPoint pixelOf(QPoint inDialog);
  static QPoint pixelOf(const QWidget& widget);
  void clickAt(QPoint pixel);
  void type(std::initializer_list<std::uint16_t> keyCodes);
  /// The client gets what is typed.
  bool clientGetsKeys();
  /// A panel over the whole screen, key.
  std::unique_ptr<Window> makePanel();
  /// Saves a picture of the screen where QUILLBOX_SCREENSHOTS names a folder.
  static void shoot(const std::string& name);

  QtRunLoopHost host;
  RunLoop loop{host};
  DesktopDisplays displays;
  DesktopGraphics graphics;
  DesktopWindowServer windowServer;
  DesktopDialogs dialogs;
  XClient client;

 private:
  struct Step {
    std::string what;
    std::function<bool()> condition;
    std::function<void()> action;
  };
  std::shared_ptr<RunLoopTimer> startSteps();
  void endSteps(RunLoopTimer& timer);
  void goOn();

  std::deque<Step> steps_;
  Moment deadline_ = 0;
};

}  // namespace qb::test
