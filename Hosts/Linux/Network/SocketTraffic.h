#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Network/LinkCounters.h"
#include "Hosts/Linux/Network/SocketDiag.h"
#include "Hosts/Linux/Network/SocketOwners.h"

#include <string>
#include <vector>

namespace pacelet::Linux {

/// All connections at one moment.
struct SocketSample {
    MonotonicTime takenAt{};
    std::vector<SocketCounters> sockets{};
    LinkCounters links{};
};

/// What one connection moved: bytes, or bytes per second.
struct SocketTraffic {
    std::uint64_t inode = 0;
    double bytesIn = 0;
    double bytesOut = 0;

    bool operator==(const SocketTraffic&) const = default;
};

/// What each connection of a sample has moved since it was made.
std::vector<SocketTraffic> totalTraffic(const SocketSample& sample);

/// What each connection of `after` moved a second since `before`. One that is new counts from 0; a
/// counter that ran backwards counts as no movement, and so does a period of no length.
std::vector<SocketTraffic> trafficRates(const SocketSample& before, const SocketSample& after);

/// What went over the network a second between the two samples and is not in `rates` under an owner
/// that we know: datagrams, which the kernel counts for nobody, other users' connections, and what
/// is passed on for containers. 0 where it is so little that it may be the packets' own headers.
SocketTraffic otherTraffic(const SocketSample& before, const SocketSample& after,
                           const std::vector<SocketTraffic>& rates, const SocketOwners& owners);

/// The line under which that stands in the listing, in place of a process; empty for nothing.
std::string otherTrafficLine(const SocketTraffic& other);

/// One block of the listing: a header, then a line for each process, by rising pid, with the sums
/// of its connections as whole numbers. Connections without an owner are left out.
std::string trafficBlock(const std::vector<SocketTraffic>& traffic, const SocketOwners& owners);

} // namespace pacelet::Linux
