#pragma once

#include "Core/Support/Time.h"

namespace pacelet::Simulated {

constexpr Seconds days(double count) {
    return Seconds{count * 86400};
}

constexpr Seconds hours(double count) {
    return Seconds{count * 3600};
}

/// When every simulation begins: a Friday morning, 2026-03-06 09:41 UTC.
inline constexpr TimePoint startOfSimulation = fromUnixTime(1772755200.0 + 9 * 3600 + 41 * 60);

/// The clocks of the machine. They move together; but the wall clock may be set, and processes get
/// no time while the machine sleeps.
struct VirtualTime {
    TimePoint wall = startOfSimulation;
    MonotonicTime monotonic{Seconds{1000}};
    Seconds awake{0};
    bool asleep = false;

    void pass(Seconds span) {
        wall += span;
        monotonic += span;
        if (!asleep) {
            awake += span;
        }
    }
};

} // namespace pacelet::Simulated
