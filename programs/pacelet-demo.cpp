// Shows the window on a simulated Mac, whose time passes as ours does, or on a captured machine.

#include "Core/Support/StandardStreams.h"
#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Application/Program.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

int explainUsage() {
    StandardStreams::complain(fmt::format("usage: pacelet-demo SCENARIO | FILE\nscenarios: {}",
                                          fmt::join(Simulated::scenarioNames(), ", ")));
    return statusUsage;
}

int showWindow(int argc, char** argv) {
    const auto names = Simulated::scenarioNames();
    if (argc != 2 || *argv[1] == '-') {
        return explainUsage();
    }
    const std::string wanted = argv[1];
    const bool isScenario = std::ranges::find(names, wanted) != names.end();
    std::optional<Recorded::Capture> capture;
    if (!isScenario) {
        try {
            capture = Recorded::CaptureFile::read(wanted);
        } catch (const Recorded::CaptureError& error) {
            StandardStreams::complain(fmt::format("pacelet-demo: {} {}", wanted, error.what()));
            return std::filesystem::exists(wanted) ? statusUsage : explainUsage();
        }
    }
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
    if (capture) {
        Recorded::Replay replay{*std::move(capture)};
        replay.followRealTime();
        return program.run(replay.platform());
    }
    const auto mac = Simulated::makeScenario(wanted);
    mac->machine.followRealTime();
    return program.run(mac->platform());
}

} // namespace

int main(int argc, char** argv) {
    StandardStreams::secure();
    try {
        return showWindow(argc, argv);
    } catch (const std::exception& error) {
        StandardStreams::complain(std::string{"pacelet-demo: "} + error.what());
        return statusUnavailable;
    }
}
