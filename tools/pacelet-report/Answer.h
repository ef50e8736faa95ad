#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Diagnosis/MachineReading.h"
#include "Core/Knowledge/ProcessCatalog.h"

#include <cstdint>
#include <optional>
#include <string>

namespace pacelet::report {

/// Two captured process tables, or one.
struct CapturedTables {
    std::string table;
    std::optional<std::string> later;
    Seconds apart{0};
};

/// Reads captured tables as if they came from this machine. `cores` and `uid` are not in a table;
/// the readings that are not keep their defaults.
MachineReading readCaptured(const CapturedTables& tables, std::int64_t cores, std::uint32_t uid);

/// Runs the rules over one reading.
DiagnosisResult diagnose(const MachineReading& reading, const ProcessCatalog& catalog,
                         bool lowPowerMode, TimePoint now);

} // namespace pacelet::report
