#pragma once

#include "Core/Platform/ProgramKnowledge.h"
#include "Core/Sampling/ProcessUsage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
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

/// `groups` in the order of `isBefore`; ties keep theirs. Sorts through a list of places: moving 8
/// bytes about is cheaper than moving whole groups.
template<typename IsBefore>
std::vector<ProcessGroup> sorted(std::vector<ProcessGroup> groups, IsBefore isBefore) {
    std::vector<std::size_t> order(groups.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [&](std::size_t left, std::size_t right) {
        return isBefore(groups[left], groups[right]);
    });
    std::vector<ProcessGroup> result;
    result.reserve(groups.size());
    for (const std::size_t place : order) {
        result.push_back(std::move(groups[place]));
    }
    return result;
}

} // namespace pacelet
