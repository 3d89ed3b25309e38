#include "Quillbox/activation/KeyCommands.h"

#include <array>
#include <utility>

#include "Platform/KeyCodes.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/HotKeyIDs.h"
#include "Quillbox/activation/InputMonitor.h"
#include "Quillbox/activation/KeyHandlers.h"
#include "Quillbox/activation/QuillboxAction.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

struct HotKeyCommand {
  std::int32_t hotKeyID;
  std::int32_t actionCode;
};
constexpr std::array hotKeyCommands{
    HotKeyCommand{HotKeyNextItem, QuillboxActionNextItem},
    HotKeyCommand{HotKeyOptionTab, QuillboxActionNextItem},
    HotKeyCommand{HotKeyPreviousItem, QuillboxActionPreviousItem},
    HotKeyCommand{HotKeyOptionShiftTab, QuillboxActionPreviousItem},
    HotKeyCommand{HotKeyAlternatePreviousItem, QuillboxActionPreviousItem},
    HotKeyCommand{HotKeyNextTabRow, QuillboxActionNextTabRow},
    HotKeyCommand{HotKeyNextTabRowByLetter, QuillboxActionNextTabRow},
    HotKeyCommand{HotKeyPreviousTabRow, QuillboxActionPreviousTabRow},
    HotKeyCommand{HotKeyPreviousTabRowByLetter, QuillboxActionPreviousTabRow},
    HotKeyCommand{HotKeyPreview, QuillboxActionPreview},
};

struct KeyCommand {
  std::uint16_t keyCode;
  std::int32_t actionCode;
  /// Without this modifier the key is no command.
  EventFlags required = 0;
};
// Whatever Shift does: Shift-Tab as a plain key steps forward. Intended.
constexpr std::array keyCommands{
    KeyCommand{KeyCodeTab, QuillboxActionNextItem},
    KeyCommand{KeyCodeRight, QuillboxActionNextItem},
    KeyCommand{KeyCodeBackquote, QuillboxActionPreviousItem},
    KeyCommand{KeyCodeLeft, QuillboxActionPreviousItem},
    KeyCommand{KeyCodeZ, QuillboxActionNextTabRow},
    KeyCommand{KeyCodeDown, QuillboxActionNextTabRow},
    KeyCommand{KeyCodeA, QuillboxActionPreviousTabRow},
    KeyCommand{KeyCodeUp, QuillboxActionPreviousTabRow},
    KeyCommand{KeyCodeSpace, QuillboxActionPreview},
    KeyCommand{KeyCodeReturn, QuillboxActionInvoke},
    KeyCommand{KeyCodeEnter, QuillboxActionInvoke},
    KeyCommand{KeyCodeO, QuillboxActionInvokeAndStay},
    KeyCommand{KeyCodeS, QuillboxActionCycleData},
    KeyCommand{KeyCodeD, QuillboxActionCycleData},
    KeyCommand{KeyCodeDelete, QuillboxActionQuickRemove},
    KeyCommand{KeyCodeW, QuillboxActionClose},
    KeyCommand{KeyCodeC, QuillboxActionCopy, EventFlagCommand},
    KeyCommand{KeyCodeV, QuillboxActionPaste, EventFlagCommand},
    KeyCommand{KeyCodeX, QuillboxActionCut, EventFlagCommand},
};

/// `QuillboxActionNone` when the id stands for no action.
std::int32_t actionCodeOfHotKey(std::int32_t hotKeyID) {
  for (const auto& command : hotKeyCommands) {
    if (command.hotKeyID == hotKeyID) return command.actionCode;
  }
  return QuillboxActionNone;
}

std::int32_t actionCodeOfKey(const Event& event) {
  for (const auto& command : keyCommands) {
    if (command.keyCode == event.keyCode && (event.flags & command.required) == command.required) {
      return command.actionCode;
    }
  }
  return QuillboxActionNone;
}

}  // namespace

KeyCommands::~KeyCommands() { RunLoop::main().cancelPreviousPerformRequests(this); }

void KeyCommands::processCommandTabWithHotKeyID(std::int32_t hotKeyID) {
  if (!appDelegate_.settings().applicationActivatesOnCommandTab()) return;
  schedule({hotKeyID, ActivationMethodCommandTab});
}

void KeyCommands::processOptionTabWithHotKeyID(std::int32_t hotKeyID) {
  if (!appDelegate_.settings().applicationActivatesOnOptionTab()) return;
  schedule({hotKeyID, ActivationMethodOptionTab});
}

void KeyCommands::schedule(const HotKeyActivation& activation) {
  performLater("processHotKeyActivation:",
               [this, activation] { appDelegate_.processHotKeyActivation(activation); });
}

void KeyCommands::performLater(std::string_view selector, std::function<void()> action) {
  appDelegate_.inputMonitor().noteKeyUnderWay();
  RunLoop::main().performAfterDelay(this, selector, 0, [this, action = std::move(action)] {
    appDelegate_.inputMonitor().noteKeyArrived();
    action();
    appDelegate_.inputMonitor().makeUpForPutOffLook();
  });
}

void KeyCommands::performTabLater(std::string_view selector, std::function<void()> action) {
  ++tabsPressed_;
  performLater(selector, [this, action = std::move(action)] {
    action();
    // Comes right after what the action has scheduled.
    RunLoop::main().performAfterDelay(this, "tabWasDealtWith", 0, [this] { ++tabsDealtWith_; });
  });
}

void KeyCommands::performKeyDownLater(const Event& key) {
  performKeyDownAfterTabs(key, tabsPressed_);
}

void KeyCommands::performKeyDownAfterTabs(const Event& key, std::uint64_t tabsBefore) {
  performLater("keyDown:", [this, key, tabsBefore] {
    if (tabsDealtWith_ < tabsBefore) {
      performKeyDownAfterTabs(key, tabsBefore);
    } else {
      appDelegate_.keyDown(key);
    }
  });
}

void KeyCommands::processHotKeyActivation(const HotKeyActivation& activation) {
  const bool wasInactive = appDelegate_.state() == ActivationStateInactive;
  if (activation.hotKeyID < firstHotKeyIDThatIsNoKeyCode) {
    appDelegate_.keyHandlers().performKeyCode(activation.hotKeyID, wasInactive);
    return;
  }
  if (activation.hotKeyID == HotKeyEscape) {
    if ((appDelegate_.allowableDismissalMethods() & DismissalMethodEscapeKey) != 0) {
      appDelegate_.dismissApplicationWithInvocation(false, true);
    }
    return;
  }
  const std::int32_t code = actionCodeOfHotKey(activation.hotKeyID);
  if (code == QuillboxActionNone) return;
  if (wasInactive) {
    appDelegate_.activateApplicationWithActivationMethod(activation.activationMethod);
  }
  appDelegate_.hostView()->handleAction(
      wasInactive ? QuillboxAction::applicationActiviatingActionWithCode(code)
                  : QuillboxAction::actionWithCode(code));
}

bool KeyCommands::keyDown(const Event& event) {
  if (appDelegate_.userInteractionLevel() > 0) return false;
  if (const std::int32_t code = actionCodeOfKey(event); code != QuillboxActionNone) {
    appDelegate_.hostView()->handleAction(QuillboxAction::actionWithCode(code));
    return true;
  }
  if (event.keyCode == KeyCodeEscape &&
      (appDelegate_.allowableDismissalMethods() & DismissalMethodEscapeKey) != 0) {
    // Unlike Esc as a hot key this does not bring the previous application back. Intended.
    appDelegate_.dismissApplicationWithInvocation(false, false);
    return true;
  }
  appDelegate_.keyHandlers().performKeyCode(event.keyCode, false);
  appDelegate_.hostView()->keyDown(event);
  return true;
}

}  // namespace qb
