#include "programs/pacelet-report/LiveLook.h"

#include "Core/Sampling/PSProcessSource.h"

#include <optional>
#include <thread>

namespace pacelet::report {

Look lookAtMachine(const Platform& machine, const ProcessCatalog& catalog) {
    const std::optional<Snapshot> first = PSProcessSource{machine.tools, machine.clock}.sample();
    // How pages are shared is sampled from when a process is first asked for its memory.
    for (const ProcessSample& process : first->processes) {
        machine.kernel.physFootprint(process.pid);
    }
    std::this_thread::sleep_for(betweenLooks);
    Look look;
    look.system = machine.system;
    look.abilities = machine.abilities;
    look.reading = readMachine(machine.tools, machine.kernel, machine.clock, first, catalog,
                               Explaining::no, machine.knowledge);
    look.lowPowerMode = machine.kernel.isLowPowerModeEnabled();
    look.now = machine.clock.now();
    return look;
}

} // namespace pacelet::report
