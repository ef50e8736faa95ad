#include "programs/pacelet-report/ScenarioLook.h"

#include "Hosts/Simulated/SimulatedMac.h"
#include "programs/pacelet-report/Options.h"
#include "programs/pacelet-report/Watch.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace pacelet::report {

namespace {

constexpr Seconds unattended{30};

} // namespace

Look lookAtScenario(const std::string& name, const ProcessCatalog& catalog) {
    const auto mac = Simulated::makeScenario(name);
    if (!mac) {
        throw UsageError{fmt::format("there is no scenario \"{}\", but {}", name,
                                     fmt::join(Simulated::scenarioNames(), ", "))};
    }
    Watch watch{mac->platform(), catalog};
    const auto lookAfter = [&](Seconds pause) {
        mac->machine.advance(pause);
        return watch.look();
    };
    lookAfter(unattended);
    Look first = lookAfter(betweenLooks);
    Look latest = first;
    while (latest.spotlightBusySince &&
           latest.now - *latest.spotlightBusySince <= Diagnosis::spotlightStuckAfter) {
        latest = lookAfter(unattended);
    }
    return latest.spotlightBusySince ? latest : first;
}

} // namespace pacelet::report
