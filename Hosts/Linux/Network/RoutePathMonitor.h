#pragma once

#include "Core/Platform/NetworkLink.h"

#include <memory>
#include <string>
#include <thread>

namespace pacelet::Linux {

/// Follows the kernel's routes and interfaces on a thread of its own. Destroying it ends the thread
/// and waits for an update that is under way, except from within that update.
class RoutePathMonitor final : public PathMonitor {
public:
    explicit RoutePathMonitor(std::string sysFolder);
    RoutePathMonitor(const RoutePathMonitor&) = delete;
    RoutePathMonitor& operator=(const RoutePathMonitor&) = delete;
    ~RoutePathMonitor() override;

    /// The kernel keeps 15 bytes of the label.
    void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) override;
    void cancel() override;

private:
    class StopSignal;

    static void follow(StopSignal& stop, const std::string& sysFolder,
                       const std::function<void(NetworkPath)>& update);

    std::string sysFolder_;
    std::shared_ptr<StopSignal> stop_; ///< shared with the thread, which may live longer
    std::thread thread_{};
};

} // namespace pacelet::Linux
