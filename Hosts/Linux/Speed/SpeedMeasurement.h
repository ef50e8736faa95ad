#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Speed/SpeedServer.h"

#include <atomic>
#include <cstddef>
#include <optional>

namespace pacelet::Linux {

/// What a test found in one direction.
struct DirectionFigures {
    double bitsPerSecond = 0;
    std::optional<double> roundTripsPerMinute; ///< under load
    std::size_t connections = 0;               ///< that loaded the line
};

struct SpeedFigures {
    Seconds idleRoundTrip{};
    DirectionFigures download;
    DirectionFigures upload;
};

/// Measures the line to `server` as "Responsiveness under Working Conditions" describes: the idle
/// round trip, then download, then upload, each with ever more connections until no more gets
/// through. It takes `limit` at most, and less than 1 GB. Blocks; ends at once when `stopped` is
/// set. Throws `SpeedFailure`. For a thread on which SIGPIPE is blocked.
SpeedFigures measureSpeed(const SpeedServer& server, Seconds limit,
                          const std::atomic<bool>& stopped);

} // namespace pacelet::Linux
