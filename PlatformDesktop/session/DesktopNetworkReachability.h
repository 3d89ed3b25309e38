#pragma once

#include "QuillboxCommon/NetworkReachability/NetworkReachability.h"

namespace qb {

/// A host of the public network counts as reachable while the kernel has a way out for it, whoever
/// has set that up. No state; any thread.
class DesktopNetworkReachability : public NetworkReachability {
 public:
  std::optional<std::uint32_t> flagsForHostName(const std::string& hostName) const override;
};

}  // namespace qb
