#include "Hosts/Linux/Network/LocalNetworks.h"

#include "Hosts/Linux/Network/InterfaceKind.h"

#include <algorithm>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <optional>
#include <sys/socket.h>

namespace pacelet::Linux {

namespace {

std::optional<in6_addr> addressIn(const sockaddr* record) {
    if (record != nullptr && record->sa_family == AF_INET) {
        sockaddr_in address{};
        std::memcpy(&address, record, sizeof address);
        return mappedAddress(address.sin_addr);
    }
    if (record != nullptr && record->sa_family == AF_INET6) {
        sockaddr_in6 address{};
        std::memcpy(&address, record, sizeof address);
        return address.sin6_addr;
    }
    return std::nullopt;
}

} // namespace

in6_addr mappedAddress(const in_addr& address) {
    in6_addr mapped{};
    mapped.s6_addr[10] = mapped.s6_addr[11] = 0xFF;
    std::memcpy(&mapped.s6_addr[12], &address, sizeof address);
    return mapped;
}

void LocalNetworks::add(const in6_addr& address, const in6_addr& mask) {
    Network network{};
    std::ranges::copy(mask.s6_addr, network.mask.begin());
    std::ranges::transform(address.s6_addr, network.mask, network.begin.begin(),
                           [](auto octet, auto kept) { return octet & kept; });
    networks_.push_back(network);
}

bool LocalNetworks::contains(const in6_addr& address) const {
    return std::ranges::any_of(networks_, [&](const Network& network) {
        for (std::size_t at = 0; at < network.mask.size(); ++at) {
            if ((address.s6_addr[at] & network.mask[at]) != network.begin[at]) {
                return false;
            }
        }
        return true;
    });
}

LocalNetworks readLocalNetworks(const std::string& sysFolder) {
    LocalNetworks networks;
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) {
        return networks;
    }
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner{list, &::freeifaddrs};
    for (const ifaddrs* each = list; each != nullptr; each = each->ifa_next) {
        const auto address = addressIn(each->ifa_addr);
        auto mask = addressIn(each->ifa_netmask);
        if (!address || !mask || IN6_IS_ADDR_LINKLOCAL(&*address) ||
            interfaceKind(sysFolder, each->ifa_name) != InterfaceKind::local) {
            continue;
        }
        if (IN6_IS_ADDR_V4MAPPED(&*address)) {
            std::fill_n(std::begin(mask->s6_addr), 12, std::uint8_t{0xFF});
        }
        networks.add(*address, *mask);
    }
    return networks;
}

} // namespace pacelet::Linux
