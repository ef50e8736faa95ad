#include "Hosts/Simulated/Model/World.h"

#include <algorithm>
#include <utility>

namespace pacelet::Simulated {

void passTime(World& world, Seconds span) {
    if (world.time.asleep) {
        world.time.pass(span);
        return;
    }
    const Seconds end = world.time.awake + span;
    while (auto due = world.events.takeDue(end)) {
        world.time.pass(std::max(due->first - world.time.awake, Seconds{0}));
        due->second(world);
    }
    world.time.pass(end - world.time.awake);
}

RunningApp& launch(World& world, const InstalledApp& bundle) {
    Process process;
    process.user = ann;
    process.path = bundle.executable();
    process.footprint = bundle.footprint;
    process.resident = bundle.footprint + bundle.footprint / 4;
    process.load = {.percent = 1.5, .swing = 0.5};
    process.since = world.time.awake;
    const int number = ++world.lastAppNumber;
    process.application = number;
    const std::int32_t pid = world.processes.spawn(std::move(process)).pid;
    world.windows.insert(world.windows.begin(), ScreenWindow{pid, bundle.name, 0});
    RunningApp app;
    app.number = number;
    app.bundle = bundle;
    app.mainPid = pid;
    world.running.push_back(std::move(app));
    return world.running.back();
}

RunningApp* findRunning(World& world, int number) {
    const auto found =
        std::find_if(world.running.begin(), world.running.end(),
                     [number](const RunningApp& app) { return app.number == number; });
    return found != world.running.end() ? &*found : nullptr;
}

const InstalledApp* findInstalled(const World& world, std::string_view bundleIdentifier) {
    const auto found =
        std::find_if(world.installed.begin(), world.installed.end(), [&](const InstalledApp& app) {
            return app.bundleIdentifier == bundleIdentifier;
        });
    return found != world.installed.end() ? &*found : nullptr;
}

void endApplication(World& world, int number) {
    const RunningApp* const app = findRunning(world, number);
    if (app == nullptr) {
        return;
    }
    const std::string identifier = app->bundle.bundleIdentifier;
    auto& processes = world.processes.all();
    const auto gone = [&](std::int32_t pid) {
        const Process* const process = world.processes.find(pid);
        return process == nullptr || process->application == number;
    };
    std::erase_if(world.windows, [&](const ScreenWindow& window) { return gone(window.pid); });
    std::erase_if(world.network.traffic, [&](const Traffic& traffic) { return gone(traffic.pid); });
    std::erase_if(processes,
                  [number](const Process& process) { return process.application == number; });
    std::erase_if(world.running,
                  [number](const RunningApp& each) { return each.number == number; });
    const bool stillRuns =
        std::any_of(world.running.begin(), world.running.end(), [&](const RunningApp& each) {
            return each.bundle.bundleIdentifier == identifier;
        });
    if (!stillRuns) {
        world.browsers.erase(identifier);
    }
}

namespace {

/// Ends the application after its delay, once, however often it is asked.
void quitSoon(World& world, RunningApp& app) {
    if (std::exchange(app.quitting, true)) {
        return;
    }
    const int number = app.number;
    if (app.quitDelay <= Seconds{0}) {
        endApplication(world, number);
        return;
    }
    world.events.add(world.time.awake + app.quitDelay,
                     [number](World& later) { endApplication(later, number); });
}

} // namespace

bool requestQuit(World& world, int number) {
    RunningApp* const app = findRunning(world, number);
    if (app == nullptr) {
        return false;
    }
    if (app->habit == QuitHabit::obeys) {
        quitSoon(world, *app);
    }
    return true;
}

bool forceQuit(World& world, int number) {
    const RunningApp* const app = findRunning(world, number);
    if (app == nullptr) {
        return false;
    }
    if (app->habit != QuitHabit::hangs) {
        endApplication(world, number);
    }
    return true;
}

} // namespace pacelet::Simulated
