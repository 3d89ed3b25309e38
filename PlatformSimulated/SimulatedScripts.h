#pragma once

#include <string>
#include <vector>

#include "Platform/Scripts.h"

namespace qb {

/// Writes down what it is given; every script succeeds.
class SimulatedScripts : public Scripts {
 public:
  bool executeAndReturnError(const std::string& source) override {
    executed_.push_back(source);
    return true;
  }
  const std::vector<std::string>& executed() const { return executed_; }

 private:
  std::vector<std::string> executed_;
};

}  // namespace qb
