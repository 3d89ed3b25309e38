#include "Quillbox/activation/TappedEventProcessor.h"

#include <string_view>

#include "Platform/MenuPresenter.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/EventMonitors.h"
#include "Quillbox/activation/HotKeyIDs.h"
#include "Quillbox/activation/KeyCommands.h"
#include "Quillbox/activation/PanelWindow.h"
#include "Quillbox/activation/TabChords.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

constexpr std::string_view dismissalSelector = "dismissDueToMouseDownInOtherApplication";
/// The height of the strip at the top of the primary screen that belongs to the menu bar.
constexpr double menuBarHeight = 22;
/// How long a press on a row may take to reach the panel.
constexpr TimeInterval timeToReachPanel = 0.1;

}  // namespace

TappedEventProcessor::~TappedEventProcessor() {
  RunLoop::main().cancelPreviousPerformRequests(this);
}

bool TappedEventProcessor::tappedEventOccured(const TappedEvent& event) {
  switch (event.type) {
    case EventTypeLeftMouseDown:
    case EventTypeRightMouseDown:
      return processTappedMouseDownEvent(event);
    case EventTypeKeyDown:
    case EventTypeKeyUp:
      return processTappedKeyEvent(event);
    case EventTypeScrollWheel:
      // The scroll goes on: expanding a menu is all that it does here.
      appDelegate_.invokeMoreMenuItem();
      return true;
    default:
      return true;
  }
}

bool TappedEventProcessor::processTappedKeyEvent(const TappedEvent& event) {
  if (appDelegate_.userInteractionLevel() > 0) return true;
  EventMonitors& monitors = appDelegate_.eventMonitors();
  // Nobody is left to claim its keys, so nobody may lose them.
  if (monitors.forgetGoneKeyEventMonitors()) appDelegate_.maintainTapRules();
  const bool claimed = monitors.monitorKeyEvent(event);
  if (event.keyCode == KeyCodeTab && takesTab(event)) return false;
  if (appDelegate_.state() == ActivationStateActive && event.type == EventTypeKeyDown) {
    Event key;
    key.type = EventTypeKeyDown;
    key.flags = event.flags;
    key.keyCode = event.keyCode;
    // The keyboard is held for the panel; while a menu is open over it, its keys are the menu's.
    if (appDelegate_.popUpMenuIsBeingDisplayed() &&
        appDelegate_.platform().menuPresenter().keyDown(key)) {
      return false;
    }
    appDelegate_.keyCommands().performKeyDownLater(key);
    return false;
  }
  return !claimed;
}

bool TappedEventProcessor::takesTab(const TappedEvent& event) {
  const Settings& settings = appDelegate_.settings();
  const bool isDown = event.type == EventTypeKeyDown;
  KeyCommands& commands = appDelegate_.keyCommands();
  if (settings.applicationActivatesOnOptionTab() && isChord(optionShiftTabChord, event)) {
    if (isDown) {
      commands.performTabLater("processOptionTabWithHotKeyID:", [this] {
        appDelegate_.processOptionTabWithHotKeyID(HotKeyPreviousItem);
      });
    }
    return true;
  }
  if (!settings.applicationActivatesOnCommandTab()) return false;
  const bool forward = isChord(commandTabChord, event);
  if (!forward && !isChord(commandShiftTabChord, event)) return false;
  if (isDown) {
    const std::int32_t hotKeyID = forward ? HotKeyNextItem : HotKeyPreviousItem;
    commands.performTabLater("processCommandTabWithHotKeyID:", [this, hotKeyID] {
      appDelegate_.processCommandTabWithHotKeyID(hotKeyID);
    });
  }
  return true;
}

bool TappedEventProcessor::processTappedMouseDownEvent(const TappedEvent& event) {
  if (appDelegate_.eventMonitors().monitorMouseEvent(event)) return false;
  if (appDelegate_.userInteractionLevel() > 0 || appDelegate_.state() != ActivationStateActive ||
      appDelegate_.popUpMenuIsBeingDisplayed()) {
    return true;
  }
  const Point location = event.location;
  const bool isInMenuBar =
      contains(appDelegate_.panelWindow().notedPrimaryScreenFrame(), location) && location.y >= 0 &&
      location.y <= menuBarHeight;
  if (isInMenuBar || !appDelegate_.hostView()->mouseDownEventIsWithinTabRow(event)) {
    scheduleDismissal(0);
    return false;
  }
  scheduleDismissal(timeToReachPanel);
  return true;
}

void TappedEventProcessor::scheduleDismissal(double delay) {
  RunLoop::main().performAfterDelay(this, dismissalSelector, delay, [this] {
    appDelegate_.dismissDueToMouseDownInOtherApplication();
  });
}

void TappedEventProcessor::cancelDismissalDueToMouseDown() {
  RunLoop::main().cancelPreviousPerformRequests(this, dismissalSelector);
}

}  // namespace qb
