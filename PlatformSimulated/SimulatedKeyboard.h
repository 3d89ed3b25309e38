#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Platform/KeyCodes.h"
#include "Platform/Keyboard.h"
#include "PlatformSimulated/SimulatedDialogs.h"
#include "PlatformSimulated/SimulatedDisplays.h"
#include "PlatformSimulated/SimulatedEventTap.h"
#include "PlatformSimulated/SimulatedHotKeys.h"
#include "PlatformSimulated/SimulatedProcesses.h"
#include "PlatformSimulated/SimulatedWindowServer.h"

namespace qb {

/// A keyboard with hands on it.
///
/// A key changes the state, then goes to the observers of key-downs, the tap, the hot keys, a
/// dialog that keeps the keyboard and the front application, until one of them takes it. When this
/// process is in front, its key window gets it; otherwise the program records it. A key-up whose
/// key-down a hot key or a dialog took goes nowhere. Modifier keys change state and flags only:
/// they are no key-downs and nobody receives them.
class SimulatedKeyboard : public Keyboard {
 public:
  struct Parts {
    SimulatedDialogs& dialogs;
    SimulatedDisplays& displays;
    SimulatedEventTap& eventTap;
    SimulatedHotKeys& hotKeys;
    SimulatedProcesses& processes;
    SimulatedWindowServer& windowServer;
  };
  explicit SimulatedKeyboard(Parts parts) : parts_(parts) {}

  KeyMap getKeys() const override { return keys_; }
  EventFlags modifierFlags() const override;
  /// Of a US layout, but for what `setLegend` says.
  std::string legendOfKey(std::uint16_t keyCode) const override;
  ChangeNotice& keysChanged() override { return keysChanged_; }

  /// The user's layout has this on the key.
  void setLegend(std::uint16_t keyCode, std::string legend) {
    legends_[keyCode] = std::move(legend);
  }

  void press(std::uint16_t keyCode);
  void release(std::uint16_t keyCode);
  /// One auto-repeat of a key that is held.
  void repeat(std::uint16_t keyCode);
  /// Presses the modifier keys in order, the key, and lets all go in reverse order.
  void type(std::uint16_t keyCode, std::initializer_list<std::uint16_t> modifiers = {});

  /// One key that reached another program.
  struct Received {
    ProcessSerialNumber process;
    EventType type = EventTypeKeyDown;
    std::uint16_t keyCode = 0;
    EventFlags flags = 0;
    /// What it types, as UTF-8; empty for keys that were pressed by hand.
    std::string characters = {};
    friend bool operator==(const Received&, const Received&) = default;
  };
  const std::vector<Received>& frontApplicationReceived() const {
    return frontApplicationReceived_;
  }
  /// All that has been typed into the front applications by programs, one after the other.
  std::string typedCharacters() const;
  /// A key that a program sends on its user's behalf: it goes straight to who has the keyboard,
  /// past the tap and the hot keys, whatever the user is holding down.
  void receiveKey(std::uint16_t keyCode, EventFlags flags, const std::string& characters = {});
  /// UTF-8 text, by the keys of the layout; a character that has none comes with the code 0xff.
  void receiveText(const std::string& text, EventFlags flags);
  void clearReceived() { frontApplicationReceived_.clear(); }

 private:
  void send(EventType type, std::uint16_t keyCode, bool isRepeat);
  void sendToFrontProcess(const TappedEvent& event, const std::string& characters = {});

  Parts parts_;
  KeyMap keys_;
  bool capsLock_ = false;
  ChangeNotice keysChanged_;
  /// Held keys whose press went no further than to a hot key or a dialog.
  std::set<std::uint16_t> taken_;
  std::map<std::uint16_t, std::string> legends_;
  std::vector<Received> frontApplicationReceived_;
};

}  // namespace qb
