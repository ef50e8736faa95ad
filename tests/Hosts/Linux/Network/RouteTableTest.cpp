#include "Hosts/Linux/Network/RouteTable.h"

#include "Hosts/Linux/Network/PathReader.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace pacelet::Linux {
namespace {

constexpr unsigned carrying = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;

rtmsg defaultRoute(int family = AF_INET) {
    rtmsg route{};
    route.rtm_family = static_cast<unsigned char>(family);
    route.rtm_table = RT_TABLE_MAIN;
    route.rtm_type = RTN_UNICAST;
    return route;
}

std::vector<DefaultRoute> parsed(const NetlinkRequest& message) {
    return parseDefaultRoutes(message.bytes(1));
}

/// A route out of interface 4, with the metric 100.
NetlinkRequest routeMessage(const rtmsg& route) {
    NetlinkRequest message{RTM_NEWROUTE, 0};
    message.record(route)
        .attribute(RTA_PRIORITY, std::uint32_t{100})
        .attribute(RTA_OIF, std::uint32_t{4});
    return message;
}

TEST(RouteTable, FindsTheDefaultRoutes) {
    EXPECT_EQ(parsed(routeMessage(defaultRoute())), (std::vector<DefaultRoute>{{false, 100, 4}}));
    EXPECT_EQ(parsed(routeMessage(defaultRoute(AF_INET6))),
              (std::vector<DefaultRoute>{{true, 100, 4}}));
    const auto isLeftOut = [](auto change) {
        rtmsg route = defaultRoute();
        change(route);
        return parsed(routeMessage(route)).empty();
    };
    EXPECT_TRUE(isLeftOut([](rtmsg& route) { route.rtm_dst_len = 24; }));
    EXPECT_TRUE(isLeftOut([](rtmsg& route) { route.rtm_type = RTN_UNREACHABLE; }));
    EXPECT_TRUE(isLeftOut([](rtmsg& route) { route.rtm_table = RT_TABLE_LOCAL; }));
    EXPECT_TRUE(isLeftOut([](rtmsg& route) { route.rtm_flags = RTNH_F_LINKDOWN; }));
    EXPECT_TRUE(isLeftOut([](rtmsg& route) { route.rtm_family = AF_BRIDGE; }));
    // The attribute holds table numbers that the head has no room for.
    EXPECT_TRUE(
        parsed(routeMessage(defaultRoute()).attribute(RTA_TABLE, std::uint32_t{51820})).empty());

    const std::array<rtnexthop, 3> hops{
        {{.rtnh_len = sizeof(rtnexthop), .rtnh_ifindex = 5},
         {.rtnh_len = sizeof(rtnexthop), .rtnh_flags = RTNH_F_DEAD, .rtnh_ifindex = 6},
         {.rtnh_len = sizeof(rtnexthop), .rtnh_ifindex = 7}}};
    NetlinkRequest several{RTM_NEWROUTE, 0};
    several.record(defaultRoute()).attribute(RTA_MULTIPATH, hops);
    EXPECT_EQ(parsed(several), (std::vector<DefaultRoute>{{false, 0, 5}, {false, 0, 7}}));
}

TEST(RouteTable, ReadsInterfaces) {
    NetlinkRequest kind{0, 0};
    kind.attribute(IFLA_INFO_KIND, std::string{"wireguard"});
    const ByteBuffer nested = kind.bytes(0);
    ByteBuffer answer;
    const auto add = [&](unsigned flags, bool isTunnel) {
        NetlinkRequest message{RTM_NEWLINK, 0};
        message.record(ifinfomsg{.ifi_type = ARPHRD_ETHER, .ifi_index = 3, .ifi_flags = flags});
        message.attribute(IFLA_MTU, std::uint32_t{1500});
        message.attribute(IFLA_IFNAME, std::string{"enp3s0"});
        if (isTunnel) {
            message.attribute(IFLA_LINKINFO, Bytes{nested}.subspan(sizeof(nlmsghdr)));
        }
        const ByteBuffer bytes = message.bytes(1);
        answer.insert(answer.end(), bytes.begin(), bytes.end());
    };
    add(carrying, false);
    add(carrying & ~static_cast<unsigned>(IFF_RUNNING), true);
    EXPECT_EQ(parseInterfaces(answer),
              (std::vector<Interface>{{3, "enp3s0", ARPHRD_ETHER, "", true},
                                      {3, "enp3s0", ARPHRD_ETHER, "wireguard", false}}));
}

TEST(RouteTable, ChoosesTheRouteThatTrafficTakes) {
    const std::vector<Interface> interfaces{{.index = 1, .name = "down"},
                                            {.index = 2, .name = "wired", .carriesTraffic = true},
                                            {.index = 3, .name = "radio", .carriesTraffic = true}};
    struct Row {
        std::string_view about;
        std::vector<DefaultRoute> routes;
        std::string_view name;
    };
    const std::vector<Row> rows{
        {"no route", {}, ""},
        {"one that carries nothing", {{false, 0, 1}}, ""},
        {"one of an unknown interface", {{false, 0, 9}}, ""},
        {"the least metric", {{false, 600, 3}, {false, 100, 2}}, "wired"},
        {"the least metric of those that carry", {{false, 0, 1}, {false, 600, 3}}, "radio"},
        {"the first of equals", {{false, 100, 3}, {false, 100, 2}}, "radio"},
        {"IPv4 before IPv6", {{true, 0, 3}, {false, 900, 2}}, "wired"},
        {"IPv6 where IPv4 carries nothing", {{false, 0, 1}, {true, 1024, 3}}, "radio"}};
    for (const Row& row : rows) {
        const Interface* chosen = defaultInterface(row.routes, interfaces);
        EXPECT_EQ(chosen == nullptr ? "" : chosen->name, row.name) << row.about;
    }
    const auto ethernet = [](std::uint16_t hardware, std::string kind) {
        return isEthernet({.hardwareType = hardware, .virtualKind = std::move(kind)});
    };
    EXPECT_TRUE(ethernet(ARPHRD_ETHER, ""));
    EXPECT_TRUE(ethernet(ARPHRD_ETHER, "bridge"));
    EXPECT_FALSE(ethernet(ARPHRD_ETHER, "tun"));
    EXPECT_FALSE(ethernet(ARPHRD_NONE, "wireguard"));
    EXPECT_FALSE(ethernet(ARPHRD_PPP, ""));
}

TEST(PathReader, KnowsWirelessDevicesAndModems) {
    const testing::TemporaryFolder sysFolder;
    sysFolder.write("class/net/old/wireless/status", "0");
    sysFolder.link("class/net/new/phy80211", "/sys/class");
    sysFolder.write("class/net/virtual/uevent", "INTERFACE=virtual\nDEVTYPE=wlan\n");
    sysFolder.write("class/net/stick/uevent", "DEVTYPE=wwan");
    sysFolder.write("class/net/card/uevent", "INTERFACE=card\nIFINDEX=2\n");
    const auto sortOf = [&](const std::string& name) {
        return readDeviceSort(sysFolder.path(), name);
    };
    EXPECT_EQ(sortOf("old"), DeviceSort::wireless);
    EXPECT_EQ(sortOf("new"), DeviceSort::wireless);
    EXPECT_EQ(sortOf("virtual"), DeviceSort::wireless);
    EXPECT_EQ(sortOf("stick"), DeviceSort::modem);
    EXPECT_EQ(sortOf("card"), DeviceSort::plain);
    EXPECT_EQ(sortOf("gone"), DeviceSort::plain);
}

} // namespace
} // namespace pacelet::Linux
