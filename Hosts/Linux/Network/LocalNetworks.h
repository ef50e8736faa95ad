#pragma once

#include <array>
#include <cstdint>
#include <netinet/in.h>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// The networks between this machine and the containers and virtual machines that run on it.
class LocalNetworks {
public:
    /// An address of ours in such a network. Addresses of IPv4 stand as IPv6 maps them.
    void add(const in6_addr& address, const in6_addr& mask);

    bool contains(const in6_addr& address) const;

private:
    using Octets = std::array<std::uint8_t, 16>;
    struct Network {
        Octets begin;
        Octets mask;
    };
    std::vector<Network> networks_;
};

/// Those of the calling thread's network. Addresses that are good for one link alone are left out:
/// they look alike on every link.
LocalNetworks readLocalNetworks(const std::string& sysFolder);

/// `::ffff:a.b.c.d`
in6_addr mappedAddress(const in_addr& address);

} // namespace pacelet::Linux
