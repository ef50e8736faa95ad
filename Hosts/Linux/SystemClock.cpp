#include "Hosts/Linux/SystemClock.h"

#include <chrono>
#include <ctime>

namespace pacelet::Linux {

TimePoint SystemClock::now() {
    return std::chrono::system_clock::now();
}

MonotonicTime SystemClock::monotonicNow() {
    timespec time{};
    // Cannot fail: the clock is known and the record is ours.
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return MonotonicTime{std::chrono::seconds{time.tv_sec} +
                         std::chrono::nanoseconds{time.tv_nsec}};
}

} // namespace pacelet::Linux
