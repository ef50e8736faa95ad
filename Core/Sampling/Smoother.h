#pragma once

#include "Core/Sampling/ProcessGroup.h"

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

/// Evens out the CPU figures of the last ticks.
namespace pacelet::Smoother {

/// Percent of one core by group id.
using CPUByID = std::unordered_map<std::string, double>;

/// How many ticks the average spans, the newest included.
inline constexpr std::size_t window = 3;

/// Groups with one id are added up.
CPUByID cpuByID(std::span<const ProcessGroup> groups);

/// `latest` with each group's `cpuPercent` averaged over `history` (a tick without the group counts
/// as 0), busiest first; ties keep their order, and members keep their figures. An empty history
/// leaves the list as it stands.
std::vector<ProcessGroup> average(std::vector<ProcessGroup> latest,
                                  std::span<const CPUByID> history);

} // namespace pacelet::Smoother
