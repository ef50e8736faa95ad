#include "Hosts/Simulated/SimulatedMac.h"

#include "Hosts/Simulated/Scenarios/Scenarios.h"

#include <algorithm>
#include <utility>

namespace pacelet::Simulated {

SimulatedMac::SimulatedMac(World world)
    : machine{std::move(world)},
      folders_{*machine.lock()} {}

Platform SimulatedMac::platform() {
    return {machine, tools,           kernel,          workspace,
            network, windowServer,    loginItems,      preferences,
            log,     folders_.home(), folders_.root(), folders_.applicationSupport()};
}

void SimulatedMac::sleepFor(Seconds span) {
    workspace.sleep();
    machine.advance(span);
    workspace.wake();
}

void SimulatedMac::fillLargeFolders() {
    const std::vector<LargeFolder> folders = machine.lock()->largeFolders;
    for (const LargeFolder& folder : folders) {
        folders_.fill(folder);
    }
}

std::vector<std::string_view> scenarioNames() {
    std::vector<std::string_view> names;
    for (const Scenarios::Scenario& scenario : Scenarios::all) {
        names.push_back(scenario.name);
    }
    return names;
}

std::unique_ptr<SimulatedMac> makeScenario(std::string_view name, std::uint64_t seed) {
    const auto found =
        std::find_if(Scenarios::all.begin(), Scenarios::all.end(),
                     [name](const Scenarios::Scenario& scenario) { return scenario.name == name; });
    if (found == Scenarios::all.end()) {
        return nullptr;
    }
    MacBuilder builder{seed};
    found->build(builder);
    return std::make_unique<SimulatedMac>(builder.finish());
}

} // namespace pacelet::Simulated
