#pragma once

#include "Core/Sampling/ProcessGroup.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace pacelet::AppGrouper {

/// The bundle that holds the executable at `path`: everything up to the first ".app/", or the whole
/// path when it ends in ".app". A view into `path`.
std::optional<std::string_view> outermostApp(std::string_view path);

/// Folds processes into their applications; the rest stand alone. Busiest group first, then by
/// name.
std::vector<ProcessGroup> group(std::vector<ProcessUsage> usages, std::uint32_t currentUID);

} // namespace pacelet::AppGrouper
