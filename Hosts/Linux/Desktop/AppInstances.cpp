#include "Hosts/Linux/Desktop/AppInstances.h"

#include "Core/Platform/BundlePath.h"
#include "Hosts/Linux/Desktop/BundleIdentifiers.h"

#include <string_view>
#include <unordered_map>

namespace pacelet::Linux {

namespace {

class Folding {
public:
    explicit Folding(std::span<const AppProcess> processes)
        : processes_{processes} {
        for (const AppProcess& process : processes) {
            byPID_.emplace(process.identity.pid, &process);
        }
    }

    std::vector<AppInstance> fold() {
        for (const AppProcess& process : processes_) {
            if (process.role == AppRole::main) {
                instanceOfMain_.emplace(process.identity.pid, open(process));
            }
        }
        for (const AppProcess& process : processes_) {
            if (process.role == AppRole::helper) {
                addHelper(process);
            }
        }
        return std::move(instances_);
    }

private:
    static std::string_view bundleOf(const AppProcess& process) {
        return outermostApp(process.path).value_or(process.path);
    }

    std::size_t open(const AppProcess& leader) {
        AppInstance& instance = instances_.emplace_back();
        instance.bundlePath = bundleOf(leader);
        instance.bundleIdentifier = bundleIdentifier(leader.appID);
        instance.executablePath = leader.path;
        instance.leaders.push_back(leader.identity);
        firstOfBundle_.emplace(bundleOf(leader), instances_.size() - 1);
        return instances_.size() - 1;
    }

    void addHelper(const AppProcess& helper) {
        const auto first = firstOfBundle_.find(bundleOf(helper));
        if (first == firstOfBundle_.end()) {
            open(helper);
            return;
        }
        const bool isLed = instanceOfMain_.contains(instances_[first->second].leaders.front().pid);
        if (!isLed) {
            instances_[first->second].leaders.push_back(helper.identity);
            return;
        }
        const AppProcess* main = mainAbove(helper);
        const std::size_t place =
            main != nullptr ? instanceOfMain_.at(main->identity.pid) : first->second;
        instances_[place].helpers.push_back(helper.identity);
    }

    /// The main process of the same bundle from which `helper` descends. A parent in a process
    /// table that was not read in one moment may be its own descendant: the way up is bounded.
    const AppProcess* mainAbove(const AppProcess& helper) const {
        const AppProcess* process = &helper;
        for (std::size_t steps = 0; steps < processes_.size(); ++steps) {
            const auto parent = byPID_.find(process->ppid);
            if (parent == byPID_.end()) {
                return nullptr;
            }
            process = parent->second;
            if (process->role == AppRole::main && bundleOf(*process) == bundleOf(helper)) {
                return process;
            }
        }
        return nullptr;
    }

    std::span<const AppProcess> processes_;
    std::unordered_map<std::int32_t, const AppProcess*> byPID_;
    std::unordered_map<std::int32_t, std::size_t> instanceOfMain_;
    std::unordered_map<std::string_view, std::size_t> firstOfBundle_;
    std::vector<AppInstance> instances_;
};

} // namespace

std::vector<AppInstance> appInstances(std::span<const AppProcess> processes) {
    return Folding{processes}.fold();
}

} // namespace pacelet::Linux
