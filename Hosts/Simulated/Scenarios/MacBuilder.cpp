#include "Hosts/Simulated/Scenarios/MacBuilder.h"

#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"
#include "Hosts/Simulated/Scenarios/Background.h"

#include <algorithm>
#include <numbers>
#include <utility>
#include <vector>

namespace pacelet::Simulated {

namespace {

constexpr std::string_view indexWorker = "mdworker_shared";

// What macOS itself holds is about half as much where there is half of the memory.
constexpr double fullBackgroundMemory = 16;

std::int64_t bytes(double megabytes) {
    return static_cast<std::int64_t>(megabytes * static_cast<double>(mebibyte));
}

/// Ends one of the workers and starts the next in its place, as the indexer does all day.
void replaceWorker(World& world, std::int32_t pid, Seconds lifetime) {
    const Process* const old = world.processes.find(pid);
    if (old == nullptr) {
        return;
    }
    Process next = *old;
    world.processes.end(pid);
    next.pid = 0;
    next.cpuTimeBefore = Seconds{0};
    next.since = world.time.awake;
    const std::int32_t nextPid = world.processes.spawn(std::move(next)).pid;
    world.events.add(world.time.awake + lifetime, [nextPid, lifetime](World& later) {
        replaceWorker(later, nextPid, lifetime);
    });
}

} // namespace

MacBuilder::MacBuilder(std::uint64_t seed)
    : random_{seed} {
    world_.seed = seed;
}

void MacBuilder::boot(const Hardware& hardware, Seconds uptime) {
    world_.hardware = hardware;
    world_.vitals.bootTime = world_.time.wall - uptime;
    world_.vitals.diskFree = hardware.diskBytes * 45 / 100;
    world_.displays = {{1, 2560, {1280, 1440, 1680, 2048, 2560}}};
    startBackground();
    startIndexWorkers();
    listAgents();
}

Process& MacBuilder::add(Process process, double cpuPercent, double megabytes) {
    const double age = world_.uptime().count();
    process.load = {.percent = cpuPercent * random_.uniform(0.8, 1.2),
                    .swing = random_.uniform(0.1, 0.4),
                    .period = Seconds{random_.uniform(20, 90)},
                    .phase = random_.uniform(0, 2 * std::numbers::pi)};
    process.since = world_.time.awake;
    process.cpuTimeBefore =
        Seconds{age * process.load.percent / 100 * random_.uniform(0.2, 0.6) + 0.03};
    process.footprint = bytes(megabytes * random_.uniform(0.9, 1.1));
    process.resident = bytes(megabytes * random_.uniform(1.1, 1.5));
    return world_.processes.spawn(std::move(process));
}

Process& MacBuilder::process(User user, std::string path, double cpuPercent, double megabytes) {
    Process process;
    process.user = user;
    process.path = std::move(path);
    return add(std::move(process), cpuPercent, megabytes);
}

void MacBuilder::startBackground() {
    const double memory = static_cast<double>(world_.hardware.memoryBytes) /
                          static_cast<double>(gibibyte) / fullBackgroundMemory;
    const double scale = std::clamp(memory, 0.55, 1.0);
    for (const auto& kinds : {systemDaemons(), userAgents()}) {
        for (const BackgroundProcess& kind : kinds) {
            for (int count = 0; count < kind.count; ++count) {
                Process process;
                process.user = kind.user;
                process.path = kind.path;
                if (kind.path == "/sbin/launchd") {
                    process.pid = 1;
                }
                process.ppid = process.pid == 1 || kind.path == "kernel_task" ? 0 : 1;
                add(std::move(process), kind.cpuPercent, kind.megabytes * scale);
            }
        }
    }
    const std::int32_t server = world_.processes.find("WindowServer")->pid;
    const std::int32_t dock = world_.processes.find("Dock")->pid;
    const std::int32_t center = world_.processes.find("ControlCenter")->pid;
    world_.windows = {{server, "Window Server", 24},
                      {center, "Control Center", 25},
                      {center, "Control Center", 25},
                      {dock, "Dock", 20},
                      {dock, "Dock", -2147483624}};
}

void MacBuilder::startIndexWorkers() {
    for (const Process& process : world_.processes.all()) {
        if (process.name() == indexWorker) {
            const Seconds lifetime{random_.uniform(90, 400)};
            const std::int32_t pid = process.pid;
            world_.events.add(
                lifetime, [pid, lifetime](World& later) { replaceWorker(later, pid, lifetime); });
        }
    }
}

void MacBuilder::listAgents() {
    for (const BackgroundProcess& agent : userAgents()) {
        if (agent.count == 1) {
            world_.jobs.push_back({"com.apple." + std::string{lastPathComponent(agent.path)},
                                   std::string{agent.path}});
        }
    }
    for (const std::string_view idle : {"SafariHistoryServiceAgent", "quicklook", "ReportPanic",
                                        "mbfloagent", "printuitool.agent", "AddressBook.abd"}) {
        world_.jobs.push_back({"com.apple." + std::string{idle}, {}});
    }
}

void MacBuilder::install(const AppPlan& plan) {
    world_.installed.push_back({plan.name, plan.bundleIdentifier, plan.folder + plan.name + ".app",
                                plan.policy, bytes(plan.megabytes)});
}

RunningApp& MacBuilder::run(const AppPlan& plan) {
    install(plan);
    RunningApp app;
    app.number = ++world_.lastAppNumber;
    app.bundle = world_.installed.back();
    Process main;
    main.user = ann;
    main.path = app.bundle.executable();
    main.application = app.number;
    app.mainPid = add(std::move(main), plan.cpuPercent, plan.megabytes).pid;
    for (int window = 0; window < plan.windows; ++window) {
        world_.windows.insert(world_.windows.begin(), ScreenWindow{app.mainPid, plan.name, 0});
    }
    world_.jobs.push_back(
        {"application." + plan.bundleIdentifier + "." + std::to_string(app.mainPid),
         app.bundle.executable()});
    world_.running.push_back(std::move(app));
    return world_.running.back();
}

std::int32_t MacBuilder::help(const RunningApp& app, const HelperPlan& plan) {
    std::int32_t first = 0;
    for (int count = 0; count < plan.count; ++count) {
        Process helper;
        helper.user = ann;
        helper.ppid = app.mainPid;
        helper.path =
            app.bundle.path + "/" + plan.folder + plan.name + ".app/Contents/MacOS/" + plan.name;
        helper.arguments = plan.arguments;
        helper.application = app.number;
        const std::int32_t pid = add(std::move(helper), plan.cpuPercent, plan.megabytes).pid;
        first = first == 0 ? pid : first;
    }
    return first;
}

void MacBuilder::work(std::string_view name, const Load& load) {
    std::vector<Process*> workers;
    for (Process& process : world_.processes.all()) {
        if (process.name() == name) {
            workers.push_back(&process);
        }
    }
    precondition(!workers.empty(), "a scenario gives work to a process that does not run");
    const auto share = static_cast<double>(workers.size());
    for (Process* const worker : workers) {
        Load own = load;
        own.percent /= share;
        own.percentAfter /= share;
        own.phase = worker->load.phase;
        worker->setLoad(own, world_.time.awake);
    }
}

void MacBuilder::transfer(std::string_view name, std::int64_t in, std::int64_t out) {
    const Process* const process = world_.processes.find(name);
    precondition(process != nullptr, "a scenario lets a process transfer that does not run");
    world_.network.traffic.push_back({process->pid, in, out});
}

void MacBuilder::startsByItself(LaunchItem item) {
    if (item.folder != LaunchFolder::systemDaemons) {
        const std::string path = item.folder == LaunchFolder::inApplication
                                     ? "/Applications/" + item.application + ".app/" + item.program
                                     : item.program;
        world_.jobs.push_back({item.label, path});
    }
    world_.launchItems.push_back(std::move(item));
}

} // namespace pacelet::Simulated
