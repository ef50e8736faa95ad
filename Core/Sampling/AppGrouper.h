#pragma once

#include "Core/Platform/BundlePath.h"
#include "Core/Sampling/ProcessGroup.h"

#include <cstdint>
#include <vector>

namespace pacelet::AppGrouper {

using pacelet::outermostApp;

/// Folds processes into their applications; the rest stand alone. Busiest group first, then by
/// name.
std::vector<ProcessGroup> group(std::vector<ProcessUsage> usages, std::uint32_t currentUID);

} // namespace pacelet::AppGrouper
