#include "Quillbox/activation/EventMonitors.h"

namespace qb {

namespace {

void addOnce(WeakList<EventMonitorProtocol>& list,
             const std::shared_ptr<EventMonitorProtocol>& monitor) {
  if (!monitor) return;
  list.remove(monitor.get());
  list.add(monitor);
}

}  // namespace

void EventMonitors::addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  addOnce(keyEventMonitors_, monitor);
}

void EventMonitors::removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  keyEventMonitors_.remove(monitor.get());
}

void EventMonitors::addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  addOnce(mouseEventMonitors_, monitor);
}

void EventMonitors::removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  mouseEventMonitors_.remove(monitor.get());
}

bool EventMonitors::monitorKeyEvent(const TappedEvent& event) const {
  // The usual case, and the desktop waits for it.
  if (keyEventMonitors_.isEmpty()) return false;
  bool claimed = false;
  for (const auto& monitor : keyEventMonitors_.members()) {
    if (monitor->monitorKeyEvent(event, event.type, event.keyCode, event.flags)) claimed = true;
  }
  return claimed;
}

bool EventMonitors::monitorMouseEvent(const TappedEvent& event) const {
  if (mouseEventMonitors_.isEmpty()) return false;
  for (const auto& monitor : mouseEventMonitors_.members()) {
    if (monitor->monitorMouseEvent(event)) return true;
  }
  return false;
}

std::vector<TapRules::Chord> EventMonitors::claimedChords() const {
  std::vector<TapRules::Chord> chords;
  for (const auto& monitor : keyEventMonitors_.members()) {
    const auto claimed = monitor->claimedChords();
    chords.insert(chords.end(), claimed.begin(), claimed.end());
  }
  return chords;
}

}  // namespace qb
