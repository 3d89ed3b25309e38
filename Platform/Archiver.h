#pragma once

#include <optional>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// Values as bytes that another program of this product can read. Any thread.
class Archiver {
 public:
  virtual ~Archiver() = default;
  virtual PropertyList::Data archivedDataWithRootObject(const PropertyList& root) const = 0;
  /// None when the bytes are no archive.
  virtual std::optional<PropertyList> unarchiveObjectWithData(
      const PropertyList::Data& data) const = 0;
};

}  // namespace qb
