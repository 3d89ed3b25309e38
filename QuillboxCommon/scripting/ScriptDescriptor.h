#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qb {

/// A result of a script as its caller gets it. A list has no string value; a text has no items.
struct ScriptDescriptor {
  std::optional<std::string> stringValue;
  std::vector<ScriptDescriptor> items;

  std::size_t numberOfItems() const { return items.size(); }
  /// Counts from 1, up to `numberOfItems`.
  const ScriptDescriptor& descriptorAtIndex(std::size_t index) const { return items.at(index - 1); }

  friend bool operator==(const ScriptDescriptor&, const ScriptDescriptor&) = default;
};

}  // namespace qb
