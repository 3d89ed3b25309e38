#include "PlatformSimulated/SimulatedWindowServer.h"

#include <algorithm>

namespace qb {

SimulatedWindowServer::SimulatedWindowServer(SimulatedProcesses& processes)
    : processes_(processes) {
  processes_.setOnOwnProcessBroughtForward([this] { bringOwnWindowsForward(); });
}

SimulatedWindowServer::~SimulatedWindowServer() {
  processes_.setOnOwnProcessBroughtForward(nullptr);
}

std::unique_ptr<WindowPeer> SimulatedWindowServer::createWindowPeer(WindowPeerClient& client) {
  auto peer = std::make_unique<SimulatedWindowPeer>(*this, client);
  windows_.push_back(peer.get());
  return peer;
}

std::int64_t SimulatedWindowServer::windowLevelForKey(WindowLevelKey key) const {
  switch (key) {
    case WindowLevelKeyFloating:
      return 3;
    case WindowLevelKeyScreenSaver:
      return 1000;
  }
  return 0;
}

std::vector<SimulatedWindowPeer*> SimulatedWindowServer::visibleWindows() const {
  std::vector<SimulatedWindowPeer*> visible(order_.rbegin(), order_.rend());
  std::stable_sort(visible.begin(), visible.end(),
                   [](const auto* a, const auto* b) { return a->level() > b->level(); });
  return visible;
}

SimulatedWindowPeer* SimulatedWindowServer::keyWindow() const {
  return keys_.empty() ? nullptr : keys_.back();
}

SimulatedWindowPeer* SimulatedWindowServer::windowAt(Point point) const {
  for (SimulatedWindowPeer* window : visibleWindows()) {
    if (qb::contains(window->frame(), point)) return window;
  }
  return nullptr;
}

bool SimulatedWindowServer::contains(const SimulatedWindowPeer* window) const {
  return std::find(windows_.begin(), windows_.end(), window) != windows_.end();
}

RecordingCanvas SimulatedWindowServer::paint(SimulatedWindowPeer& window) const {
  const Rect all{{}, window.frame_.size};
  RecordingCanvas canvas(all, window.contentAlphaValue_);
  window.dirtyRect_ = {};
  window.client_.paint(canvas, all);
  return canvas;
}

RecordingCanvas SimulatedWindowServer::paintDirty(SimulatedWindowPeer& window) const {
  const Rect dirty = window.dirtyRect_;
  RecordingCanvas canvas(dirty, window.contentAlphaValue_);
  window.dirtyRect_ = {};
  if (!dirty.isEmpty()) window.client_.paint(canvas, dirty);
  return canvas;
}

void SimulatedWindowServer::noteOrderedFront(SimulatedWindowPeer& window) {
  std::erase(order_, &window);
  order_.push_back(&window);
}

void SimulatedWindowServer::noteMadeKey(SimulatedWindowPeer& window) {
  std::erase(keys_, &window);
  keys_.push_back(&window);
  processes_.setOwnWindowIsKey(true);
}

void SimulatedWindowServer::noteOrderedOut(SimulatedWindowPeer& window) {
  std::erase(order_, &window);
  std::erase(keys_, &window);
  processes_.setOwnWindowIsKey(!keys_.empty());
}

void SimulatedWindowServer::noteDestroyed(SimulatedWindowPeer& window) {
  noteOrderedOut(window);
  std::erase(windows_, &window);
}

void SimulatedWindowServer::bringOwnWindowsForward() {
  const auto visible = visibleWindows();
  if (!visible.empty() && keys_.empty()) noteMadeKey(*visible.front());
}

}  // namespace qb
