#pragma once

#include <string_view>

namespace qb {

/// Whether a table of the kernel ("/proc/net/route", "/proc/net/ipv6_route") has a way out to hosts
/// that it does not name. A line that is damaged does not count.
bool hasDefaultRoute(std::string_view table);
bool hasDefaultRouteOfVersion6(std::string_view table);

}  // namespace qb
