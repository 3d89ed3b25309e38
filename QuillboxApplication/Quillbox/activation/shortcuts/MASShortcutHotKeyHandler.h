#pragma once

#include <memory>

#include "Platform/HotKeys.h"
#include "Quillbox/activation/shortcuts/MASRegisteredHotKeys.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

class Quillbox;

/// The first to see every press of a hot key: does those of items. Main thread.
class MASShortcutHotKeyHandler {
 public:
  MASShortcutHotKeyHandler(Quillbox& facade, const MASRegisteredHotKeys& registered)
      : facade_(facade), registered_(registered) {}

  /// Calls the handler of an item's hot key or, while they are disabled, tells the user that the
  /// combination is taken. Presses of other hot keys, and repeats of a held key, do nothing.
  void handle(const HotKeyPress& press);

  /// Hot keys of items are disabled for as long as the answer lives. Nests.
  [[nodiscard]] Subscription disableMASShortcutHotKeys() { return counted(disablings_); }
  bool areMASShortcutHotKeysEnabled() const { return *disablings_ == 0; }
  /// A recorder listens for as long as the answer lives: it gets the other hot keys' presses.
  [[nodiscard]] Subscription noteRecorderListens() { return counted(listeningRecorders_); }
  bool recorderListens() const { return *listeningRecorders_ > 0; }

 private:
  /// Shared, since a bracket may outlive the handler.
  using Count = std::shared_ptr<int>;
  static Subscription counted(const Count& count);

  Quillbox& facade_;
  const MASRegisteredHotKeys& registered_;
  Count disablings_ = std::make_shared<int>(0);
  Count listeningRecorders_ = std::make_shared<int>(0);
};

}  // namespace qb
