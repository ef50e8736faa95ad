#pragma once

#include "Hosts/Linux/Network/PathFollower.h"

#include <memory>
#include <string>

namespace pacelet::Linux {

/// Hears of the kernel's routes and interfaces from the thread that follows them for all.
/// Destroying it waits for an update that is under way, except from within that update.
class RoutePathMonitor final : public PathMonitor {
public:
    explicit RoutePathMonitor(std::shared_ptr<PathFollower> follower);
    RoutePathMonitor(const RoutePathMonitor&) = delete;
    RoutePathMonitor& operator=(const RoutePathMonitor&) = delete;
    ~RoutePathMonitor() override;

    void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) override;
    void cancel() override;

private:
    std::shared_ptr<PathFollower> follower_;
    std::shared_ptr<PathListener> listener_;
};

} // namespace pacelet::Linux
