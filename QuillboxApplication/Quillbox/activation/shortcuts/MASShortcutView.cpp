#include "Quillbox/activation/shortcuts/MASShortcutView.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "Platform/KeyCodes.h"
#include "Platform/Keyboard.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "Quillbox/activation/shortcuts/OwnShortcuts.h"

namespace qb {

namespace {

constexpr EventFlags modifierFlags =
    EventFlagShift | EventFlagControl | EventFlagOption | EventFlagCommand;
/// Those from here on stand for keys without a place of their own, all of them for the same.
constexpr std::uint16_t firstUnknownKeyCode = 128;
constexpr std::uint16_t keyCodeForwardDelete = 117;
/// Held modifiers are shown as they are pressed.
constexpr TimeInterval modifiersInterval = 0.05;

constexpr MASShortcut keepingShortcut{KeyCodeEscape, 0};
constexpr MASShortcut clearingShortcuts[] = {{KeyCodeDelete, 0}, {keyCodeForwardDelete, 0}};
/// No hot keys, and of use in every dialog.
constexpr MASShortcut dialogShortcuts[] = {
    {KeyCodeReturn, 0}, {KeyCodeEnter, 0}, {KeyCodeTab, 0}, {KeyCodeTab, EventFlagShift}};

template <std::size_t count>
bool isOneOf(const MASShortcut (&shortcuts)[count], const MASShortcut& shortcut) {
  return std::find(std::begin(shortcuts), std::end(shortcuts), shortcut) != std::end(shortcuts);
}

}  // namespace

struct MASShortcutView::Listening {
  Listening(Subscription claim, std::shared_ptr<RunLoopTimer> looks, EventFlags flags)
      : hotKeys(std::move(claim)), timer(std::move(looks)), heldFlags(flags) {}
  ~Listening() { timer->invalidate(); }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;

  Subscription hotKeys;
  std::shared_ptr<RunLoopTimer> timer;
  EventFlags heldFlags;
};

MASShortcutView::MASShortcutView(Size size, Quillbox& facade)
    : DialogKeyRecorder(size), facade_(facade) {
  storageChanges_ = facade_.itemHotKeys().storage().addObserver([this](std::string_view) {
    readShortcutValue();
    changed();
  });
}

MASShortcutView::~MASShortcutView() = default;

void MASShortcutView::setAssociatedUserDefaultsKey(const std::string& key) {
  associatedUserDefaultsKey_ = key;
  readShortcutValue();
  changed();
}

void MASShortcutView::readShortcutValue() {
  shortcutValue_ = facade_.itemHotKeys().storage().shortcutForKey(associatedUserDefaultsKey_);
}

DialogKeyRecorder::Look MASShortcutView::look() const {
  Look look;
  look.isListening = isListening();
  look.warns = !warning_.empty();
  look.hint = warning_;
  look.canClear = shortcutValue_.has_value();
  if (listening_) {
    look.keyCaps = MASShortcut::modifierKeyCaps(listening_->heldFlags);
    look.text = "Press the keys";
    if (!look.warns) {
      look.hint = shortcutValue_ ? "Esc keeps the hot key, Backspace clears it" : "Esc cancels";
    }
  } else if (shortcutValue_) {
    look.keyCaps = shortcutValue_->keyCaps(facade_.platform().keyboard());
    if (!look.warns) look.hint = "Click to change";
  } else {
    look.text = "Click to set a hot key";
  }
  return look;
}

void MASShortcutView::listen() {
  if (listening_) return;
  auto timer = RunLoop::main().scheduleTimer(
      modifiersInterval, true, [this](RunLoopTimer& each) { lookAtModifiers(each); },
      RunLoopModes::common());
  listening_ = std::make_unique<Listening>(
      facade_.itemHotKeys().handler().noteRecorderListens(), std::move(timer),
      facade_.platform().keyboard().modifierFlags() & modifierFlags);
  warning_.clear();
  changed();
}

void MASShortcutView::stopListening() {
  if (!listening_) return;
  listening_.reset();
  warning_.clear();
  changed();
}

void MASShortcutView::lookAtModifiers(RunLoopTimer& timer) {
  Keyboard& keyboard = facade_.platform().keyboard();
  const EventFlags flags = keyboard.modifierFlags() & modifierFlags;
  timer.restUntilSignalled({&keyboard.keysChanged()});
  if (flags == listening_->heldFlags) return;
  listening_->heldFlags = flags;
  changed();
}

void MASShortcutView::clear() {
  const bool cleared =
      facade_.itemHotKeys().storage().removeObjectForKey(associatedUserDefaultsKey_);
  stopListening();
  if (!cleared) setWarning("The hot key could not be cleared.");
}

bool MASShortcutView::keyDown(std::uint16_t keyCode, EventFlags flags) {
  const MASShortcut shortcut(keyCode, flags & modifierFlags);
  if (isOneOf(dialogShortcuts, shortcut)) {
    stopListening();
    return false;
  }
  if (shortcut == keepingShortcut) {
    stopListening();
  } else if (isOneOf(clearingShortcuts, shortcut)) {
    clear();
  } else if (const std::string reason = reasonAgainst(shortcut); reason.empty()) {
    record(shortcut);
  } else {
    refuse(reason);
  }
  return true;
}

std::string MASShortcutView::reasonAgainst(const MASShortcut& shortcut) const {
  if (shortcut == shortcutValue_) return {};
  if (shortcut.keyCode() >= firstUnknownKeyCode) return "This key cannot be used.";
  if (!shortcut.isValid()) return "Hold Ctrl or Super with it.";
  std::string reason;
  Platform& platform = facade_.platform();
  if (shortcut.isTakenError(platform.hotKeys(), ownShortcuts(facade_.settings()), &reason)) {
    return reason;
  }
  // A registered one has been told of already; others have a hot key that could not be had.
  return isStoredForAnother(shortcut) ? "That Hot Key is already in use." : "";
}

bool MASShortcutView::isStoredForAnother(const MASShortcut& shortcut) const {
  const MASShortcutStorage& storage = facade_.itemHotKeys().storage();
  const PropertyList stored = storage.storage();
  const auto& entries = stored.dictionaryValue();
  return std::any_of(entries.begin(), entries.end(), [&](const PropertyList::Entry& entry) {
    return entry.key != associatedUserDefaultsKey_ &&
           MASShortcut::shortcutWithData(entry.value, facade_.platform().archiver()) == shortcut;
  });
}

void MASShortcutView::record(const MASShortcut& shortcut) {
  const bool stored = shortcut == shortcutValue_ || facade_.itemHotKeys().storage().setShortcut(
                                                        shortcut, associatedUserDefaultsKey_);
  stopListening();
  if (!stored) setWarning("The hot key could not be saved.");
}

void MASShortcutView::refuse(const std::string& reason) {
  facade_.platform().dialogs().beep();
  setWarning(reason);
}

void MASShortcutView::setWarning(const std::string& warning) {
  warning_ = warning;
  changed();
}

}  // namespace qb
