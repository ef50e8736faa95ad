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

/// A reading, with what the rules need beside it.
struct Look {
    MachineReading reading;
    std::optional<TimePoint> spotlightBusySince{};
    bool lowPowerMode = false;
    TimePoint now{};
};

/// How far apart the two looks at a machine are.
inline constexpr Seconds betweenLooks{3};

/// Runs the rules over one look.
DiagnosisResult diagnose(const Look& look, const ProcessCatalog& catalog);

} // namespace pacelet::report
