#include "Hosts/Linux/Network/RoutePathMonitor.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Precondition.h"
#include "Hosts/Linux/Network/NetlinkSocket.h"
#include "Hosts/Linux/Network/PathReader.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <utility>

namespace pacelet::Linux {

/// Told once, and heard by a thread that looks or waits.
class RoutePathMonitor::StopSignal {
public:
    void raise() {
        isRaised_ = true;
        if (descriptor_) {
            ::eventfd_write(descriptor_.get(), 1);
        }
    }
    bool isRaised() const { return isRaised_; }

    /// Waits until it is raised, or `other` has something to read; false for the former. Where no
    /// waiting is possible, it counts as raised.
    bool waitFor(int other) const {
        if (!descriptor_ || other < 0) {
            return false;
        }
        std::array<pollfd, 2> sources{pollfd{descriptor_.get(), POLLIN, 0},
                                      pollfd{other, POLLIN, 0}};
        int ready = 0;
        do {
            ready = ::poll(sources.data(), sources.size(), -1);
        } while (ready < 0 && errno == EINTR);
        return ready > 0 && !isRaised_;
    }

private:
    std::atomic<bool> isRaised_{false};
    Descriptor descriptor_{::eventfd(0, EFD_CLOEXEC)};
};

RoutePathMonitor::RoutePathMonitor(std::string sysFolder)
    : sysFolder_{std::move(sysFolder)}, stop_{std::make_shared<StopSignal>()} {}

RoutePathMonitor::~RoutePathMonitor() {
    cancel();
    if (!thread_.joinable()) {
        return;
    }
    if (thread_.get_id() == std::this_thread::get_id()) {
        // The last owner let go within the update; the thread ends by itself right after it.
        thread_.detach();
    } else {
        thread_.join();
    }
}

void RoutePathMonitor::start(const std::string& queueLabel,
                             std::function<void(NetworkPath)> update) {
    constexpr std::size_t longestLabel = 15;
    precondition(!thread_.joinable(), "a path monitor was started twice");
    thread_ =
        std::thread{[stop = stop_, sysFolder = sysFolder_,
                     label = queueLabel.substr(0, longestLabel), handler = std::move(update)] {
            ::pthread_setname_np(::pthread_self(), label.c_str());
            follow(*stop, sysFolder, handler);
        }};
}

void RoutePathMonitor::cancel() {
    stop_->raise();
}

void RoutePathMonitor::follow(StopSignal& stop, const std::string& sysFolder,
                              const std::function<void(NetworkPath)>& update) {
    constexpr std::uint32_t groups = RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    // Listening begins before the first reading, so that no change falls between the two.
    NetlinkSocket events{NETLINK_ROUTE, groups};
    NetlinkSocket routing{NETLINK_ROUTE};
    std::optional<NetworkPath> reported;
    do {
        events.discardPending();
        const NetworkPath path = readPath(routing, sysFolder);
        if (reported != path && !stop.isRaised()) {
            reported = path;
            update(path);
        }
    } while (!stop.isRaised() && stop.waitFor(events.descriptor()));
}

} // namespace pacelet::Linux
