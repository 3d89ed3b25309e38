#include "Quillbox/activation/utilities/InternetAccess.h"

#include "QuillboxCommon/NetworkReachability/Reachability.h"

namespace qb {

namespace {

constexpr const char* wellKnownHost = "www.debian.org";

}  // namespace

bool hasInternetAccess(const NetworkReachability& network) {
  const auto reachability = Reachability::reachabilityWithHostName(network, wellKnownHost);
  return reachability && (reachability->flags() & NetworkReachabilityFlagsReachable) != 0;
}

}  // namespace qb
