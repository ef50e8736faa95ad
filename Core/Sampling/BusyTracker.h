#pragma once

#include "Core/Support/Time.h"

#include <optional>

namespace pacelet {

/// Since when Spotlight has been busy without a pause.
struct BusyTracker {
    /// The load from which Spotlight counts as busy, in percent of one core.
    static constexpr double busyLoad = 50.0;

    std::optional<TimePoint> busySince;

    /// Takes in the load at `now` and returns the new `busySince`. One dip ends the spell.
    std::optional<TimePoint> update(double spotlightCPU, TimePoint now);

    bool operator==(const BusyTracker&) const = default;
};

} // namespace pacelet
