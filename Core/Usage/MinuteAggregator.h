#pragma once

#include "Core/Sampling/SystemSignals.h"
#include "Core/Support/Time.h"
#include "Core/Usage/MinuteRecord.h"

#include <cstdint>
#include <optional>

namespace pacelet {

/// Folds samples into one record a clock minute. Holds the minute that is being filled; it is
/// never stored, so the open minute is lost when the program ends.
struct MinuteAggregator {
    std::optional<std::int64_t> minute; ///< the minute that is being filled
    double sum = 0;                     ///< of the minute's CPU loads
    double peak = 0;                    ///< the minute's highest CPU load
    std::int64_t worst = 0;             ///< the minute's worst pressure, as in `MinuteRecord`
    std::int64_t swap = 0;              ///< bytes, of the latest sample
    std::int64_t mem = 0;               ///< bytes in use, of the latest sample
    std::int64_t n = 0;                 ///< samples in the minute

    /// Takes in a sample and returns the record of the minute that it closes, if it does. Any
    /// change of the minute closes it, a clock set backwards too. `cpuLoad` is in percent of the
    /// whole machine, `swap` and `memUsed` in bytes. An `at` whose minute does not fit 64 bits
    /// stops the program.
    std::optional<MinuteRecord> add(double cpuLoad, Pressure pressure, std::int64_t swapUsed,
                                    std::int64_t memUsed, TimePoint at);

    bool operator==(const MinuteAggregator&) const = default;
};

} // namespace pacelet
