#include "Hosts/Linux/Network/RoutePathMonitor.h"

#include "Core/Support/Precondition.h"

#include <utility>

namespace pacelet::Linux {

RoutePathMonitor::RoutePathMonitor(std::shared_ptr<PathFollower> follower)
    : follower_{std::move(follower)},
      listener_{std::make_shared<PathListener>()} {}

RoutePathMonitor::~RoutePathMonitor() {
    cancel();
    const std::lock_guard underWay{listener_->telling};
}

void RoutePathMonitor::start(const std::string& queueLabel,
                             std::function<void(NetworkPath)> update) {
    precondition(!listener_->update, "a path monitor was started twice");
    listener_->update = std::move(update);
    follower_->add(queueLabel, listener_);
}

void RoutePathMonitor::cancel() {
    if (!listener_->isCancelled.exchange(true)) {
        follower_->wake();
    }
}

} // namespace pacelet::Linux
