#pragma once

#include <functional>
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
  /// Asks whoever shows the menu for a `paint` of that rectangle, its origin at the top left.
  using NeedsDisplay = std::function<void(const Rect&)>;
  /// As large as the view, which leaves its superview for this window. Of all that a window asks
  /// of its platform only paint matters inside a menu; `needsDisplay` may be empty.
  MenuItemWindow(const std::shared_ptr<View>& view, NeedsDisplay needsDisplay);
  ~MenuItemWindow() override;

  void deliver(const Event& event) override;
  /// The pointer is outside from now on.
  void pointerLeft();

 private:
  class Peer;
  class PeerFactory;
  MenuItemWindow(const std::shared_ptr<View>& view, PeerFactory&& factory);
  void follow(const std::shared_ptr<View>& view);

  std::shared_ptr<View> view_;
  std::weak_ptr<View> viewUnderPointer_;
};

}  // namespace qb
