#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Keyboard.h"
#include "Quillbox/activation/ActivationCorners.h"
#include "Quillbox/activation/CommandKeyDoubleTap.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class AppDelegate;

/// Looks at the keyboard and the pointer at a steady pace, because nothing tells it when a key is
/// let go, Command is tapped twice or a corner is reached. Needs no access to the desktop's input.
///
/// A tick that can find nothing new is not waited for: while neither keys nor state nor settings
/// change, and the pointer does not matter, the timer rests on its grid.
class InputMonitor {
 public:
  explicit InputMonitor(AppDelegate& appDelegate);
  ~InputMonitor();
  InputMonitor(const InputMonitor&) = delete;
  InputMonitor& operator=(const InputMonitor&) = delete;

  /// Ticks every 0.05 second with the double tap, which needs the fine grain, otherwise every 0.25.
  /// In the default mode only, so that the panel outlives a key let go under an open menu.
  void installInputMonitor();
  void cancelInputMonitor();
  void monitorInput();

  // A key's press and what it asks for lie some passes of the loop apart, and a release right after
  // the press is known at once: a look in between would take Command for let go before the Tab that
  // came first had made its step. So looks are put off while a key is under way.
  void noteKeyUnderWay() { ++keysUnderWay_; }
  void noteKeyArrived() { --keysUnderWay_; }
  /// Does nothing when none has been put off, or another key is under way.
  void makeUpForPutOffLook();

  void resetCommandKeyDoubleTapActivation() { doubleTap_.resetCommandKeyDoubleTapActivation(); }
  /// A Command key that is held now does not count as the fresh press that dismisses.
  void requireCommandKeyToBeLifted() { commandKeyMustBeLiftedBeforeItCanDismissQuillbox_ = true; }
  void noteDismissal() { corners_.noteDismissal(); }

 private:
  void monitorForActivation(const KeyMap& keys);
  void monitorForDismissal(const KeyMap& keys);
  bool monitorKeysForCommandTapKeyDismissal(const KeyMap& keys);
  static bool monitorKeysForOptionKeyDismissal(const KeyMap& keys);
  static bool monitorKeysForCommandKeyLiftedDismissal(const KeyMap& keys);
  bool monitorMouseForCornerDismissal();
  bool monitorMouseForCornerActivation();

  void tick(RunLoopTimer& timer);
  bool pointerMatters() const;
  bool keysMatter() const;
  std::uint64_t changes() const;

  AppDelegate& appDelegate_;
  std::shared_ptr<RunLoopTimer> inputMonitor_;
  TimeInterval inputMonitorFrequency_ = 0;
  int keysUnderWay_ = 0;
  bool lookIsPutOff_ = false;
  CommandKeyDoubleTap doubleTap_;
  ActivationCorners corners_;
  bool commandKeyMustBeLiftedBeforeItCanDismissQuillbox_ = false;
};

}  // namespace qb
