#pragma once

#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/Scheduler/VirtualScheduler.h"
#include "tests/PaceletApp/Support/Matchers.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet::testing {

inline Simulated::Process process(const Simulated::User& user, std::string path, double percent) {
    Simulated::Process made;
    made.user = user;
    made.path = std::move(path);
    made.load.percent = percent;
    made.footprint = 200 << 20;
    made.resident = 100 << 20;
    return made;
}

/// A Mac of a handful of processes with steady loads: one application with a helper, Spotlight, and
/// an agent that a property list defines.
inline Simulated::World smallMac() {
    using namespace Simulated;
    World world;
    world.vitals.bootTime = world.time.wall - Seconds{86400};
    world.vitals.diskFree = world.hardware.diskBytes / 2;
    const InstalledApp notes{"Notes", "com.apple.Notes", "/Applications/Notes.app"};
    world.installed.push_back(notes);
    RunningApp& app = launch(world, notes);
    world.processes.find(app.mainPid)->load = {.percent = 20};
    Process helper = process(ann, "/Applications/Notes.app/Contents/Frameworks/Helper", 10);
    helper.application = app.number;
    world.processes.spawn(helper);
    world.processes.spawn(process(root, "/System/Library/Frameworks/Spotlight/mds_stores", 5));
    world.processes.spawn(process(ann, "/usr/local/bin/agent", 1));
    world.launchItems.push_back({.folder = LaunchFolder::userAgents,
                                 .label = "com.example.agent",
                                 .program = "/usr/local/bin/agent",
                                 .application = {}});
    return world;
}

/// One entry for Spotlight's store.
inline ProcessCatalog smallCatalog() {
    CatalogEntry entry;
    entry.id = "spotlight";
    entry.match.names = {"mds_stores"};
    entry.title = "Spotlight";
    return {{entry}};
}

/// A monitor on a simulated Mac in virtual time.
class MonitorRig : public ::testing::Test {
protected:
    void make(const std::optional<ProcessCatalog>& catalog = smallCatalog()) {
        monitor = std::make_unique<Monitor>(mac.platform(), scheduler, catalog);
    }

    /// Starts, and lets the first tick end.
    void startUp() {
        make();
        monitor->start();
        scheduler.settle();
    }

    void advance(double seconds) { scheduler.advance(Seconds{seconds}); }

    void sleepMachine(double seconds) {
        mac.workspace.sleep();
        advance(seconds);
        mac.workspace.wake();
        scheduler.settle();
    }

    /// How often a tool has been run.
    std::int64_t calls(std::string_view tool) {
        return mac.machine.lock()->records.toolCalls[std::string{tool}];
    }
    std::int64_t samples() { return calls("/bin/ps"); }

    void setLoad(std::string_view name, double percent) {
        const auto world = mac.machine.lock();
        world->processes.find(name)->setLoad({.percent = percent}, world->time.awake);
    }

    void quit(std::string_view name) {
        const auto world = mac.machine.lock();
        const auto app = std::ranges::find(world->running, name, [](const auto& running) {
            return std::string_view{running.bundle.name};
        });
        Simulated::endApplication(*world, app->number);
    }

    std::vector<std::string> logged() {
        std::vector<std::string> lines;
        for (const Simulated::LogMessage& message : mac.machine.lock()->records.log) {
            EXPECT_EQ(message.level, LogLevel::error);
            EXPECT_EQ(message.subsystem, "app.pacelet.Pacelet");
            EXPECT_EQ(message.category, "monitor");
            lines.push_back(message.message);
        }
        return lines;
    }

    double cpuOf(const std::string& id) const { return monitor->group(id)->cpuPercent; }

    Simulated::SimulatedMac mac{smallMac()};
    VirtualScheduler scheduler{mac.machine, [this](Seconds span) { mac.machine.advance(span); }};
    std::unique_ptr<Monitor> monitor;

    const std::string notes = "/Applications/Notes.app";
};

/// The sets of fields that the monitor told of, in the order in which they came.
class Notifications : public QObject {
public:
    explicit Notifications(Monitor& monitor) {
        connect(&monitor, &Monitor::changed, this,
                [this](const Fields& fields) { told.push_back(fields); });
    }

    std::vector<Fields> take() { return std::exchange(told, {}); }

    std::vector<Fields> told;
};

} // namespace pacelet::testing
