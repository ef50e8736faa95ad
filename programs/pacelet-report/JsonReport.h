#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/ProcessCatalog.h"

#include <span>
#include <string>

namespace pacelet::report {

/// The facts of the text report, whole, as one JSON object. Sizes are in bytes, `cpuPercent` in
/// percent of one core, `cpuLoadPercent` in percent of the machine, `uptime` in seconds. What is
/// not known has no key.
std::string renderJson(const DiagnosisResult& result, std::span<const ProcessGroup> groups,
                       const ProcessCatalog& catalog, const SystemSignals& signals,
                       const Report::Known& known);

} // namespace pacelet::report
