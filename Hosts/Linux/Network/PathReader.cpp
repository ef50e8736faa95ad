#include "Hosts/Linux/Network/PathReader.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <filesystem>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <system_error>

namespace pacelet::Linux {

namespace {

NetlinkRequest routesRequest() {
    rtmsg any{};
    any.rtm_family = AF_UNSPEC;
    NetlinkRequest request{RTM_GETROUTE, NLM_F_DUMP};
    request.record(any);
    return request;
}

NetlinkRequest interfacesRequest() {
    NetlinkRequest request{RTM_GETLINK, NLM_F_DUMP};
    request.record(ifinfomsg{});
    // Without the packet counters, which are most of an interface's record.
    request.attribute(IFLA_EXT_MASK, std::uint32_t{RTEXT_FILTER_SKIP_STATS});
    return request;
}

} // namespace

DeviceSort readDeviceSort(const std::string& sysFolder, const std::string& interfaceName) {
    const std::filesystem::path folder =
        std::filesystem::path{sysFolder} / "class/net" / interfaceName;
    std::error_code error;
    if (std::filesystem::exists(folder / "phy80211", error) ||
        std::filesystem::exists(folder / "wireless", error)) {
        return DeviceSort::wireless;
    }
    ReadBuffer buffer;
    DeviceSort sort = DeviceSort::plain;
    forEachLine(FolderReader{folder}.read("uevent", buffer).value_or(""),
                [&](std::string_view line) {
                    if (line == "DEVTYPE=wlan") {
                        sort = DeviceSort::wireless;
                    } else if (line == "DEVTYPE=wwan") {
                        sort = DeviceSort::modem;
                    }
                });
    return sort;
}

std::optional<Interface> readDefaultInterface(NetlinkSocket& routing) {
    const auto routes = routing.ask(routesRequest());
    const auto interfaces = routing.ask(interfacesRequest());
    if (!routes || !interfaces) {
        return std::nullopt;
    }
    const std::vector<Interface> known = parseInterfaces(*interfaces);
    const Interface* chosen = defaultInterface(parseDefaultRoutes(*routes), known);
    return chosen == nullptr ? std::nullopt : std::optional{*chosen};
}

NetworkPath readPath(NetlinkSocket& routing, const std::string& sysFolder) {
    const std::optional<Interface> interface = readDefaultInterface(routing);
    if (!interface) {
        return {};
    }
    const DeviceSort sort = readDeviceSort(sysFolder, interface->name);
    return {.satisfied = true,
            .usesWiFi = sort == DeviceSort::wireless,
            .usesWiredEthernet = sort == DeviceSort::plain && isEthernet(*interface)};
}

} // namespace pacelet::Linux
