#include "Hosts/Simulated/Model/Load.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pacelet::Simulated {

namespace {

constexpr double turn = 2 * std::numbers::pi;

} // namespace

double Load::at(Seconds time) const {
    if (time >= until) {
        return percentAfter;
    }
    return percent * (1 + swing * std::sin(turn * (time / period) + phase));
}

Seconds Load::used(Seconds from, Seconds to) const {
    const Seconds busyEnd = std::clamp(until, from, to);
    const auto swung = [&](Seconds time) { return std::cos(turn * (time / period) + phase); };
    const Seconds swings = swing * (period / turn) * (swung(from) - swung(busyEnd));
    return (percent * (busyEnd - from + swings) + percentAfter * (to - busyEnd)) / 100.0;
}

} // namespace pacelet::Simulated
