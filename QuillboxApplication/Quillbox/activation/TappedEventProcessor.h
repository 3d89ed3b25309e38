#pragma once

#include "Platform/EventTap.h"

namespace qb {

class AppDelegate;

/// Decides what becomes of each event at the tap. The whole desktop waits for its answer, so
/// it only decides, and leaves all work to the next pass of the loop in the default mode.
/// Answers are true to pass an event on, false to swallow it.
class TappedEventProcessor {
 public:
  explicit TappedEventProcessor(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~TappedEventProcessor();
  TappedEventProcessor(const TappedEventProcessor&) = delete;
  TappedEventProcessor& operator=(const TappedEventProcessor&) = delete;

  bool tappedEventOccured(const TappedEvent& event);
  /// The press that the tap let through has reached the panel: it does not dismiss.
  void cancelDismissalDueToMouseDown();

 private:
  bool processTappedKeyEvent(const TappedEvent& event);
  bool takesTab(const TappedEvent& event);
  bool processTappedMouseDownEvent(const TappedEvent& event);
  void scheduleDismissal(double delay);

  AppDelegate& appDelegate_;
};

}  // namespace qb
