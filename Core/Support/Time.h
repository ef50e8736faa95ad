#pragma once

#include <chrono>

namespace pacelet {

/// Every duration of the program: seconds, with a fraction.
using Seconds = std::chrono::duration<double>;

/// A moment on the wall clock, in seconds since 1970-01-01 00:00 UTC. May jump when the clock is
/// set.
using TimePoint = std::chrono::time_point<std::chrono::system_clock, Seconds>;

/// A moment on a clock that never jumps and goes on counting while the machine sleeps.
using MonotonicTime = std::chrono::time_point<std::chrono::steady_clock, Seconds>;

/// The moment `seconds` after 1970-01-01 00:00 UTC.
constexpr TimePoint fromUnixTime(double seconds) {
    return TimePoint{Seconds{seconds}};
}

/// A moment before everything that was ever measured; stands for "from the very beginning".
inline constexpr TimePoint distantPast = fromUnixTime(-62135769600.0);

/// Seconds since 1970-01-01 00:00 UTC.
constexpr double unixTime(TimePoint time) {
    return time.time_since_epoch().count();
}

} // namespace pacelet
