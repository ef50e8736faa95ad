#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/Kernel.h"
#include "Core/Sampling/SystemSignals.h"

namespace pacelet::SignalReader {

/// Reads the machine. `totalCPUPercent` is the sum over all processes, in percent of one core. What
/// cannot be read stays at its default: no pressure, no swap, an unknown disk.
SystemSignals read(Kernel& kernel, Clock& clock, double totalCPUPercent);

} // namespace pacelet::SignalReader
