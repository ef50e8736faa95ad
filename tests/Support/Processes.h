#pragma once

#include "Core/Platform/ProcessSample.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/ProcessGroup.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Short ways to make processes and groups.
namespace pacelet::testing {

inline constexpr std::uint32_t me = 501;

inline ProcessSample sample(std::int32_t pid, std::string path, double cpuTime, double psCPU = 0,
                            std::int64_t rssBytes = 1024) {
    return {pid, 1, me, "ann", cpuTime, rssBytes, psCPU, std::move(path)};
}

inline ProcessUsage usage(std::int32_t pid, std::string path, double cpuPercent,
                          std::int64_t memoryBytes = 0, std::uint32_t uid = me) {
    std::string name{executableName(path)};
    return {pid, 1, uid, "ann", std::move(path), std::move(name), cpuPercent, memoryBytes};
}

/// The group that one lone process makes.
inline ProcessGroup lone(std::int32_t pid, const std::string& path, double cpuPercent,
                         std::int64_t memoryBytes = 0) {
    return AppGrouper::group({usage(pid, path, cpuPercent, memoryBytes, 0)}, me).front();
}

/// The group of the current user's application "/Applications/NAME.app" with so many helpers.
inline ProcessGroup app(const std::string& name, double cpuPercent, std::int64_t memoryBytes = 0,
                        int helpers = 0) {
    const std::string bundle = "/Applications/" + name + ".app";
    std::vector<ProcessUsage> usages{
        usage(1000, bundle + "/Contents/MacOS/" + name, cpuPercent, memoryBytes)};
    for (int helper = 1; helper <= helpers; ++helper) {
        usages.push_back(usage(1000 + helper, bundle + "/Contents/Frameworks/Helper", 0));
    }
    return AppGrouper::group(std::move(usages), me).front();
}

} // namespace pacelet::testing
