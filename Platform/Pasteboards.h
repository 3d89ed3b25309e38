#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// A place where programs leave data for each other, by type. Nobody but this user can read it.
/// Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  /// Drops all content. Answers the new change count.
  virtual std::int64_t clearContents() = 0;
  /// False when it cannot be kept. Data of another type stays.
  virtual bool setData(const PropertyList::Data& data, const std::string& type) = 0;
  /// None when there is nothing of that type; an empty value is something.
  virtual std::optional<PropertyList::Data> dataForType(const std::string& type) const = 0;
  /// Grows with every `clearContents`, whichever program calls it. It may begin anew with the
  /// session. 0 for a pasteboard that nobody has ever cleared.
  virtual std::int64_t changeCount() const = 0;
};

/// The named pasteboards. Main thread.
class Pasteboards {
 public:
  virtual ~Pasteboards() = default;
  /// The one of that name, which every program of this user shares; made on first use. The name
  /// must not be empty.
  virtual std::shared_ptr<Pasteboard> pasteboardWithName(const std::string& name) = 0;
};

}  // namespace qb
