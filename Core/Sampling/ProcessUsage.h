#pragma once

#include <cstdint>
#include <string>

namespace pacelet {

/// One process with figures ready for display and rules.
struct ProcessUsage {
    std::int32_t pid = 0;
    std::int32_t ppid = 0;
    std::uint32_t uid = 0;
    std::string user;
    std::string path;
    std::string name;
    double cpuPercent = 0;        ///< percent of one core: never negative, no upper limit
    std::int64_t memoryBytes = 0; ///< physical footprint, or resident size where that is unknown

    bool operator==(const ProcessUsage&) const = default;
};

} // namespace pacelet
