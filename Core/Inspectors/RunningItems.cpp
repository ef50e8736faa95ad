#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Text.h"

namespace pacelet::BackgroundItemsReader {

namespace {

/// Cuts the next column off a line; empty at its end.
std::string_view takeColumn(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
    const std::string_view column = line.substr(0, line.find('\t'));
    line.remove_prefix(column.size());
    return column;
}

} // namespace

RunningJobs parseLaunchctlList(std::string_view text) {
    RunningJobs jobs;
    bool isHeader = true;
    forEachLine(text, [&](std::string_view line) {
        if (isHeader) {
            isHeader = false;
            return;
        }
        const auto pid = parseInteger<std::int32_t>(takeColumn(line));
        takeColumn(line);
        const std::string_view label = takeColumn(line);
        if (pid && !label.empty()) {
            jobs.insert_or_assign(std::string{label}, *pid);
        }
    });
    return jobs;
}

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
