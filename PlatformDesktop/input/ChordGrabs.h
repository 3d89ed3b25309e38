#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "PlatformDesktop/input/Combination.h"
#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/KeyboardMap.h"

namespace qb {

/// Passive grabs of key combinations on the root window. Input thread.
///
/// Each combination is owned twice, for every set of locks. The XInput grab, synchronous, is the
/// one that fires. The core grab behind it is the claim: window managers grab that way, and two
/// clients cannot, so it tells whether another program holds the combination, and keeps it from
/// taking it later. An XInput grab alone would win over the other program in silence.
class ChordGrabs {
 public:
  ChordGrabs(InputConnection& connection, const KeyboardMap& map)
      : connection_(connection), map_(map) {}

  /// Makes these the combinations that are held, before it returns. One that another program holds
  /// is logged, once until it has been granted, and not tried again until `retryRefused`.
  void setWanted(const std::set<Combination>& wanted);
  /// To be called when the keyboard map has changed.
  void setMap(const KeyboardMap& map);
  bool owns(const Combination& combination) const;
  /// Tries again what another program holds.
  void retryRefused();
  /// Found out by trial, unless it is owned.
  bool isHeldByAnotherProgram(const Combination& combination);
  /// Lets go of all.
  void clear() { setWanted({}); }

 private:
  /// What stands at the server: each of the keys with each set of modifiers. No keys while refused
  /// or without a key.
  struct Grab {
    std::vector<std::uint8_t> keys;
    std::vector<std::uint16_t> modifiers;
  };

  bool acquire(const Combination& combination, Grab& grab);
  void noteRefusal(const Combination& combination);
  void sendClaims(std::uint8_t key, const std::vector<std::uint16_t>& modifiers,
                  std::vector<xcb_void_cookie_t>& cookies);
  xcb_input_xi_passive_grab_device_cookie_t sendDeviceGrab(
      std::uint8_t key, const std::vector<std::uint16_t>& modifiers);
  void let(const Grab& grab);
  void waitForServer();

  InputConnection& connection_;
  KeyboardMap map_;
  std::map<Combination, Grab> grabs_;
  std::set<Combination> refused_;
};

}  // namespace qb
