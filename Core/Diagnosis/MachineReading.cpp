#include "Core/Diagnosis/MachineReading.h"

#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/MemoryReader.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Sampling/SignalReader.h"

#include <utility>

namespace pacelet {

MachineReading readMachine(ToolRunner& tools, Kernel& kernel, Clock& clock,
                           const std::optional<Snapshot>& previous, const ProcessCatalog& catalog,
                           Explaining explaining) {
    const std::uint32_t uid = kernel.getuid();
    MachineReading reading;
    reading.snapshot = PSProcessSource{tools, clock}.sample();
    std::vector<ProcessUsage> usages = CPUMeter::usage(
        previous, reading.snapshot, MemoryReader::ownProcesses(kernel, reading.snapshot, uid));
    const double total = CPUMeter::total(usages);
    reading.groups = AppGrouper::group(std::move(usages), uid);
    if (explaining == Explaining::yes) {
        reading.explanations.reserve(reading.groups.size());
        for (const ProcessGroup& group : reading.groups) {
            reading.explanations.insert_or_assign(group.id, catalog.explain(group));
        }
    }
    reading.signals = SignalReader::read(kernel, clock, total);
    reading.memory = MemoryStats::read(kernel);
    return reading;
}

} // namespace pacelet
