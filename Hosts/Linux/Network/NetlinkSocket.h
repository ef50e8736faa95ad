#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Network/NetlinkMessage.h"

#include <optional>

namespace pacelet::Linux {

/// A socket to one of the kernel's netlink services. One thread at a time.
class NetlinkSocket {
public:
    /// `groups` is a mask of the multicast groups that are listened to. A socket that cannot be
    /// opened is there all the same, and answers nothing.
    explicit NetlinkSocket(int protocol, std::uint32_t groups = 0);

    int descriptor() const { return descriptor_.get(); }

    /// Sends a request and gathers the messages of its answer, in one piece. A dump that the kernel
    /// itself calls inconsistent is asked for again. Nothing when the kernel refuses, or does not
    /// answer within a second.
    std::optional<ByteBuffer> ask(const NetlinkRequest& request);

    /// Throws away what has arrived, and tells whether there was any; returns at once.
    bool discardPending();

private:
    /// What one request has brought so far.
    struct Answer {
        ByteBuffer messages;
        bool isComplete = false;
        bool isConsistent = true;
        bool isRefused = false;
    };

    Answer askOnce(const NetlinkRequest& request);
    /// Waits for one datagram; false when none came in time.
    bool receive(Answer& answer);
    void take(Bytes datagram, Answer& answer) const;

    Descriptor descriptor_;
    std::uint32_t sequence_ = 0;
    ByteBuffer room_{};
};

} // namespace pacelet::Linux
