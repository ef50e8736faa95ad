#include "Hosts/Linux/Network/NetlinkSocket.h"

#include <cerrno>
#include <sys/socket.h>
#include <sys/time.h>
#include <utility>

namespace pacelet::Linux {

namespace {

/// The kernel fills at most 32 KB a time, however much room there is.
constexpr std::size_t datagramRoom = 65536;
constexpr int mostAttempts = 3;
/// Answers come at once; this only keeps a fault from holding a thread for ever.
constexpr timeval patience{.tv_sec = 1, .tv_usec = 0};

} // namespace

NetlinkSocket::NetlinkSocket(int protocol, std::uint32_t groups)
    : descriptor_{::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, protocol)} {
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = groups;
    const bool isReady =
        descriptor_ &&
        ::setsockopt(descriptor(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) == 0 &&
        ::bind(descriptor(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (!isReady) {
        descriptor_.reset();
    }
}

std::optional<ByteBuffer> NetlinkSocket::ask(const NetlinkRequest& request) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        Answer answer = askOnce(request);
        if (!answer.isComplete || answer.isRefused) {
            return std::nullopt;
        }
        if (answer.isConsistent) {
            return std::move(answer.messages);
        }
    }
    return std::nullopt;
}

bool NetlinkSocket::discardPending() {
    room_.resize(datagramRoom);
    bool found = false;
    for (;;) {
        const ssize_t length = ::recv(descriptor(), room_.data(), room_.size(), MSG_DONTWAIT);
        // A full queue reports its loss once and then goes on.
        if (length >= 0 || errno == ENOBUFS) {
            found = true;
        } else if (errno != EINTR) {
            return found;
        }
    }
}

NetlinkSocket::Answer NetlinkSocket::askOnce(const NetlinkRequest& request) {
    Answer answer;
    const ByteBuffer message = request.bytes(++sequence_);
    if (::send(descriptor(), message.data(), message.size(), 0) >= 0) {
        while (!answer.isComplete && receive(answer)) {
        }
    }
    return answer;
}

bool NetlinkSocket::receive(Answer& answer) {
    room_.resize(datagramRoom);
    sockaddr_nl sender{};
    socklen_t senderSize = sizeof sender;
    ssize_t length = 0;
    do {
        length = ::recvfrom(descriptor(), room_.data(), room_.size(), 0,
                            reinterpret_cast<sockaddr*>(&sender), &senderSize);
    } while (length < 0 && errno == EINTR);
    // Any process may send to any netlink socket; the kernel's own messages come from port 0.
    if (length > 0 && sender.nl_pid == 0) {
        take(Bytes{room_}.first(static_cast<std::size_t>(length)), answer);
    }
    return length > 0;
}

void NetlinkSocket::take(Bytes datagram, Answer& answer) const {
    forEachMessage(datagram, [&](const nlmsghdr& header, Bytes payload) {
        if (header.nlmsg_seq != sequence_) {
            return; // an event, or the rest of an answer that came too late
        }
        if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
            answer.isConsistent = false;
        }
        if (header.nlmsg_type == NLMSG_DONE || header.nlmsg_type == NLMSG_ERROR) {
            answer.isComplete = true;
            answer.isRefused = readRecord<int>(payload).value_or(0) != 0;
            return;
        }
        appendMessage(answer.messages, header, payload);
    });
}

} // namespace pacelet::Linux
