#pragma once

#include "Hosts/Linux/Network/LocalNetworks.h"
#include "Hosts/Linux/Network/NetlinkSocket.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace pacelet::Linux {

/// What one TCP connection has moved since it was made.
struct SocketCounters {
    std::uint64_t cookie = 0; ///< names the socket for as long as the machine runs
    std::uint64_t inode = 0;  ///< by which the descriptors of a process name it
    std::uint64_t bytesReceived = 0;
    std::uint64_t bytesSent = 0;

    bool operator==(const SocketCounters&) const = default;
};

/// Reads the answer to a dump of sockets. A socket that no process holds any more, whose counters
/// the kernel does not tell, or whose other end is on this machine, too, or in one of the networks
/// that end on it, is left out.
void parseSocketCounters(Bytes answer, const LocalNetworks& local,
                         std::vector<SocketCounters>& sockets);

/// Asks for all TCP connections of both address families, one after the other. Datagram sockets
/// are not asked for: the kernel keeps no byte counters of theirs. Nothing when it does not answer.
std::optional<std::vector<SocketCounters>> readSocketCounters(NetlinkSocket& diagnostics,
                                                              const LocalNetworks& local);

} // namespace pacelet::Linux
