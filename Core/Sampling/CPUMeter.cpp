#include "Core/Sampling/CPUMeter.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace pacelet::CPUMeter {

namespace {

using SampleIndex = std::unordered_map<std::int32_t, const ProcessSample*>;

SampleIndex indexByPid(const std::optional<Snapshot>& snapshot) {
    SampleIndex index;
    if (snapshot) {
        index.reserve(snapshot->processes.size());
        for (const ProcessSample& sample : snapshot->processes) {
            index[sample.pid] = &sample;
        }
    }
    return index;
}

/// Percent of one core since the earlier sample, or what `ps` says where the two do not tell.
double cpuPercent(const ProcessSample& sample, const SampleIndex& earlier, Seconds elapsed) {
    if (elapsed <= Seconds::zero()) {
        return sample.psCPU;
    }
    const auto found = earlier.find(sample.pid);
    if (found == earlier.end()) {
        return sample.psCPU;
    }
    const ProcessSample& before = *found->second;
    if (before.path != sample.path || before.cpuTime > sample.cpuTime) {
        return sample.psCPU;
    }
    return (sample.cpuTime - before.cpuTime) / elapsed.count() * 100;
}

} // namespace

std::vector<ProcessUsage> usage(const std::optional<Snapshot>& previous, const Snapshot& current,
                                const FootprintReader& footprint) {
    const SampleIndex earlier = indexByPid(previous);
    const Seconds elapsed = previous ? current.takenAt - previous->takenAt : Seconds::zero();

    std::vector<ProcessUsage> usages;
    usages.reserve(current.processes.size());
    for (const ProcessSample& sample : current.processes) {
        ProcessUsage& usage = usages.emplace_back();
        usage.pid = sample.pid;
        usage.ppid = sample.ppid;
        usage.uid = sample.uid;
        usage.user = sample.user;
        usage.path = sample.path;
        usage.name = sample.name();
        // Also turns a negative zero into a plain one.
        usage.cpuPercent = std::max(0.0, cpuPercent(sample, earlier, elapsed));
        usage.memoryBytes = footprint(sample.pid).value_or(sample.rssBytes);
    }
    return usages;
}

double total(std::span<const ProcessUsage> usages) {
    double sum = 0;
    for (const ProcessUsage& usage : usages) {
        sum += usage.cpuPercent;
    }
    return sum;
}

} // namespace pacelet::CPUMeter
