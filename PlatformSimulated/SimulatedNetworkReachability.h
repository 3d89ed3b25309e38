#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/NetworkReachability/NetworkReachability.h"

namespace qb {

/// A network that is up, unless a test says otherwise.
class SimulatedNetworkReachability : public NetworkReachability {
 public:
  std::optional<std::uint32_t> flagsForHostName(const std::string& hostName) const override {
    hostNames_.push_back(hostName);
    return flags_;
  }

  void setFlags(std::optional<std::uint32_t> flags) { flags_ = flags; }
  /// The hosts that were asked about.
  const std::vector<std::string>& hostNames() const { return hostNames_; }

 private:
  std::optional<std::uint32_t> flags_ = NetworkReachabilityFlagsReachable;
  mutable std::vector<std::string> hostNames_;
};

}  // namespace qb
