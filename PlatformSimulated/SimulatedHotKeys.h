#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "Platform/HotKeys.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// The hot-key modifiers (`HotKeyModifier`) of event flags.
std::uint32_t hotKeyModifiers(EventFlags flags);

/// The table of hot keys. A combination is a key code with exactly its modifiers.
class SimulatedHotKeys : public HotKeys {
 public:
  SimulatedHotKeys();
  ~SimulatedHotKeys() override;

  void installEventHandler(Handler handler) override { handler_ = std::move(handler); }
  std::unique_ptr<Registration> registerEventHotKey(std::uint16_t keyCode, std::uint32_t modifiers,
                                                    HotKeyID id) override;
  bool isHeldByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers) override {
    return ownedByAnotherProgram_.contains({keyCode, modifiers});
  }

  struct Entry {
    std::uint16_t keyCode = 0;
    std::uint32_t modifiers = 0;
    HotKeyID id;
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  /// What stands, in order of registration.
  std::vector<Entry> registered() const;
  bool hasEventHandler() const { return handler_ != nullptr; }
  bool isRegistered(std::uint16_t keyCode, std::uint32_t modifiers) const;
  /// Another program has this combination: registering it fails and is logged.
  void setOwnedByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers);
  /// The other program has let it go.
  void releaseByAnotherProgram(std::uint16_t keyCode, std::uint32_t modifiers);

  /// For the keyboard: a key-down of these values; true when a hot key took it. While the keyboard
  /// is kept for this process no other program gets a combination of its own.
  bool processKeyDown(std::uint16_t keyCode, EventFlags flags, bool isRepeat, bool keyboardIsKept);

 private:
  class SimulatedRegistration;
  /// Outlived by registrations that are dropped late.
  struct Table {
    std::vector<std::pair<int, Entry>> entries;
  };

  std::shared_ptr<Table> table_;
  int nextKey_ = 0;
  Handler handler_;
  std::set<std::pair<std::uint16_t, std::uint32_t>> ownedByAnotherProgram_;
};

}  // namespace qb
