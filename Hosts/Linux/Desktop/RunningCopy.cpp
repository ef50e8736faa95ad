#include "Hosts/Linux/Desktop/RunningCopy.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace pacelet::Linux {

RunningCopy::RunningCopy(AppInstance instance, std::shared_ptr<const FolderReader> proc,
                         WindowCloser closeWindows)
    : instance_{std::move(instance)},
      proc_{std::move(proc)},
      closeWindows_{std::move(closeWindows)} {
    leaders_.reserve(instance_.leaders.size());
    for (const ProcessIdentity& leader : instance_.leaders) {
        leaders_.emplace_back(proc_, leader);
    }
}

bool RunningCopy::isTerminated() const {
    return std::all_of(leaders_.begin(), leaders_.end(),
                       [](const ProcessHandle& leader) { return leader.hasEnded(); });
}

bool RunningCopy::terminate() {
    // A window tells no more than a pid, so each process is looked at once more.
    std::vector<std::int32_t> pids;
    for (const auto* identities : {&instance_.leaders, &instance_.helpers}) {
        for (const ProcessIdentity& identity : *identities) {
            if (!ProcessHandle{proc_, identity}.hasEnded()) {
                pids.push_back(identity.pid);
            }
        }
    }
    if (!isTerminated() && closeWindows_(pids)) {
        return true;
    }
    bool isSent = false;
    for (const ProcessHandle& leader : leaders_) {
        isSent = leader.signal(SIGTERM) || isSent;
    }
    return isSent;
}

bool RunningCopy::forceTerminate() {
    bool isSent = false;
    for (const ProcessHandle& leader : leaders_) {
        isSent = leader.signal(SIGKILL) || isSent;
    }
    for (const ProcessIdentity& helper : instance_.helpers) {
        ProcessHandle{proc_, helper}.signal(SIGKILL);
    }
    return isSent;
}

} // namespace pacelet::Linux
