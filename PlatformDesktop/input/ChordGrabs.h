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

  /// Makes these the combinations that are held. Those which another program holds are logged when
  /// they become refused, and tried again with each call.
  void setWanted(const std::set<Combination>& wanted);
  /// To be called when the keyboard map has changed.
  void setMap(const KeyboardMap& map);
  bool owns(const Combination& combination) const;
  /// True while another program holds something that is wanted.
  bool hasRefused() const;
  /// Tries those again.
  void retryRefused();
  /// Lets go of all.
  void clear() { setWanted({}); }

 private:
  /// What stands at the server; `key` is 0 while refused or without a key.
  struct Grab {
    std::uint8_t key = 0;
    std::vector<std::uint16_t> modifiers;
  };

  bool acquire(const Combination& combination, Grab& grab);
  bool claimCore(std::uint8_t key, const std::vector<std::uint16_t>& modifiers);
  bool grabDevice(std::uint8_t key, const std::vector<std::uint16_t>& modifiers);
  void let(std::uint8_t key, const std::vector<std::uint16_t>& modifiers);

  InputConnection& connection_;
  KeyboardMap map_;
  std::map<Combination, Grab> grabs_;
};

}  // namespace qb
