#pragma once

#include "Hosts/Simulated/Model/Load.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Simulated {

/// A user of the simulated Mac.
struct User {
    std::uint32_t uid = 0;
    std::string_view name;
};

inline constexpr User root{0, "root"};
inline constexpr User ann{501, "ann"};

struct Process {
    std::int32_t pid = 0;
    std::int32_t ppid = 1;
    User user;
    std::string path;      ///< as the Mac knows it, such as "/sbin/launchd"
    std::string arguments; ///< what follows the path on its command line
    Load load;
    Seconds since{0};         ///< awake time from which `load` counts
    Seconds cpuTimeBefore{0}; ///< CPU time used before that
    std::int64_t footprint = 0;
    std::int64_t resident = 0;
    std::optional<int> application; ///< the running application that it belongs to

    std::string_view name() const;
    Seconds cpuTime(Seconds awake) const;

    /// Changes the load from now on and keeps the CPU time used so far.
    void setLoad(const Load& next, Seconds awake);
};

/// All processes, in the order of their pids.
class ProcessTable {
public:
    /// Adds the process under the next free pid (its own, when it has one already) and answers it;
    /// the answer holds until the table changes.
    Process& spawn(Process process);

    bool end(std::int32_t pid);

    Process* find(std::int32_t pid);

    /// The first process of this name, or null.
    Process* find(std::string_view name);

    const std::vector<Process>& all() const { return processes_; }
    std::vector<Process>& all() { return processes_; }

private:
    std::int32_t freePid();
    std::vector<Process>::iterator position(std::int32_t pid);

    std::vector<Process> processes_;
    std::int32_t lastPid_ = 99;
};

} // namespace pacelet::Simulated
