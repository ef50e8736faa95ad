#pragma once

#include "Hosts/Linux/Network/InterfaceKind.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// What has gone in and out over the machine's own network devices since it started, whoever it
/// was for.
struct LinkCounters {
    std::uint64_t bytesIn = 0;
    std::uint64_t packetsIn = 0;
    std::uint64_t bytesOut = 0;
    std::uint64_t packetsOut = 0;

    bool operator==(const LinkCounters&) const = default;
};

/// Adds up the interfaces of `/proc/net/dev` that are devices. Bridges and tunnels carry over them
/// what counts there already; only where there is no device at all, as in a container, they count,
/// but local ones never.
LinkCounters
parseLinkCounters(std::string_view text,
                  const std::function<InterfaceKind(const std::string& interface)>& kindOf);

/// The network as the calling thread sees it.
LinkCounters readLinkCounters(const std::string& procFolder, const std::string& sysFolder);

} // namespace pacelet::Linux
