#include "Hosts/Mac/MacClock.h"

#include <chrono>
#include <ctime>

namespace pacelet::Mac {

TimePoint MacClock::now() {
    return std::chrono::system_clock::now();
}

MonotonicTime MacClock::monotonicNow() {
    timespec time{};
    // Cannot fail: the clock is known and the record is ours.
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return MonotonicTime{std::chrono::seconds{time.tv_sec} +
                         std::chrono::nanoseconds{time.tv_nsec}};
}

} // namespace pacelet::Mac
