#include "programs/pacelet-report/ScenarioLook.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Sampling/BusyTracker.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "programs/pacelet-report/Options.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace pacelet::report {

namespace {

constexpr Seconds unattended{30};

/// Watches one machine in virtual time.
class Watch {
public:
    Watch(Simulated::SimulatedMac& mac, const ProcessCatalog& catalog)
        : mac_{mac}, platform_{mac.platform()}, catalog_{catalog} {}

    Look lookAfter(Seconds pause) {
        mac_.machine.advance(pause);
        Look look;
        look.reading = readMachine(platform_.tools, platform_.kernel, platform_.clock, previous_,
                                   catalog_, Explaining::no);
        look.now = platform_.clock.now();
        look.lowPowerMode = platform_.kernel.isLowPowerModeEnabled();
        look.spotlightBusySince =
            spotlight_.update(Diagnosis::spotlightLoad(look.reading.groups), look.now);
        previous_ = look.reading.snapshot;
        return look;
    }

private:
    Simulated::SimulatedMac& mac_;
    const Platform platform_;
    const ProcessCatalog& catalog_;
    std::optional<Snapshot> previous_;
    BusyTracker spotlight_;
};

} // namespace

Look lookAtScenario(const std::string& name, const ProcessCatalog& catalog) {
    const auto mac = Simulated::makeScenario(name);
    if (!mac) {
        throw UsageError{fmt::format("there is no scenario \"{}\", but {}", name,
                                     fmt::join(Simulated::scenarioNames(), ", "))};
    }
    Watch watch{*mac, catalog};
    watch.lookAfter(unattended);
    Look first = watch.lookAfter(betweenLooks);
    Look latest = first;
    while (latest.spotlightBusySince &&
           latest.now - *latest.spotlightBusySince <= Diagnosis::spotlightStuckAfter) {
        latest = watch.lookAfter(unattended);
    }
    return latest.spotlightBusySince ? latest : first;
}

} // namespace pacelet::report
