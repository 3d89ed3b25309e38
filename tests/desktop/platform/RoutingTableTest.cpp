#include "PlatformDesktop/session/RoutingTable.h"

#include <gtest/gtest.h>

#include <string>

#include "PlatformDesktop/session/DesktopNetworkReachability.h"

namespace qb {
namespace {

const std::string heading =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";

TEST(RoutingTable, AWayOutOfVersion4HasNoDestination) {
  const std::string way = "eth0\t00000000\t0100000A\t0003\t0\t0\t100\t00000000\t0\t0\t0\n";
  const std::string neighbours = "eth0\t0000000A\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n";
  EXPECT_TRUE(hasDefaultRoute(heading + way));
  EXPECT_TRUE(hasDefaultRoute(heading + neighbours + way));
  EXPECT_FALSE(hasDefaultRoute(heading + neighbours));
  EXPECT_FALSE(hasDefaultRoute(heading));
  EXPECT_FALSE(hasDefaultRoute(""));
  const std::string down = "eth0\t00000000\t0100000A\t0002\t0\t0\t100\t00000000\t0\t0\t0\n";
  const std::string rejecting = "*\t00000000\t00000000\t0201\t0\t0\t100\t00000000\t0\t0\t0\n";
  const std::string half = "tun0\t00000000\t0100000A\t0003\t0\t0\t100\t00000080\t0\t0\t0\n";
  EXPECT_FALSE(hasDefaultRoute(heading + down));
  EXPECT_FALSE(hasDefaultRoute(heading + rejecting));
  EXPECT_FALSE(hasDefaultRoute(heading + half));
  EXPECT_FALSE(hasDefaultRoute(way.substr(0, 30)));
  EXPECT_FALSE(hasDefaultRoute("eth0 00000000 0 zz 0 0 0 00000000"));
}

TEST(RoutingTable, AWayOutOfVersion6HasNoDestinationAndIsNoRefusal) {
  const std::string none(32, '0');
  const std::string hop = "fe800000000000000000000000000001";
  const auto line = [&](const std::string& destination, const char* length, const char* flags,
                        const char* interface) {
    return destination + " " + length + " " + none + " 00 " + hop + " 00000400 00000001 00000000 " +
           flags + " " + interface + "\n";
  };
  const std::string refusal = line(none, "00", "00200200", "lo");
  EXPECT_TRUE(hasDefaultRouteOfVersion6(line(none, "00", "00000003", "eth0")));
  EXPECT_TRUE(hasDefaultRouteOfVersion6(refusal + line(none, "00", "00450003", "wlan0")));
  EXPECT_FALSE(hasDefaultRouteOfVersion6(refusal));
  EXPECT_FALSE(hasDefaultRouteOfVersion6(line(hop, "80", "00000001", "eth0")));
  EXPECT_FALSE(hasDefaultRouteOfVersion6(line(none, "40", "00000003", "eth0")));
  EXPECT_FALSE(hasDefaultRouteOfVersion6(""));
}

TEST(RoutingTable, TheMachinesOwnIsReadAtOnce) {
  const auto flags = DesktopNetworkReachability().flagsForHostName("host");
  EXPECT_EQ(flags.value_or(0) & ~std::uint32_t{NetworkReachabilityFlagsReachable}, 0U);
}

}  // namespace
}  // namespace qb
