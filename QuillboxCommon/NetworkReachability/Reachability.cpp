#include "QuillboxCommon/NetworkReachability/Reachability.h"

#include <utility>

namespace qb {

std::optional<Reachability> Reachability::reachabilityWithHostName(
    const NetworkReachability& network, std::string hostName) {
  if (hostName.empty()) return std::nullopt;
  return Reachability(network, std::move(hostName));
}

Reachability::Reachability(const NetworkReachability& network, std::string hostName)
    : network_(&network), hostName_(std::move(hostName)) {}

std::uint32_t Reachability::flags() const {
  return network_->flagsForHostName(hostName_).value_or(0);
}

}  // namespace qb
