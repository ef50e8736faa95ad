#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// What stands behind the last "/" of an executable's path; the whole path when it holds none.
constexpr std::string_view executableName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// One process at one moment, as `ps` printed it.
struct ProcessSample {
    std::int32_t pid = 0;
    std::int32_t ppid = 0;
    std::uint32_t uid = 0;
    std::string user;
    double cpuTime = 0;        ///< seconds of CPU used since the process began
    std::int64_t rssBytes = 0; ///< resident size in bytes
    double psCPU = 0;          ///< the `%cpu` column: percent of one core
    std::string path;          ///< the executable's path, blanks included

    std::string_view name() const { return executableName(path); }

    bool operator==(const ProcessSample&) const = default;
};

/// The process table at one moment.
struct Snapshot {
    TimePoint takenAt{};
    std::vector<ProcessSample> processes; ///< in the order of the lines of `ps`

    bool operator==(const Snapshot&) const = default;
};

} // namespace pacelet
