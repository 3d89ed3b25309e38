#pragma once

#include <memory>

#include "QuillboxCommon/views/Window.h"

namespace qb {

/// Holds the view of a menu item while the menu is open, so that it is drawn and gets the mouse.
///
/// It differs from other windows in three ways: nobody filters its events, the pointer is followed
/// inside of it, and a release goes to the view under the pointer wherever the press was, since a
/// menu can be opened and used in one stroke. Main thread.
class MenuItemWindow : public Window {
 public:
  /// As large as the view, which leaves its superview for this window.
  MenuItemWindow(WindowPeerFactory& factory, const std::shared_ptr<View>& view);
  ~MenuItemWindow() override;

  void deliver(const Event& event) override;
  /// The pointer is outside from now on.
  void pointerLeft();

 private:
  void follow(const std::shared_ptr<View>& view);

  std::shared_ptr<View> view_;
  std::weak_ptr<View> viewUnderPointer_;
};

}  // namespace qb
