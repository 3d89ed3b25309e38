#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <functional>
#include <memory>
#include <vector>

#include "Platform/WindowServer.h"
#include "PlatformDesktop/graphics/TextCache.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "PlatformDesktop/windows/ClickCatcher.h"
#include "PlatformDesktop/windows/ComposedWindow.h"
#include "PlatformDesktop/windows/DesktopWindow.h"
#include "PlatformDesktop/windows/PointerInput.h"

namespace qb {

/// The windows of this process and their order. Main thread.
class DesktopWindowServer : public WindowServer, private QAbstractNativeEventFilter {
 public:
  /// `formats` are those of Qt's connection. The others must outlive it.
  DesktopWindowServer(const ScreenFormats& formats, DesktopDisplays& displays, QtRunLoopHost& host);
  ~DesktopWindowServer() override;

  std::unique_ptr<WindowPeer> createWindowPeer(WindowPeerClient& client) override;
  std::int64_t windowLevelForKey(WindowLevelKey key) const override;

  /// Told true when a window of ours becomes key, false when none is any more.
  void setKeyObserver(std::function<void(bool)> observer) { keyObserver_ = std::move(observer); }
  /// Called amid each stacking of the windows, when those that dialogs stand above are in place.
  void setDialogRaiser(std::function<void()> raiser) { dialogRaiser_ = std::move(raiser); }
  /// Called when windows have been put in order: what must stand above them all raises itself.
  void setRestackObserver(std::function<void()> observer) {
    restackObserver_ = std::move(observer);
  }
  /// Whether a window that stands on the root, or stood there, is one of this process's: a window
  /// of the core, or of Qt.
  bool isOwnWindow(xcb_window_t id) const;
  /// Gives a key to the key window, if there is one.
  void deliverKey(const TappedEvent& key);
  PointerInput& pointerInput() { return pointerInput_; }

  // For the windows.
  void add(DesktopWindow& window);
  void remove(DesktopWindow& window);
  void setKeyWindow(DesktopWindow* window);
  DesktopWindow* keyWindow() const { return keyWindow_; }
  /// Puts the windows on the screen, and `arriving`, which is about to be shown, above all others
  /// by level, those of one level in the order of their coming.
  void restack(DesktopWindow* arriving = nullptr);
  void updateBeforeSleep() { updateNeeded_ = true; }
  bool compositorIsRunning() const { return compositorIsRunning_; }
  xcb_connection_t* connection() const { return formats_.connection; }
  const ScreenFormats& formats() const { return formats_; }
  const DesktopDisplays& displays() const { return displays_; }
  TextCache& texts() { return texts_; }
  xcb_atom_t blurProperty() const { return blurProperty_; }
  xcb_atom_t windowTypeProperty() const { return windowTypeProperty_; }
  xcb_atom_t dockType() const { return dockType_; }

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  void watchCompositor();
  void update();

  ScreenFormats formats_;
  DesktopDisplays& displays_;
  TextCache texts_;
  PointerInput pointerInput_;
  std::function<void(bool)> keyObserver_;
  std::function<void()> dialogRaiser_, restackObserver_;
  std::vector<DesktopWindow*> windows_;
  DesktopWindow* keyWindow_ = nullptr;
  std::unique_ptr<ClickCatcher> catcher_;
  xcb_atom_t compositorSelection_ = 0, blurProperty_ = 0, windowTypeProperty_ = 0, dockType_ = 0;
  std::uint8_t xfixesEvent_ = 0;
  bool compositorIsRunning_ = false;
  bool updateNeeded_ = false;
  Subscription beforeSleep_, reconfiguration_;
};

}  // namespace qb
