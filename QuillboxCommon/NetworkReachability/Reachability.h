#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuillboxCommon/NetworkReachability/NetworkReachability.h"

namespace qb {

/// Whether one host can be reached. A value; the network must outlive it.
class Reachability {
 public:
  /// None for an empty name.
  static std::optional<Reachability> reachabilityWithHostName(const NetworkReachability& network,
                                                              std::string hostName);
  /// `NetworkReachabilityFlags` as they are now; 0 when nothing can be learned.
  std::uint32_t flags() const;

 private:
  Reachability(const NetworkReachability& network, std::string hostName);

  const NetworkReachability* network_;
  std::string hostName_;
};

}  // namespace qb
