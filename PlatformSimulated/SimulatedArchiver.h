#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Platform/Archiver.h"

namespace qb {

/// Archives are tickets for values that are kept here.
class SimulatedArchiver : public Archiver {
 public:
  PropertyList::Data archivedDataWithRootObject(const PropertyList& root) const override {
    archived_.push_back(root);
    return ticket(archived_.size() - 1);
  }
  std::optional<PropertyList> unarchiveObjectWithData(
      const PropertyList::Data& data) const override {
    for (std::size_t i = 0; i < archived_.size(); ++i) {
      if (ticket(i) == data) return archived_[i];
    }
    return std::nullopt;
  }

 private:
  static PropertyList::Data ticket(std::size_t number) {
    const std::string text = "archive " + std::to_string(number);
    return {text.begin(), text.end()};
  }
  mutable std::vector<PropertyList> archived_;
};

}  // namespace qb
