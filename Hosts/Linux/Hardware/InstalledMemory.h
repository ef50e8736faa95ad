#pragma once

#include <cstdint>
#include <string_view>

namespace pacelet::Linux {

/// Where the device manager keeps what it read of the firmware's tables, below "/run": the tables
/// themselves are for root only.
inline constexpr const char* firmwareRecordPath = "udev/data/+dmi:id";

/// Bytes of memory that are built in: the sum of the modules in the device manager's record (empty
/// where there is none). Without modules in it, `managed`, which is what the kernel left after it
/// had taken its own part, rounded up to a size that memory comes in; 0 for 0.
std::int64_t installedMemory(std::int64_t managed, std::string_view firmwareRecord);

} // namespace pacelet::Linux
