#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace qb {

/// How a host would be reached, as bits.
enum NetworkReachabilityFlags : std::uint32_t {
  NetworkReachabilityFlagsReachable = 2,
};

/// What the machine knows of the network. Answers from what is known: nothing is sent, nobody is
/// waited for. Main thread.
class NetworkReachability {
 public:
  virtual ~NetworkReachability() = default;
  /// `NetworkReachabilityFlags` for a host of the public network; none when nothing can be learned.
  virtual std::optional<std::uint32_t> flagsForHostName(const std::string& hostName) const = 0;
};

}  // namespace qb
