#pragma once

#include "Core/Internet/NetUsage.h"

#include <span>
#include <vector>

namespace pacelet {

/// The traffic of processes folded into that of their applications, busiest first. A group is named
/// by the application, or by the process that is in none, and carries its first process's pid.
/// Groups of equal totals keep the order in which they were first met.
std::vector<NetUsage> trafficByApp(std::span<const NetUsage> usage, const AppName& appName);

} // namespace pacelet
