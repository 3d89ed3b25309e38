#pragma once

#include <memory>
#include <vector>

#include "Platform/EventTap.h"
#include "Quillbox/activation/EventMonitorProtocol.h"
#include "QuillboxCommon/WeakList.h"

namespace qb {

/// Who wants to see keys and presses at the tap. Monitors are not kept alive. Adding one again
/// moves it to the end; adding null does nothing.
class EventMonitors {
 public:
  void addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);

  /// Whether a key monitor has gone without having been removed, since this was last asked.
  bool forgetGoneKeyEventMonitors() { return keyEventMonitors_.forgetGone(); }

  /// Asks all of them, whoever claims the event. Intended: mouse monitors differ.
  bool monitorKeyEvent(const TappedEvent& event) const;
  /// Asks until one claims the event.
  bool monitorMouseEvent(const TappedEvent& event) const;
  /// What the key monitors have said that they claim.
  std::vector<TapRules::Chord> claimedChords() const;

 private:
  WeakList<EventMonitorProtocol> keyEventMonitors_ =
      arrayWithWeakReferences<EventMonitorProtocol>();
  WeakList<EventMonitorProtocol> mouseEventMonitors_ =
      arrayWithWeakReferences<EventMonitorProtocol>();
};

}  // namespace qb
