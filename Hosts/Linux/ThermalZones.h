#pragma once

#include "Hosts/Linux/Proc/FolderReader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// The points of one zone at which the kernel acts, in thousandths of a degree Celsius. A zone
/// that names a point twice counts with the lower one.
struct TripPoints {
    std::optional<std::int64_t> passive;  ///< the processor is slowed down
    std::optional<std::int64_t> hot;      ///< the firmware is told to do more
    std::optional<std::int64_t> critical; ///< the machine is shut down

    bool operator==(const TripPoints&) const = default;
};

/// This much below the critical point a machine counts as critical, since at the point itself it
/// goes off.
inline constexpr std::int64_t criticalMargin = 5'000;

/// 0 nominal; 1 fair from the passive point on; 2 serious from the hot point on; 3 critical close
/// to the critical point. A point that is missing, or not above 0 (not set), never counts.
int thermalState(std::int64_t temperature, const TripPoints& points);

/// True for zones that tell how hot the processor is, and not a battery, a radio or a disk.
bool isProcessorZone(const std::string& type);

/// The machine's thermal zones. Safe from any thread.
class ThermalZones {
public:
    /// Finds the zones below `folder`, "/sys/class/thermal" but in tests.
    explicit ThermalZones(const std::string& folder);

    /// The state of the hottest zone, 0 to 3; 0 on a machine without zones.
    int state() const;

private:
    struct Zone {
        std::string temperatureFile; // below the folder
        TripPoints points;
    };

    FolderReader folder_;
    std::vector<Zone> zones_;
};

} // namespace pacelet::Linux
