#pragma once

#include "Platform/Archiver.h"

namespace qb {

/// Archives are property lists in XML; binary ones are read too.
class DesktopArchiver : public Archiver {
 public:
  PropertyList::Data archivedDataWithRootObject(const PropertyList& root) const override;
  std::optional<PropertyList> unarchiveObjectWithData(
      const PropertyList::Data& data) const override;
};

}  // namespace qb
