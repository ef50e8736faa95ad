#include "Hosts/Linux/Network/PathFollower.h"

#include "Hosts/Linux/Network/NetlinkSocket.h"
#include "Hosts/Linux/Network/PathReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <system_error>
#include <utility>

namespace pacelet::Linux {

namespace {

/// How long the thread stays for whoever listens next.
constexpr int lingerMilliseconds = 5000;

void tell(PathListener& listener, const NetworkPath& path) {
    const std::lock_guard lock{listener.telling};
    if (!listener.isCancelled && listener.told != path) {
        listener.told = path;
        listener.update(path);
    }
}

/// Waits until either has something to read. False when neither had within the limit, which is -1
/// for none. A negative descriptor is left out.
bool waitForEither(int first, int second, int limit) {
    std::array<pollfd, 2> sources{pollfd{first, POLLIN, 0}, pollfd{second, POLLIN, 0}};
    int ready = 0;
    do {
        ready = ::poll(sources.data(), sources.size(), limit);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace

PathFollower::PathFollower(std::string sysFolder)
    : sysFolder_{std::move(sysFolder)},
      wake_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)} {}

void PathFollower::add(const std::string& queueLabel, std::shared_ptr<PathListener> listener) {
    constexpr std::size_t longestLabel = 15;
    std::unique_lock lock{mutex_};
    if (isStopped_) {
        return;
    }
    if (isRunning_) {
        listeners_.push_back(std::move(listener));
        wake();
        return;
    }
    if (thread_.joinable()) {
        thread_.join();
    }
    listeners_ = {listener};
    try {
        thread_ = std::thread{[this, label = queueLabel.substr(0, longestLabel)] {
            ::pthread_setname_np(::pthread_self(), label.c_str());
            follow();
        }};
        isRunning_ = true;
    } catch (const std::system_error&) {
        listeners_.clear();
        lock.unlock();
        NetlinkSocket routing{NETLINK_ROUTE};
        tell(*listener, readPath(routing, sysFolder_));
    }
}

void PathFollower::wake() {
    ::eventfd_write(wake_.get(), 1);
}

void PathFollower::stop() {
    {
        const std::lock_guard lock{mutex_};
        isStopped_ = true;
    }
    wake();
    if (thread_.joinable()) {
        thread_.join();
    }
}

PathFollower::Listeners PathFollower::listeners() {
    Listeners cancelled; // let go of outside the lock: a listener may own much
    const std::lock_guard lock{mutex_};
    const auto gone = std::partition(listeners_.begin(), listeners_.end(),
                                     [](const auto& each) { return !each->isCancelled; });
    cancelled.assign(gone, listeners_.end());
    listeners_.erase(gone, listeners_.end());
    return listeners_;
}

bool PathFollower::isDone(bool nobodyCame) {
    const std::lock_guard lock{mutex_};
    isRunning_ = !isStopped_ && !(nobodyCame && listeners_.empty());
    return !isRunning_;
}

void PathFollower::follow() {
    constexpr std::uint32_t groups = RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    // Listening begins before the first reading, so that no change falls between the two.
    NetlinkSocket events{NETLINK_ROUTE, groups};
    NetlinkSocket routing{NETLINK_ROUTE};
    std::optional<NetworkPath> path;
    bool nobodyCame = false;
    while (!isDone(nobodyCame)) {
        eventfd_t woken = 0;
        ::eventfd_read(wake_.get(), &woken);
        // Without events, each reading has to be a new one.
        if (events.discardPending() || !path || events.descriptor() < 0) {
            path = readPath(routing, sysFolder_);
        }
        for (const auto& listener : listeners()) {
            tell(*listener, *path);
        }
        const int limit = listeners().empty() ? lingerMilliseconds : -1;
        nobodyCame = !waitForEither(wake_.get(), events.descriptor(), limit);
    }
}

} // namespace pacelet::Linux
