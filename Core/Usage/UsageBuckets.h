#pragma once

#include "Core/Support/Time.h"
#include "Core/Usage/MinuteRecord.h"

#include <cstdint>
#include <vector>

namespace pacelet {

/// What was measured in one hour or day: one bar of a chart. Hours and days are those of UTC.
struct UsageBucket {
    TimePoint start{};        ///< a multiple of the bucket's size
    double cpu = 0;           ///< mean of the records' `cpu`, in percent
    double pressureShare = 0; ///< share of the records under memory pressure, 0 to 1
    std::int64_t swap = 0;    ///< highest swap, in bytes
    std::int64_t minutes = 0; ///< number of records

    /// What a bucket is known by in lists.
    TimePoint id() const { return start; }

    bool operator==(const UsageBucket&) const = default;
};

namespace UsageBuckets {

/// Gathers records, in any order, into buckets of so many minutes, sorted by `start`. A period
/// without records has no bucket, and each record weighs the same. A size below 1, or a start that
/// does not fit 64 bits of seconds, stops the program.
std::vector<UsageBucket> bucket(const std::vector<MinuteRecord>& records, std::int64_t minutes);

} // namespace UsageBuckets

} // namespace pacelet
