#pragma once

namespace qb {

class NetworkReachability;

/// Whether a host that is always there can be reached as the network stands now. Nothing is sent.
bool hasInternetAccess(const NetworkReachability& network);

}  // namespace qb
