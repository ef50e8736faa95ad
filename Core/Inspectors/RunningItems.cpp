#include "Core/Inspectors/BackgroundItemsReader.h"

#include <string_view>
#include <unordered_map>

namespace pacelet::BackgroundItemsReader {

std::vector<BackgroundItem> markRunning(std::vector<BackgroundItem> items,
                                        const RunningJobs& launchctl,
                                        const std::vector<ProcessSample>& processes) {
    std::unordered_map<std::string_view, std::int32_t> pids;
    pids.reserve(processes.size());
    for (const ProcessSample& process : processes) {
        pids.try_emplace(process.path, process.pid);
    }
    for (BackgroundItem& item : items) {
        item.pid.reset();
        if (const auto job = launchctl.find(item.label); job != launchctl.end()) {
            item.pid = job->second;
        } else if (item.program) {
            const auto process = pids.find(*item.program);
            if (process != pids.end()) {
                item.pid = process->second;
            }
        }
    }
    return items;
}

} // namespace pacelet::BackgroundItemsReader
