#pragma once

#include "Core/Sampling/ProcessGroup.h"

#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

/// Evens out the CPU figures of the last ticks.
namespace pacelet::Smoother {

/// Percent of one core by group id.
using CPUByID = std::unordered_map<std::string, double>;

/// The figures of the last ticks, the newest last. They are shared with whoever reads them
/// meanwhile.
using History = std::vector<std::shared_ptr<const CPUByID>>;

/// How many ticks the average spans, the newest included.
inline constexpr std::size_t window = 3;

/// Groups with one id are added up.
CPUByID cpuByID(std::span<const ProcessGroup> groups);

/// `history` with one more tick, and without those that the average no longer spans.
History extended(History history, CPUByID newest);

/// `latest` with each group's `cpuPercent` averaged over `history` (a tick without the group counts
/// as 0), busiest first; ties keep their order, and members keep their figures. An empty history
/// leaves the list as it stands.
std::vector<ProcessGroup> average(std::vector<ProcessGroup> latest, const History& history);

} // namespace pacelet::Smoother
