#pragma once

#include "Core/Platform/Kernel.h"
#include "Core/Platform/ProcessSample.h"
#include "Core/Sampling/CPUMeter.h"

namespace pacelet::MemoryReader {

/// Physical footprint of one process in bytes; nothing when it has gone or belongs to somebody
/// else.
std::optional<std::int64_t> footprint(Kernel& kernel, std::int32_t pid);

/// A reader that asks the system for the processes of user `uid` in `snapshot` only, and answers
/// nothing for all others: the call fails for them anyway. `kernel` must outlive it.
CPUMeter::FootprintReader ownProcesses(Kernel& kernel, const Snapshot& snapshot, std::uint32_t uid);

} // namespace pacelet::MemoryReader
