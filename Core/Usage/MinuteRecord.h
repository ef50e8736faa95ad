#pragma once

#include <cstdint>

namespace pacelet {

inline constexpr double secondsPerMinute = 60.0;
inline constexpr std::int64_t minutesPerHour = 60;
inline constexpr std::int64_t minutesPerDay = 1440;

/// One clock minute of measurement, named as in the history files.
struct MinuteRecord {
    std::int64_t t = 0;        ///< whole minutes since 1970-01-01 00:00 UTC
    double cpu = 0;            ///< mean CPU load in percent of the whole machine
    double cpuMax = 0;         ///< highest CPU load, in the same percent
    std::int64_t pressure = 0; ///< worst memory pressure: 0 normal, 1 elevated, 2 critical
    std::int64_t swap = 0;     ///< bytes of swap in use at the last sample
    std::int64_t memUsed = 0;  ///< bytes of memory in use at the last sample
    std::int64_t n = 0;        ///< number of samples, 1 or more

    bool operator==(const MinuteRecord&) const = default;
};

} // namespace pacelet
