#include "tools/torture/Nature.h"

#include "Core/Support/Text.h"
#include "tools/torture/Draw.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace pacelet::torture::Nature {

namespace {

using namespace Simulated;

/// Those whose work a rule speaks of.
constexpr std::array<std::string_view, 9> noted{"mds_stores",     "mds",          "corespotlightd",
                                                "photoanalysisd", "WindowServer", "kernel_task",
                                                "Safari",         "Slack",        "Mail"};

std::string work(World& world, Random& random) {
    Process* process =
        random.integer(0, 2) == 0 ? nullptr : world.processes.find(anyOf(random, noted));
    if (process == nullptr) {
        process = &anyOf(random, world.processes.all());
    }
    constexpr std::array loads{0.5, 20.0, 55.0, 95.0, 250.0, 700.0};
    const double percent = anyOf(random, loads) * random.uniform(0.8, 1.2);
    process->setLoad({.percent = percent, .swing = random.uniform(0, 0.1)}, world.time.awake);
    return fmt::format("{} works at {:.0f}%", process->name(), percent);
}

std::string memory(World& world, Random& random) {
    Process& process = anyOf(random, world.processes.all());
    process.footprint = static_cast<std::int64_t>(random.uniform(1, 6000)) * mebibyte;
    process.resident = process.footprint + process.footprint / 4;
    constexpr std::array levels{1, 1, 2, 4};
    world.vitals.pressureLevel = anyOf(random, levels);
    world.vitals.swapUsed = random.integer(0, 8) * gibibyte;
    return fmt::format("{} holds {} MB, pressure {}, swap {} GB", process.name(),
                       process.footprint / mebibyte, world.vitals.pressureLevel,
                       world.vitals.swapUsed / gibibyte);
}

std::string vitals(World& world, Random& random) {
    constexpr std::array states{0, 0, 0, 1, 2, 3};
    world.vitals.thermalState = anyOf(random, states);
    world.vitals.diskFree = static_cast<std::int64_t>(
        random.uniform(0, 0.3) * static_cast<double>(world.hardware.diskBytes));
    world.vitals.lowPower = random.integer(0, 3) == 0;
    return fmt::format("heat {}, {} GB free, low power {}", world.vitals.thermalState,
                       world.vitals.diskFree / gigabyte, world.vitals.lowPower);
}

std::string calm(World& world, Random& random) {
    for (Process& process : world.processes.all()) {
        process.setLoad({.percent = random.uniform(0, 0.4)}, world.time.awake);
    }
    world.vitals = {.diskFree = world.hardware.diskBytes / 2, .bootTime = world.vitals.bootTime};
    return "all is calm";
}

std::string startSomething(World& world, Random& random) {
    const InstalledApp& bundle = anyOf(random, world.installed);
    RunningApp& app = launch(world, bundle);
    constexpr std::array habits{QuitHabit::obeys, QuitHabit::obeys, QuitHabit::resists,
                                QuitHabit::hangs};
    app.habit = anyOf(random, habits);
    app.quitDelay = Seconds{random.uniform(0, 14)};
    return fmt::format("{} starts, quits after {:.0f} s, habit {}", app.bundle.name,
                       app.quitDelay.count(), static_cast<int>(app.habit));
}

/// Somebody else is logged in, too, and uses the same applications.
std::string foreign(World& world, Random& random) {
    constexpr User ben{502, "ben"};
    Process process;
    process.user = ben;
    process.path = random.integer(0, 1) == 0 ? anyOf(random, world.installed).executable()
                                             : "/opt/tools/compile job (x)";
    process.load.percent = random.uniform(0, 300);
    process.since = world.time.awake;
    process.footprint = process.resident = random.integer(1, 4000) * mebibyte;
    const std::string name{process.name()};
    world.processes.spawn(std::move(process));
    return "ben runs " + name;
}

std::string endSomething(World& world, Random& random) {
    if (!world.running.empty() && random.integer(0, 1) == 0) {
        const RunningApp app = anyOf(random, world.running);
        endApplication(world, app.number);
        return app.bundle.name + " ends";
    }
    auto& all = world.processes.all();
    const std::int32_t pid = anyOf(random, all).pid;
    // The kernel and the first process never end, nor does what an application is listed by.
    const Process& process = *world.processes.find(pid);
    if (pid <= 1 || process.application) {
        return "nothing ends";
    }
    const std::string name{process.name()};
    world.processes.end(pid);
    return name + " ends";
}

std::string network(World& world, Random& random) {
    Network& network = world.network;
    network.path = {random.integer(0, 3) != 0, true, false};
    network.wifi.reset();
    if (random.integer(0, 3) != 0) {
        network.wifi = WiFi{random.integer(-90, -40), -92, random.uniform(1, 900),
                            static_cast<int>(random.integer(1, 3))};
    }
    network.line = {random.uniform(0, 9e8), random.uniform(0, 9e7), random.uniform(1, 2000),
                    random.uniform(1, 400)};
    network.traffic.clear();
    for (int count = 0; count < 6; ++count) {
        network.traffic.push_back({anyOf(random, world.processes.all()).pid,
                                   random.integer(0, 4'000'000), random.integer(0, 900'000)});
    }
    return "another network";
}

std::string tabs(World& world, Random& random) {
    for (auto& [identifier, browser] : world.browsers) {
        if (!browser.windows.empty() && random.integer(0, 1) == 0) {
            browser.closeWindow(anyOf(random, browser.windows).id);
        }
        TabWindow& window = browser.openWindow();
        for (int count = 0; count < 3; ++count) {
            browser.openTab(window, fmt::format("https://example.com/{}", random.integer(0, 9)));
        }
    }
    for (const auto& browser : world.browsers) {
        settle(world, browser.first);
    }
    world.displays.resize(static_cast<std::size_t>(random.integer(0, 3)),
                          Display{7, 2048, {1280, 2048, 2560}});
    return fmt::format("tabs come and go, {} displays", world.displays.size());
}

} // namespace

std::string change(SimulatedMac& mac, Random& random) {
    const auto world = mac.machine.lock();
    constexpr std::array changes{work,    work,         work,           memory,
                                 vitals,  calm,         startSomething, startSomething,
                                 foreign, endSomething, network,        tabs};
    return anyOf(random, changes)(*world, random);
}

std::string setClock(SimulatedMac& mac, Random& random) {
    using namespace std::chrono;
    const TimePoint now = mac.machine.now();
    const auto day = floor<std::chrono::days>(sys_seconds{seconds{std::llround(unixTime(now))}});
    const year_month_day date{day};
    Seconds by{0};
    switch (random.integer(0, 3)) {
    case 0:
        by = Seconds{random.uniform(-7200, 7200)};
        break;
    case 1:
        by = Seconds{random.uniform(-3 * 86400.0, 3 * 86400.0)};
        break;
    case 2:
        by = fromUnixTime(
                 static_cast<double>((day + std::chrono::days{1}).time_since_epoch().count()) *
                 86400) -
             now;
        break;
    default:
        by = fromUnixTime(static_cast<double>(sys_days{(date.year() / date.month() / 1) + months{1}}
                                                  .time_since_epoch()
                                                  .count()) *
                          86400) -
             now;
        break;
    }
    by -= Seconds{random.uniform(0, 40)};
    mac.machine.jumpWallClock(by);
    return fmt::format("the clock is set by {:.1f} s", by.count());
}

std::string fail(SimulatedMac& mac, VirtualScheduler& scheduler, const std::string& history,
                 Random& random) {
    if (random.integer(0, 5) == 0) {
        const Seconds duration{std::exp(random.uniform(-2, 7))};
        scheduler.setBackgroundDuration(duration);
        return fmt::format("all work takes {:.1f} s", duration.count());
    }
    const std::array<std::string, 8> tools{"/bin/ps",
                                           "/bin/ps",
                                           "/bin/launchctl",
                                           "/usr/bin/osascript",
                                           "/usr/bin/networkQuality",
                                           "/usr/bin/nettop",
                                           "/usr/sbin/system_profiler",
                                           ""};
    const std::array<std::string, 5> rubbish{"", "\xff\xfe rubbish\n", "{\"SPHardwareDataType\":[{",
                                             "  1 0 0 root 0:00.00 1 0.0 /sbin/launchd\n",
                                             std::string(9000, ',')};
    const std::array<std::string, 4> sysctls{"", "vm.swapusage", "kern.boottime",
                                             "kern.memorystatus_vm_pressure_level"};
    const std::string& tool = anyOf(random, tools);
    const std::array<Failure, 18> all{
        ToolMissing{tool},
        ToolNotPermitted{tool},
        ToolFails{tool, 1, "it failed\n"},
        ToolPrints{tool, anyOf(random, rubbish)},
        ToolHangs{tool},
        ToolTakes{tool, Seconds{random.uniform(5, 400)}},
        AutomationRefused{},
        PromptCancelled{},
        ScriptFails{static_cast<std::int32_t>(random.integer(-2800, -1)), "Something is wrong."},
        FolderUnwritable{history},
        SysctlFails{anyOf(random, sysctls)},
        StatisticsFail{},
        FootprintFails{},
        VolumeUnreadable{},
        LoginItemsRefuse{},
        NothingOpens{},
        WindowsUnknown{},
        DisplaysUnknown{}};
    const Failure& failure = anyOf(random, all);
    if (std::holds_alternative<ToolHangs>(failure) || std::holds_alternative<ToolTakes>(failure)) {
        scheduler.useThreads(true);
    }
    mac.machine.inject(failure);
    return fmt::format("failure {} of {}", failure.index(), tool);
}

std::string mend(SimulatedMac& mac, VirtualScheduler& scheduler) {
    mac.machine.clearFailures();
    scheduler.release();
    scheduler.useThreads(false);
    scheduler.setBackgroundDuration(Seconds{0});
    return "all failures end";
}

} // namespace pacelet::torture::Nature
