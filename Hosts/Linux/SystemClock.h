#pragma once

#include "Core/Platform/Clock.h"

namespace pacelet::Linux {

/// The machine's own clocks. The monotonic one counts from boot, the machine's sleep included.
class SystemClock final : public Clock {
public:
    TimePoint now() override;
    MonotonicTime monotonicNow() override;
};

} // namespace pacelet::Linux
