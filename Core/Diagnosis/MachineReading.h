#pragma once

#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/Clock.h"
#include "Core/Platform/Kernel.h"
#include "Core/Platform/ProcessSample.h"
#include "Core/Platform/ProgramKnowledge.h"
#include "Core/Platform/ToolRunner.h"
#include "Core/Sampling/MemoryStats.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Sampling/SystemSignals.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet {

/// Everything that one look at the machine gives, unsmoothed.
struct MachineReading {
    Snapshot snapshot;
    std::vector<ProcessGroup> groups;
    SystemSignals signals;
    std::unordered_map<std::string, Explanation> explanations; ///< by group id
    MemoryBreakdown memory;
};

/// Whether `readMachine` explains each group, too.
enum class Explaining { no, yes };

/// Reads the process table and the machine's signals, measured against `previous`. Blocks; runs on
/// a background thread. `knowledge` is asked about each group, and null on a machine that tells
/// nothing of its programs. Throws what `PSProcessSource::sample` throws.
MachineReading readMachine(ToolRunner& tools, Kernel& kernel, Clock& clock,
                           const std::optional<Snapshot>& previous, const ProcessCatalog& catalog,
                           Explaining explaining, ProgramKnowledge* knowledge = nullptr);

} // namespace pacelet
