#pragma once

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Platform/Platform.h"
#include "Core/Sampling/BusyTracker.h"
#include "programs/pacelet-report/Answer.h"

#include <utility>

namespace pacelet::report {

/// Looks at one machine again and again, each look measured against the one before.
class Watch {
public:
    Watch(Platform machine, const ProcessCatalog& catalog)
        : machine_{std::move(machine)},
          catalog_{catalog} {}

    /// Throws what `readMachine` throws.
    Look look();

private:
    const Platform machine_;
    const ProcessCatalog& catalog_;
    std::optional<Snapshot> previous_;
    BusyTracker spotlight_;
};

} // namespace pacelet::report
