#include "tools/pacelet-report/LiveLook.h"

#include "Core/Sampling/PSProcessSource.h"

#include <optional>
#include <thread>

namespace pacelet::report {

Look lookAtMachine(ToolRunner& tools, Kernel& kernel, Clock& clock, const ProcessCatalog& catalog) {
    const std::optional<Snapshot> first = PSProcessSource{tools, clock}.sample();
    std::this_thread::sleep_for(betweenLooks);
    Look look;
    look.reading = readMachine(tools, kernel, clock, first, catalog, Explaining::no);
    look.lowPowerMode = kernel.isLowPowerModeEnabled();
    look.now = clock.now();
    return look;
}

} // namespace pacelet::report
