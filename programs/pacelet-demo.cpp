// Shows the window on a simulated Mac, whose time passes as ours does.

#include "Core/Support/StandardStreams.h"
#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Application/Program.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <exception>
#include <string>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

int explainUsage() {
    StandardStreams::complain(fmt::format("usage: pacelet-demo SCENARIO\nscenarios: {}",
                                          fmt::join(Simulated::scenarioNames(), ", ")));
    return statusUsage;
}

int showScenario(int argc, char** argv) {
    const auto names = Simulated::scenarioNames();
    if (argc != 2 || std::ranges::find(names, argv[1]) == names.end()) {
        return explainUsage();
    }
    const std::string scenario = argv[1];
    auto display = Linux::chooseDisplay();
    if (!display) {
        StandardStreams::complain("pacelet-demo: there is no display here; start it in a desktop "
                                  "session or under xvfb-run.");
        return statusUnavailable;
    }
    qputenv("QT_QPA_PLATFORM", display->plugin.c_str());
    // First, so that a signal finds it there and the folders of the machine are taken away.
    Program program{argc, argv};
    display->connection.reset();
    const auto mac = Simulated::makeScenario(scenario);
    mac->machine.followRealTime();
    return program.run(mac->platform());
}

} // namespace

int main(int argc, char** argv) {
    StandardStreams::secure();
    try {
        return showScenario(argc, argv);
    } catch (const std::exception& error) {
        StandardStreams::complain(std::string{"pacelet-demo: "} + error.what());
        return statusUnavailable;
    }
}
