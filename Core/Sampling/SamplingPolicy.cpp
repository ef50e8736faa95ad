#include "Core/Sampling/SamplingPolicy.h"

namespace pacelet::SamplingPolicy {

namespace {

constexpr Seconds watched{3};
constexpr Seconds unattended{30};
constexpr Seconds unattendedInLowPower{60};

} // namespace

Seconds interval(bool windowVisible, bool menuOpen, bool lowPower) {
    if (windowVisible || menuOpen) {
        return watched;
    }
    return lowPower ? unattendedInLowPower : unattended;
}

} // namespace pacelet::SamplingPolicy
