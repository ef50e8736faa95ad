#pragma once

#include "Core/Platform/ProgramKnowledge.h"
#include "Core/Sampling/ProcessUsage.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// An application with its helpers, or a lone process: the unit in which rules and screens speak.
struct ProcessGroup {
    std::string id;                     ///< `appPath`, or "pid:" and the pid
    std::string displayName;            ///< the bundle's name without extension, or the process's
    std::optional<std::string> appPath; ///< the outermost bundle, ending in ".app"
    std::vector<ProcessUsage> members;  ///< in the order of the process table; never empty
    double cpuPercent = 0;              ///< percent of one core, summed over the members
    std::int64_t memoryBytes = 0;       ///< summed over the members
    bool quittable = false;             ///< whether the program offers to quit it
    /// What the machine itself tells of the process that stands for the group; null where it does
    /// not, as on a Mac.
    std::shared_ptr<const ProgramFacts> facts = nullptr;

    std::size_t helperCount() const { return members.size() - 1; }

    /// The member that stands for the group: the application's own main executable if it runs,
    /// otherwise the busiest member.
    const ProcessUsage& primary() const;

    bool operator==(const ProcessGroup&) const = default;
};

} // namespace pacelet
