#pragma once

#include "Core/Internet/NetUsage.h"
#include "Core/Sampling/ProcessGroup.h"

#include <span>

namespace pacelet {

/// Tells by pid the display name of the first of `groups` that holds the process. Keeps the names,
/// not the groups.
AppName appNames(std::span<const ProcessGroup> groups);

} // namespace pacelet
