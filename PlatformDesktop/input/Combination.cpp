#include "PlatformDesktop/input/Combination.h"

#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb {

std::string nameOf(const Combination& combination) {
  std::string name;
  if (combination.flags & EventFlagControl) name += "Ctrl+";
  if (combination.flags & EventFlagOption) name += "Alt+";
  if (combination.flags & EventFlagCommand) name += "Super+";
  if (combination.flags & EventFlagShift) name += "Shift+";
  const auto key = KeyCodeTable::nameOf(combination.keyCode);
  return key.empty() ? name + "key " + std::to_string(combination.keyCode) : name.append(key);
}

}  // namespace qb
