#include "Hosts/Linux/Network/SocketDiag.h"

#include <cstring>
#include <linux/inet_diag.h>
#include <linux/sock_diag.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace pacelet::Linux {

namespace {

/// The states of a connection, by their bit numbers: established, both halves of an active close,
/// a passive close, the last acknowledgement and a simultaneous close.
constexpr std::uint32_t connectionStates =
    1U << 1 | 1U << 4 | 1U << 5 | 1U << 8 | 1U << 9 | 1U << 11;

/// Whether both ends are on this machine: what goes between them never gets onto the network.
bool staysHere(const inet_diag_msg& head, const LocalNetworks& local) {
    in6_addr peer{};
    static_assert(sizeof peer == sizeof head.id.idiag_dst);
    std::memcpy(&peer, head.id.idiag_dst, sizeof peer);
    if (head.idiag_family == AF_INET) {
        peer = mappedAddress({head.id.idiag_dst[0]});
    }
    constexpr std::uint8_t loopbackNetwork = 127;
    const bool isLoopback = IN6_IS_ADDR_LOOPBACK(&peer) ||
                            (IN6_IS_ADDR_V4MAPPED(&peer) && peer.s6_addr[12] == loopbackNetwork);
    return isLoopback || local.contains(peer) ||
           std::memcmp(head.id.idiag_src, head.id.idiag_dst, sizeof peer) == 0;
}

void parseSocket(Bytes payload, const LocalNetworks& local, std::vector<SocketCounters>& sockets) {
    const auto head = readRecord<inet_diag_msg>(payload);
    if (!head || head->idiag_inode == 0 || staysHere(*head, local)) {
        return;
    }
    SocketCounters counters;
    counters.cookie =
        std::uint64_t{head->id.idiag_cookie[1]} << 32 | std::uint64_t{head->id.idiag_cookie[0]};
    counters.inode = head->idiag_inode;
    bool isTold = false;
    forEachAttribute(behindHead(payload, sizeof(inet_diag_msg)), [&](int type, Bytes info) {
        if (type != INET_DIAG_INFO) {
            return;
        }
        const auto received =
            readRecord<std::uint64_t>(info, offsetof(tcp_info, tcpi_bytes_received));
        const auto sent = readRecord<std::uint64_t>(info, offsetof(tcp_info, tcpi_bytes_sent));
        if (received && sent) {
            counters.bytesReceived = *received;
            counters.bytesSent = *sent;
            isTold = true;
        }
    });
    if (isTold) {
        sockets.push_back(counters);
    }
}

NetlinkRequest dumpOf(int family) {
    inet_diag_req_v2 wanted{};
    wanted.sdiag_family = static_cast<std::uint8_t>(family);
    wanted.sdiag_protocol = IPPROTO_TCP;
    wanted.idiag_ext = 1U << (INET_DIAG_INFO - 1);
    wanted.idiag_states = connectionStates;
    NetlinkRequest request{SOCK_DIAG_BY_FAMILY, NLM_F_DUMP};
    request.record(wanted);
    return request;
}

} // namespace

void parseSocketCounters(Bytes answer, const LocalNetworks& local,
                         std::vector<SocketCounters>& sockets) {
    forEachMessage(answer, [&](const nlmsghdr& header, Bytes payload) {
        if (header.nlmsg_type == SOCK_DIAG_BY_FAMILY) {
            parseSocket(payload, local, sockets);
        }
    });
}

std::optional<std::vector<SocketCounters>> readSocketCounters(NetlinkSocket& diagnostics,
                                                              const LocalNetworks& local) {
    const auto overIPv4 = diagnostics.ask(dumpOf(AF_INET));
    if (!overIPv4) {
        return std::nullopt;
    }
    std::vector<SocketCounters> sockets;
    parseSocketCounters(*overIPv4, local, sockets);
    // A kernel without IPv6 refuses the question, and has no such sockets.
    if (const auto overIPv6 = diagnostics.ask(dumpOf(AF_INET6))) {
        parseSocketCounters(*overIPv6, local, sockets);
    }
    return sockets;
}

} // namespace pacelet::Linux
