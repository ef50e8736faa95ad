#include "Core/Diagnosis/MachineReading.h"

#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/MemoryReader.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Sampling/SignalReader.h"

#include <utility>

namespace pacelet {

namespace {

/// Asks the machine about the programs that stand for the groups.
void addFacts(std::vector<ProcessGroup>& groups, ProgramKnowledge& knowledge) {
    std::vector<ProgramQuestion> questions;
    questions.reserve(groups.size());
    for (const ProcessGroup& group : groups) {
        const ProcessUsage& primary = group.primary();
        questions.push_back({primary.pid, primary.path});
    }
    auto answers = knowledge.about(questions);
    auto answer = answers.begin();
    for (ProcessGroup& group : groups) {
        group.facts = std::move(*answer++);
    }
}

} // namespace

MachineReading readMachine(ToolRunner& tools, Kernel& kernel, Clock& clock,
                           const std::optional<Snapshot>& previous, const ProcessCatalog& catalog,
                           Explaining explaining, ProgramKnowledge* knowledge) {
    const std::uint32_t uid = kernel.getuid();
    MachineReading reading;
    reading.snapshot = PSProcessSource{tools, clock}.sample();
    std::vector<ProcessUsage> usages = CPUMeter::usage(
        previous, reading.snapshot, MemoryReader::ownProcesses(kernel, reading.snapshot, uid));
    const double total = CPUMeter::total(usages);
    reading.groups = AppGrouper::group(std::move(usages), uid);
    if (knowledge != nullptr) {
        addFacts(reading.groups, *knowledge);
    }
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
