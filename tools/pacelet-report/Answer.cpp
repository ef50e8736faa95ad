#include "tools/pacelet-report/Answer.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/CPUMeter.h"
#include "Core/Sampling/PSParser.h"

#include <utility>

namespace pacelet::report {

MachineReading readCaptured(const CapturedTables& tables, std::int64_t cores, std::uint32_t uid) {
    std::optional<Snapshot> previous;
    MachineReading reading;
    if (tables.later) {
        previous = Snapshot{TimePoint{}, PSParser::parse(tables.table)};
        reading.snapshot = {TimePoint{tables.apart}, PSParser::parse(*tables.later)};
    } else {
        reading.snapshot = {TimePoint{}, PSParser::parse(tables.table)};
    }
    const auto noFootprint = [](std::int32_t) { return std::optional<std::int64_t>{}; };
    std::vector<ProcessUsage> usages = CPUMeter::usage(previous, reading.snapshot, noFootprint);
    const double total = CPUMeter::total(usages);
    reading.groups = AppGrouper::group(std::move(usages), uid);
    reading.signals.coreCount = cores;
    reading.signals.cpuLoadPercent = SystemSignals::cpuLoad(total, cores);
    return reading;
}

DiagnosisResult diagnose(const Look& look, const ProcessCatalog& catalog) {
    DiagnosisInput input;
    input.signals = look.reading.signals;
    input.groups = look.reading.groups;
    input.spotlightBusySince = look.spotlightBusySince;
    input.lowPowerMode = look.lowPowerMode;
    input.now = look.now;
    return Diagnosis::run(input, catalog);
}

} // namespace pacelet::report
