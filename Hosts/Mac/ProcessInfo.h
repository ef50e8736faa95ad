#pragma once

#include "Core/Platform/Kernel.h"

#include <cstdint>
#include <optional>
#include <string>

/// What Foundation tells of the machine, in its own numbers. Any thread.
namespace pacelet::Mac::ProcessInfo {

std::int64_t activeProcessorCount();
std::int64_t physicalMemory();
std::int64_t thermalState(); ///< of NSProcessInfoThermalState
double systemUptime();       ///< seconds
bool isLowPowerModeEnabled();
std::optional<VolumeCapacities> volumeCapacities(const std::string& path);

std::string homeFolder();
std::string applicationSupportFolder();

} // namespace pacelet::Mac::ProcessInfo
