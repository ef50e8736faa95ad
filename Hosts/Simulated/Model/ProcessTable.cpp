#include "Hosts/Simulated/Model/ProcessTable.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <utility>

namespace pacelet::Simulated {

namespace {

// Pids run up to here and begin anew behind those of the system's first processes.
constexpr std::int32_t highestPid = 99998;
constexpr std::int32_t firstPidAgain = 100;

// A pid that a builder has not chosen. Pid 0 is the kernel's.
constexpr std::string_view kernelName = "kernel_task";

} // namespace

std::string_view Process::name() const {
    return lastPathComponent(path);
}

Seconds Process::cpuTime(Seconds awake) const {
    return cpuTimeBefore + load.used(since, awake);
}

void Process::setLoad(const Load& next, Seconds awake) {
    cpuTimeBefore = cpuTime(awake);
    since = awake;
    load = next;
}

std::vector<Process>::iterator ProcessTable::position(std::int32_t pid) {
    return std::lower_bound(
        processes_.begin(), processes_.end(), pid,
        [](const Process& process, std::int32_t wanted) { return process.pid < wanted; });
}

std::int32_t ProcessTable::freePid() {
    do {
        lastPid_ = lastPid_ >= highestPid ? firstPidAgain : lastPid_ + 1;
    } while (find(lastPid_) != nullptr);
    return lastPid_;
}

Process& ProcessTable::spawn(Process process) {
    if (process.pid == 0 && process.path != kernelName) {
        process.pid = freePid();
    }
    const auto place = position(process.pid);
    return *processes_.insert(place, std::move(process));
}

bool ProcessTable::end(std::int32_t pid) {
    const auto found = position(pid);
    if (found == processes_.end() || found->pid != pid) {
        return false;
    }
    processes_.erase(found);
    return true;
}

Process* ProcessTable::find(std::int32_t pid) {
    const auto found = position(pid);
    return found != processes_.end() && found->pid == pid ? &*found : nullptr;
}

Process* ProcessTable::find(std::string_view name) {
    const auto found = std::find_if(processes_.begin(), processes_.end(),
                                    [&](const Process& process) { return process.name() == name; });
    return found != processes_.end() ? &*found : nullptr;
}

} // namespace pacelet::Simulated
