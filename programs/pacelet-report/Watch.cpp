#include "programs/pacelet-report/Watch.h"

namespace pacelet::report {

Look Watch::look() {
    Look look;
    look.system = machine_.system;
    look.abilities = machine_.abilities;
    look.reading = readMachine(machine_.tools, machine_.kernel, machine_.clock, previous_, catalog_,
                               Explaining::no, machine_.knowledge);
    look.now = machine_.clock.now();
    look.lowPowerMode = machine_.kernel.isLowPowerModeEnabled();
    look.spotlightBusySince =
        spotlight_.update(Diagnosis::spotlightLoad(look.reading.groups), look.now);
    previous_ = look.reading.snapshot;
    return look;
}

} // namespace pacelet::report
