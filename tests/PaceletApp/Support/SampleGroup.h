#pragma once

#include "Core/Sampling/ProcessGroup.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {

inline ProcessUsage sampleUsage(std::int32_t pid, std::string name, double cpu = 0,
                                std::int64_t memory = 0) {
    ProcessUsage usage;
    usage.pid = pid;
    usage.name = std::move(name);
    usage.cpuPercent = cpu;
    usage.memoryBytes = memory;
    return usage;
}

/// A group that has the name and the figures of its first member.
inline ProcessGroup sampleGroup(const std::vector<ProcessUsage>& members, bool quittable = false) {
    const ProcessUsage& first = members.front();
    return {.id = "pid:" + std::to_string(first.pid),
            .displayName = first.name,
            .members = members,
            .cpuPercent = first.cpuPercent,
            .memoryBytes = first.memoryBytes,
            .quittable = quittable};
}

} // namespace pacelet
