#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet {

/// Memory pressure of the whole machine.
enum class Pressure { normal, elevated, critical };

/// From the kernel's raw level: 2 is elevated, 4 critical, all else normal.
Pressure pressureFromSysctlLevel(std::int32_t level);
std::string_view label(Pressure pressure);

/// How hot the machine is, in rising order.
enum class Thermal { normal = 0, warm = 1, hot = 2, veryHot = 3 };

/// From the platform's raw state, 0 to 3; anything else is normal.
Thermal thermalFromState(int state);
std::string_view label(Thermal thermal);

/// One reading of the machine.
struct SystemSignals {
    double cpuLoadPercent = 0;  ///< percent of the whole machine, 0 to 100
    std::int64_t coreCount = 0; ///< active processors
    Pressure pressure = Pressure::normal;
    std::int64_t swapUsedBytes = 0;
    Thermal thermal = Thermal::normal;
    std::int64_t diskFreeBytes = 0;  ///< start-up volume, free for important use
    std::int64_t diskTotalBytes = 0; ///< start-up volume; 0 when unknown
    double uptime = 0;               ///< seconds since boot
    std::int64_t memoryTotalBytes = 0;
    /// What could be handed out without swapping; nothing where the system keeps no such count.
    std::optional<std::int64_t> memoryAvailableBytes{};

    /// Turns a sum of percentages of one core into a percentage of the machine, from 0 to 100.
    /// Fewer than one core count as one.
    static double cpuLoad(double totalPercent, std::int64_t cores);

    bool operator==(const SystemSignals&) const = default;
};

} // namespace pacelet
