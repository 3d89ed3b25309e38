#include "PlatformDesktop/session/DesktopNetworkReachability.h"

#include "PlatformDesktop/processes/DesktopFolders.h"
#include "PlatformDesktop/session/RoutingTable.h"

namespace qb {

std::optional<std::uint32_t> DesktopNetworkReachability::flagsForHostName(
    const std::string& /*hostName*/) const {
  const std::string version4 = contentsOfFile("/proc/net/route");
  const std::string version6 = contentsOfFile("/proc/net/ipv6_route");
  if (version4.empty() && version6.empty()) return std::nullopt;
  const bool isReachable = hasDefaultRoute(version4) || hasDefaultRouteOfVersion6(version6);
  return isReachable ? std::uint32_t{NetworkReachabilityFlagsReachable} : 0;
}

}  // namespace qb
