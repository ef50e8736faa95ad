#pragma once

#include "Core/Support/Time.h"

namespace pacelet {

/// The host's clocks: real ones in the program, virtual ones in a simulation. Safe from any thread.
class Clock {
public:
    virtual ~Clock() = default;

    virtual TimePoint now() = 0;
    virtual MonotonicTime monotonicNow() = 0;
};

} // namespace pacelet
