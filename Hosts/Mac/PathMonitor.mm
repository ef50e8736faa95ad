#include "Hosts/Mac/MacNetworkLink.h"
#include "Hosts/Mac/Records/Records.h"

#import <Network/Network.h>

#include <atomic>

namespace pacelet::Mac {

namespace {

/// How long the first word of a new monitor is waited for.
constexpr std::int64_t patience = 2 * static_cast<std::int64_t>(NSEC_PER_SEC);

class SystemPathMonitor final : public PathMonitor {
public:
    SystemPathMonitor() : monitor_{nw_path_monitor_create()} {}
    SystemPathMonitor(const SystemPathMonitor&) = delete;
    SystemPathMonitor& operator=(const SystemPathMonitor&) = delete;
    ~SystemPathMonitor() override { SystemPathMonitor::cancel(); }

    void start(const std::string& queueLabel, std::function<void(NetworkPath)> update) override {
        nw_path_monitor_set_queue(monitor_,
                                  dispatch_queue_create(queueLabel.c_str(), DISPATCH_QUEUE_SERIAL));
        nw_path_monitor_set_update_handler(monitor_, ^(nw_path_t path) {
          update(networkPathOf(static_cast<int>(nw_path_get_status(path)),
                               nw_path_uses_interface_type(path, nw_interface_type_wifi),
                               nw_path_uses_interface_type(path, nw_interface_type_wired)));
        });
        nw_path_monitor_start(monitor_);
    }

    /// The monitor itself, and with it what the handler holds, is given up by the system.
    void cancel() override {
        if (!isCancelled_.exchange(true)) {
            nw_path_monitor_cancel(monitor_);
        }
    }

private:
    nw_path_monitor_t monitor_;
    std::atomic<bool> isCancelled_ = false;
};

} // namespace

std::shared_ptr<PathMonitor> MacNetworkLink::makePathMonitor() {
    return std::make_shared<SystemPathMonitor>();
}

bool MacNetworkLink::isExpensive() {
    @autoreleasepool {
        const nw_path_monitor_t monitor = nw_path_monitor_create();
        const dispatch_semaphore_t told = dispatch_semaphore_create(0);
        const auto answer = std::make_shared<std::atomic<bool>>(false);
        nw_path_monitor_set_queue(
            monitor, dispatch_queue_create("app.pacelet.expensive", DISPATCH_QUEUE_SERIAL));
        nw_path_monitor_set_update_handler(monitor, ^(nw_path_t path) {
          *answer = nw_path_is_expensive(path);
          dispatch_semaphore_signal(told);
        });
        nw_path_monitor_start(monitor);
        dispatch_semaphore_wait(told, dispatch_time(DISPATCH_TIME_NOW, patience));
        nw_path_monitor_cancel(monitor);
        return *answer;
    }
}

} // namespace pacelet::Mac
