#pragma once

#include "Core/Platform/Clock.h"

namespace pacelet::Mac {

/// The machine's own clocks. The monotonic one counts on while the machine sleeps.
class MacClock final : public Clock {
public:
    TimePoint now() override;
    MonotonicTime monotonicNow() override;
};

} // namespace pacelet::Mac
