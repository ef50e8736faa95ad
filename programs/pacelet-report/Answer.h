#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Diagnosis/MachineReading.h"
#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/ProcessCatalog.h"

#include <optional>

namespace pacelet::report {

/// A reading, with what the rules need beside it.
struct Look {
    MachineReading reading;
    std::optional<TimePoint> spotlightBusySince{};
    bool lowPowerMode = false;
    TimePoint now{};
    OperatingSystem system = OperatingSystem::macOS; ///< of the machine that it is of
    HostAbilities abilities{};                       ///< likewise
    Report::Known known{};                           ///< what of the reading is more than a default
};

/// How far apart the two looks at a machine are.
inline constexpr Seconds betweenLooks{3};

/// Runs the rules over one look.
DiagnosisResult diagnose(const Look& look, const ProcessCatalog& catalog);

} // namespace pacelet::report
