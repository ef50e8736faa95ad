#pragma once

#include "Core/Support/Time.h"

namespace pacelet::SamplingPolicy {

/// How long to rest between two ticks: 3 seconds while somebody looks, else 30, or 60 in Low Power
/// Mode.
Seconds interval(bool windowVisible, bool menuOpen, bool lowPower);

} // namespace pacelet::SamplingPolicy
