#pragma once

#include "Hosts/Linux/Network/NetlinkMessage.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// One way out of the machine: a default route of the main table.
struct DefaultRoute {
    bool isIPv6 = false;
    std::uint32_t metric = 0;
    std::uint32_t interfaceIndex = 0;

    bool operator==(const DefaultRoute&) const = default;
};

/// What the kernel says of a network interface.
struct Interface {
    std::uint32_t index = 0;
    std::string name;
    std::uint16_t hardwareType = 0; ///< one of ARPHRD_…
    std::string virtualKind;        ///< driver of a virtual one, such as "tun"; else empty
    bool carriesTraffic = false;    ///< switched on, and its other end is there

    bool operator==(const Interface&) const = default;
};

/// Reads the answer to a dump of routes, in its order. Dead next hops are left out.
std::vector<DefaultRoute> parseDefaultRoutes(Bytes answer);

/// Reads the answer to a dump of interfaces, in its order.
std::vector<Interface> parseInterfaces(Bytes answer);

/// The interface that traffic to the internet takes: that of the default route of the lowest metric
/// whose interface carries traffic, IPv4 before IPv6, the first on a tie. Null without one.
const Interface* defaultInterface(const std::vector<DefaultRoute>& routes,
                                  const std::vector<Interface>& interfaces);

/// Whether the interface is Ethernet, or one that the kernel lays straight over Ethernet, and no
/// tunnel. Wireless interfaces and modems look like Ethernet here.
bool isEthernet(const Interface& interface);

} // namespace pacelet::Linux
