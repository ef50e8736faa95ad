#pragma once

#include <cstddef>

namespace pacelet {

/// Begins a new measurement of what the program has allocated by `new` at the same time.
void resetAllocationPeak();

/// The highest sum since then, in bytes above what stood at its start.
std::size_t allocationPeak();

} // namespace pacelet
