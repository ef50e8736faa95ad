#pragma once

#include "Core/Platform/ProcessSample.h"
#include "Core/Sampling/ProcessUsage.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace pacelet::CPUMeter {

/// Asks for the physical footprint of a pid, in bytes.
using FootprintReader = std::function<std::optional<std::int64_t>(std::int32_t pid)>;

/// The CPU share of each process of `current` since `previous`, in percent of one core, and its
/// memory; in the order of `current`. Where two snapshots do not tell (a first snapshot, a new
/// process, a reused pid, a counter or clock that ran backwards), the figure of `ps` stands.
std::vector<ProcessUsage> usage(const std::optional<Snapshot>& previous, const Snapshot& current,
                                const FootprintReader& footprint);

/// What all processes use together, in percent of one core.
double total(std::span<const ProcessUsage> usages);

} // namespace pacelet::CPUMeter
