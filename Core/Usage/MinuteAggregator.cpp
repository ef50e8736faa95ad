#include "Core/Usage/MinuteAggregator.h"

#include "Core/Support/Checked.h"

#include <algorithm>

namespace pacelet {

namespace {

std::int64_t rank(Pressure pressure) {
    switch (pressure) {
    case Pressure::normal:
        return 0;
    case Pressure::elevated:
        return 1;
    case Pressure::critical:
        return 2;
    }
    invariantBreach("a pressure is none of its cases");
}

} // namespace

std::optional<MinuteRecord> MinuteAggregator::add(double cpuLoad, Pressure pressure,
                                                  std::int64_t swapUsed, std::int64_t memUsed,
                                                  TimePoint at) {
    const std::int64_t sampled =
        checkedTruncate(unixTime(at) / secondsPerMinute, "the time of a sample is out of range");
    std::optional<MinuteRecord> closed;
    if (minute && *minute != sampled && n >= 1) {
        closed = MinuteRecord{*minute, sum / static_cast<double>(n), peak, worst, swap, mem, n};
        sum = 0;
        peak = 0;
        worst = 0;
        n = 0;
    }
    minute = sampled;
    sum += cpuLoad;
    peak = std::max(peak, cpuLoad);
    worst = std::max(worst, rank(pressure));
    swap = swapUsed;
    mem = memUsed;
    n += 1;
    return closed;
}

} // namespace pacelet
