#pragma once

#include <string>

#include "Platform/Processes.h"

namespace qb {

/// One process of the Active Applications row.
struct Process {
  ProcessSerialNumber processNumber;
  /// Seen in the sweep under way.
  bool running = false;
  std::string name;
  /// Empty when it has no bundle; it gets no item then.
  std::string bundlePath;
  std::string bundleIdentifier;
  /// The identity of its items, so that of several processes of one name the selection finds the
  /// same one among items made anew. Empty before the first.
  std::string itemUniqueID;
};

}  // namespace qb
