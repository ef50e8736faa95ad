// Shows the window on a simulated Mac, whose time passes as ours does.

#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Application/Program.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdio>
#include <exception>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

int explainUsage() {
    fmt::print(stderr, "usage: pacelet-demo SCENARIO\nscenarios: {}\n",
               fmt::join(Simulated::scenarioNames(), ", "));
    return statusUsage;
}

int showScenario(int argc, char** argv) {
    if (argc != 2) {
        return explainUsage();
    }
    const auto mac = Simulated::makeScenario(argv[1]);
    if (!mac) {
        return explainUsage();
    }
    const auto display = Linux::chooseDisplay();
    if (!display) {
        fmt::print(stderr, "pacelet-demo: there is no display here; start it in a desktop session "
                           "or under xvfb-run.\n");
        return statusUnavailable;
    }
    mac->machine.followRealTime();
    qputenv("QT_QPA_PLATFORM", display->c_str());
    Program program{argc, argv};
    return program.run(mac->platform());
}

} // namespace

int main(int argc, char** argv) {
    try {
        return showScenario(argc, argv);
    } catch (const std::exception& error) {
        fmt::print(stderr, "pacelet-demo: {}\n", error.what());
        return statusUnavailable;
    }
}
