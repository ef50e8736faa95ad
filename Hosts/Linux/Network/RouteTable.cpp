#include "Hosts/Linux/Network/RouteTable.h"

#include <algorithm>
#include <array>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/rtnetlink.h>
#include <string_view>
#include <sys/socket.h>

namespace pacelet::Linux {

namespace {

/// What a default route's attributes say.
struct RouteAttributes {
    std::uint32_t table = RT_TABLE_MAIN;
    std::uint32_t metric = 0;
    std::vector<std::uint32_t> interfaceIndexes{};
};

bool isDead(unsigned flags) {
    return (flags & (RTNH_F_DEAD | RTNH_F_LINKDOWN)) != 0;
}

/// The next hops of a route with several of them.
void parseNextHops(Bytes bytes, std::vector<std::uint32_t>& interfaceIndexes) {
    while (const auto hop = readRecord<rtnexthop>(bytes)) {
        if (hop->rtnh_len < sizeof(rtnexthop)) {
            return;
        }
        if (!isDead(hop->rtnh_flags)) {
            interfaceIndexes.push_back(static_cast<std::uint32_t>(hop->rtnh_ifindex));
        }
        bytes = behindHead(bytes, hop->rtnh_len);
    }
}

RouteAttributes parseAttributes(const rtmsg& route, Bytes attributes) {
    RouteAttributes result;
    result.table = route.rtm_table;
    forEachAttribute(attributes, [&](int type, Bytes value) {
        const auto number = readRecord<std::uint32_t>(value);
        if (type == RTA_MULTIPATH) {
            parseNextHops(value, result.interfaceIndexes);
        } else if (number && type == RTA_TABLE) {
            result.table = *number;
        } else if (number && type == RTA_PRIORITY) {
            result.metric = *number;
        } else if (number && type == RTA_OIF && !isDead(route.rtm_flags)) {
            result.interfaceIndexes.push_back(*number);
        }
    });
    return result;
}

void parseRoute(Bytes payload, std::vector<DefaultRoute>& routes) {
    const auto route = readRecord<rtmsg>(payload);
    if (!route || route->rtm_dst_len != 0 || route->rtm_type != RTN_UNICAST ||
        (route->rtm_family != AF_INET && route->rtm_family != AF_INET6)) {
        return;
    }
    const RouteAttributes attributes = parseAttributes(*route, behindHead(payload, sizeof(rtmsg)));
    if (attributes.table != RT_TABLE_MAIN) {
        return;
    }
    for (const std::uint32_t index : attributes.interfaceIndexes) {
        routes.push_back({route->rtm_family == AF_INET6, attributes.metric, index});
    }
}

void parseInterface(Bytes payload, std::vector<Interface>& interfaces) {
    constexpr unsigned carrying = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;
    const auto head = readRecord<ifinfomsg>(payload);
    if (!head) {
        return;
    }
    Interface& interface = interfaces.emplace_back();
    interface.index = static_cast<std::uint32_t>(head->ifi_index);
    interface.hardwareType = head->ifi_type;
    interface.carriesTraffic = (head->ifi_flags & carrying) == carrying;
    forEachAttribute(behindHead(payload, sizeof(ifinfomsg)), [&](int type, Bytes value) {
        if (type == IFLA_IFNAME) {
            interface.name = readText(value);
        } else if (type == IFLA_LINKINFO) {
            forEachAttribute(value, [&](int infoType, Bytes info) {
                if (infoType == IFLA_INFO_KIND) {
                    interface.virtualKind = readText(info);
                }
            });
        }
    });
}

} // namespace

std::vector<DefaultRoute> parseDefaultRoutes(Bytes answer) {
    std::vector<DefaultRoute> routes;
    forEachMessage(answer, [&](const nlmsghdr& header, Bytes payload) {
        if (header.nlmsg_type == RTM_NEWROUTE) {
            parseRoute(payload, routes);
        }
    });
    return routes;
}

std::vector<Interface> parseInterfaces(Bytes answer) {
    std::vector<Interface> interfaces;
    forEachMessage(answer, [&](const nlmsghdr& header, Bytes payload) {
        if (header.nlmsg_type == RTM_NEWLINK) {
            parseInterface(payload, interfaces);
        }
    });
    return interfaces;
}

const Interface* defaultInterface(const std::vector<DefaultRoute>& routes,
                                  const std::vector<Interface>& interfaces) {
    const DefaultRoute* best = nullptr;
    const Interface* chosen = nullptr;
    for (const DefaultRoute& route : routes) {
        const auto interface =
            std::ranges::find(interfaces, route.interfaceIndex, &Interface::index);
        if (interface == interfaces.end() || !interface->carriesTraffic) {
            continue;
        }
        const bool isBetter = best == nullptr || (best->isIPv6 && !route.isIPv6) ||
                              (best->isIPv6 == route.isIPv6 && route.metric < best->metric);
        if (isBetter) {
            best = &route;
            chosen = &*interface;
        }
    }
    return chosen;
}

bool isEthernet(const Interface& interface) {
    constexpr std::array<std::string_view, 8> overEthernet{"",        "bond", "bridge", "ipvlan",
                                                           "macvlan", "team", "veth",   "vlan"};
    return interface.hardwareType == ARPHRD_ETHER &&
           std::ranges::find(overEthernet, interface.virtualKind) != overEthernet.end();
}

} // namespace pacelet::Linux
