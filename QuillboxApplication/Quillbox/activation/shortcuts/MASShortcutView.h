#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Dialogs.h"
#include "Quillbox/activation/shortcuts/MASShortcut.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

class Quillbox;

/// The recorder: shows the hot key that is stored for an identifier, and stores the one that is
/// pressed while it listens. What cannot be a hot key is refused with a beep and a word, and it
/// goes on listening. Esc keeps things as they are, Backspace clears. Main thread.
class MASShortcutView : public DialogKeyRecorder {
 public:
  /// The facade must outlive it.
  MASShortcutView(Size size, Quillbox& facade);
  ~MASShortcutView() override;
  MASShortcutView(const MASShortcutView&) = delete;
  MASShortcutView& operator=(const MASShortcutView&) = delete;

  /// Binds it to what is stored for the identifier; an empty one unbinds.
  void setAssociatedUserDefaultsKey(const std::string& key);
  const std::string& associatedUserDefaultsKey() const { return associatedUserDefaultsKey_; }
  const std::optional<MASShortcut>& shortcutValue() const { return shortcutValue_; }

  Look look() const override;
  bool isListening() const override { return listening_ != nullptr; }
  void listen() override;
  void stopListening() override;
  void clear() override;
  bool keyDown(std::uint16_t keyCode, EventFlags flags) override;

 private:
  /// What stands while it listens.
  struct Listening;

  void readShortcutValue();
  /// Why it cannot be taken; empty when it can.
  std::string reasonAgainst(const MASShortcut& shortcut) const;
  bool isStoredForAnother(const MASShortcut& shortcut) const;
  void record(const MASShortcut& shortcut);
  void refuse(const std::string& reason);
  void setWarning(const std::string& warning);
  void lookAtModifiers(RunLoopTimer& timer);

  Quillbox& facade_;
  std::string associatedUserDefaultsKey_;
  std::optional<MASShortcut> shortcutValue_;
  /// Empty for none.
  std::string warning_;
  std::unique_ptr<Listening> listening_;
  Subscription storageChanges_;
};

}  // namespace qb
