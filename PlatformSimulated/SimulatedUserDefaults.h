#pragma once

#include <string>

#include "Platform/UserDefaults.h"

namespace qb {

/// The defaults in memory.
class SimulatedUserDefaults : public UserDefaults {
 public:
  PropertyList objectForKey(const std::string& key) const override {
    return values_.objectForKey(key);
  }
  void setObject(const PropertyList& value, const std::string& key) override {
    ++numberOfWrites_;
    values_.setObject(value, key);
    valuesChanged().signal();
  }

  int numberOfWrites() const { return numberOfWrites_; }

 private:
  PropertyList values_ = PropertyList::dictionary();
  int numberOfWrites_ = 0;
};

}  // namespace qb
