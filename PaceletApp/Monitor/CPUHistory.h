#pragma once

#include "Core/Support/Time.h"

#include <vector>

namespace pacelet {

/// One point of the short CPU history; its date identifies it.
struct CPUPoint {
    TimePoint date{};
    double load = 0; ///< percent of the whole machine

    bool operator==(const CPUPoint&) const = default;
};

/// The load of the last ten minutes, in the order in which it was measured.
using CPUHistory = std::vector<CPUPoint>;

/// How far back the history reaches.
inline constexpr Seconds cpuHistoryLength{600.0};

/// Adds a point, and drops all that are too old at its date, wherever they stand: after the clock
/// was set, the list need not be in the order of its dates.
void addPoint(CPUHistory& history, const CPUPoint& point);

} // namespace pacelet
