#pragma once

#include <string>

namespace qb {

enum class ReplaceAnswer {
  /// The question could not be put: nobody has agreed to anything.
  None,
  KeepBoth,
  Stop,
  Replace,
};

/// Asks what to do with an item whose name is taken where it is to go.
ReplaceAnswer askWhetherToReplace(const std::string& itemName);

}  // namespace qb
