#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Platform/WindowServer.h"
#include "PlatformSimulated/RecordingCanvas.h"
#include "PlatformSimulated/SimulatedProcesses.h"

namespace qb {

class SimulatedWindowServer;

/// One window with all that was ever set on it.
class SimulatedWindowPeer : public WindowPeer {
 public:
  SimulatedWindowPeer(SimulatedWindowServer& server, WindowPeerClient& client)
      : server_(server), client_(client) {}
  ~SimulatedWindowPeer() override;

  void setFrame(const Rect& frame) override;
  void setLevel(std::int64_t level) override;
  void setCollectionBehavior(std::uint64_t behavior) override;
  void setStyleMask(std::uint64_t mask) override;
  void setHasShadow(bool hasShadow) override;
  void setOpaque(bool opaque) override;
  void setTitle(const std::string& title) override;
  void setBackgroundColor(const Color& color) override;
  void setBackgroundBlurRadius(std::int64_t radius) override;
  void setContentAlphaValue(double alpha) override;
  void orderFront() override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  void setNeedsDisplay(const Rect& rect) override;

  const Rect& frame() const { return frame_; }
  std::int64_t level() const { return level_; }
  std::uint64_t collectionBehavior() const { return collectionBehavior_; }
  std::uint64_t styleMask() const { return styleMask_; }
  bool hasShadow() const { return hasShadow_; }
  bool isOpaque() const { return opaque_; }
  const std::string& title() const { return title_; }
  const Color& backgroundColor() const { return backgroundColor_; }
  std::int64_t backgroundBlurRadius() const { return backgroundBlurRadius_; }
  double contentAlphaValue() const { return contentAlphaValue_; }
  bool isVisible() const { return visible_; }
  bool isKey() const;
  /// Something of the content is to be seen: it is visible and its alpha is above 0.
  bool showsContent() const { return visible_ && contentAlphaValue_ > 0; }
  /// What waits to be painted (origin at the top left); the zero rectangle for nothing.
  const Rect& dirtyRect() const { return dirtyRect_; }
  /// Calls in order with their values in the shortest form: "setLevel 5", "setFrame 0 0 1440 900",
  /// "orderOut". Requests to paint are not among them.
  const std::vector<std::string>& history() const { return history_; }
  void clearHistory() { history_.clear(); }

  /// For the desktop: an event in window coordinates.
  void deliver(const Event& event) { client_.deliver(event); }

 private:
  friend class SimulatedWindowServer;
  SimulatedWindowServer& server_;
  WindowPeerClient& client_;
  Rect frame_;
  std::int64_t level_ = 0;
  std::uint64_t collectionBehavior_ = 0, styleMask_ = 0;
  bool hasShadow_ = true, opaque_ = true, visible_ = false;
  std::string title_;
  Color backgroundColor_ = Color::white();
  std::int64_t backgroundBlurRadius_ = 0;
  double contentAlphaValue_ = 1;
  Rect dirtyRect_;
  std::vector<std::string> history_;
};

/// The windows of this process. While one of them is key this process is the front one; when the
/// key window goes, the window that was key before it is key again. Nothing is painted but by
/// `paint` and `paintDirty`.
class SimulatedWindowServer : public WindowServer {
 public:
  explicit SimulatedWindowServer(SimulatedProcesses& processes);
  ~SimulatedWindowServer() override;

  std::unique_ptr<WindowPeer> createWindowPeer(WindowPeerClient& client) override;
  /// Floating windows have level 3, the screen saver 1000.
  std::int64_t windowLevelForKey(WindowLevelKey key) const override;

  /// All windows, visible or not, in order of their making. None is owned here.
  const std::vector<SimulatedWindowPeer*>& windows() const { return windows_; }
  /// The visible ones, topmost first: by level, then by who was ordered front last.
  std::vector<SimulatedWindowPeer*> visibleWindows() const;
  /// Null for none.
  SimulatedWindowPeer* keyWindow() const;
  /// The topmost visible window whose frame holds `point` (from the lower left); null for none.
  SimulatedWindowPeer* windowAt(Point point) const;
  bool contains(const SimulatedWindowPeer* window) const;

  /// Paints the whole content as it would be seen: positions from the window's top left, opacity
  /// with the content's alpha in it.
  RecordingCanvas paint(SimulatedWindowPeer& window) const;
  /// Paints what the window has asked for, and forgets the request.
  RecordingCanvas paintDirty(SimulatedWindowPeer& window) const;

 private:
  friend class SimulatedWindowPeer;
  void noteOrderedFront(SimulatedWindowPeer& window);
  void noteMadeKey(SimulatedWindowPeer& window);
  void noteOrderedOut(SimulatedWindowPeer& window);
  void noteDestroyed(SimulatedWindowPeer& window);
  void bringOwnWindowsForward();

  SimulatedProcesses& processes_;
  std::vector<SimulatedWindowPeer*> windows_;
  /// Visible windows, the one ordered front last at the end.
  std::vector<SimulatedWindowPeer*> order_;
  /// Visible windows that were made key, the key window at the end.
  std::vector<SimulatedWindowPeer*> keys_;
};

}  // namespace qb
