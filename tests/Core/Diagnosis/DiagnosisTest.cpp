#include "Core/Diagnosis/Diagnosis.h"

#include "tests/Core/Diagnosis/ToldFindings.h"
#include "tests/Support/Processes.h"

#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {
namespace {

using testing::app;
using testing::ids;
using testing::lone;

constexpr std::int64_t GiB = std::int64_t{1} << 30;
constexpr std::int64_t decimalGB = 1'000'000'000;
constexpr double day = 86400;

const ProcessCatalog catalog{{
    {"hog", {{"hog"}, {}, {}}, "Hog", "It hogs.", "Why.", Verdict::leave, "Ends soon", {}, "g", {}},
    {"Indexer",
     {{"Indexer"}, {}, {}},
     "Indexer",
     "It indexes.",
     "Why.",
     Verdict::safe,
     {},
     {FixID::openWiFiSettings, FixID::rebuildSpotlightIndex, FixID::quitApp},
     "g",
     {}},
}};

/// A virtual machine.
ProcessGroup guest(std::int32_t pid, double load) {
    return lone(pid, std::string{Diagnosis::virtualizationPrefix} + "XPC/VirtualMachine", load);
}

/// A quiet machine that the tests upset.
struct Machine : DiagnosisInput {
    Machine() {
        signals.coreCount = 8;
        signals.diskTotalBytes = 1000 * decimalGB;
        signals.diskFreeBytes = 500 * decimalGB;
        signals.memoryTotalBytes = 16 * GiB;
        now = fromUnixTime(1'800'000'000);
    }

    Diagnosis::WeighedResult weigh() {
        groups = running;
        return Diagnosis::weigh(*this, catalog);
    }
    DiagnosisResult run() { return weigh().result; }
    void disk(std::int64_t freeGB, std::int64_t totalGB) {
        signals.diskFreeBytes = freeGB * decimalGB;
        signals.diskTotalBytes = totalGB * decimalGB;
    }
    void press(Pressure pressure, std::vector<ProcessGroup> groupsNow) {
        signals.pressure = pressure;
        running = std::move(groupsNow);
    }
    void leave(std::int64_t available) {
        signals.memoryTotalBytes = 16 * GiB;
        signals.memoryAvailableBytes = available;
    }
    void upFor(double seconds, std::int64_t swap) {
        signals.uptime = seconds;
        signals.swapUsedBytes = swap;
    }
    void index(std::optional<double> busyFor) {
        running = {lone(1, "/x/mdworker", 90), lone(2, "/x/mds_stores", 30)};
        if (busyFor) {
            spotlightBusySince = now - Seconds{*busyFor};
        }
    }
    void virtualize(std::vector<ProcessGroup> others) {
        running = {guest(1, 300)};
        running.insert(running.end(), others.begin(), others.end());
    }

    std::vector<ProcessGroup> running;
};

using Upset = std::function<void(Machine&)>;

ProcessGroup unquittable(ProcessGroup group) {
    group.quittable = false;
    return group;
}

TEST(Diagnosis, SaysWhatItFound) {
    const std::vector<ProcessGroup> eaters{lone(1, "/usr/sbin/huge", 5, 9 * GiB),
                                           app("Small", 4, GiB), app("First", 3, 3 * GiB),
                                           app("Second", 2, 3 * GiB)};
    const std::vector<ProcessGroup> analysts{lone(1, "/x/photoanalysisd", 20),
                                             lone(2, "/x/mediaanalysisd", 300)};
    const std::vector<ProcessGroup> browsers{app("Safari", 1), app("Google Chrome", 1),
                                             app("Microsoft Edge", 300, GiB, 12),
                                             app("Brave Browser", 50, 1, 1)};
    const std::pair<const char*, Upset> cases[] = {
        {"stuck app", [](auto& m) { m.stuckApp = "Photo Tool"; }},
        {"warm", [](auto& m) { m.signals.thermal = Thermal::warm; }},
        {"hot", [](auto& m) { m.signals.thermal = Thermal::hot; }},
        {"very hot", [](auto& m) { m.signals.thermal = Thermal::veryHot; }},
        {"swap", [](auto& m) { m.signals.swapUsedBytes = 4 * GiB + 1; }},
        {"memory pressure", [&](auto& m) { m.press(Pressure::elevated, eaters); }},
        {"critical pressure", [&](auto& m) { m.press(Pressure::critical, {eaters[0]}); }},
        {"memory with one who eats it",
         [&](auto& m) {
             m.press(Pressure::elevated, eaters);
             m.leave(GiB);
         }},
        {"memory with one who can be quit",
         [&](auto& m) {
             m.press(Pressure::elevated, {eaters[1], eaters[2], lone(1, "/x/larger", 0, 6 * GiB)});
             m.leave(GiB);
         }},
        {"memory that nobody eats",
         [&](auto& m) {
             m.press(Pressure::critical, {app("Tint2", 1, 16 * GiB / 10 - 1)});
             m.leave(GiB);
         }},
        {"indexing", [](auto& m) { m.index({}); }},
        {"indexing for three hours", [](auto& m) { m.index(10800); }},
        {"indexing for longer", [](auto& m) { m.index(10800.5); }},
        {"photos", [&](auto& m) { m.running = analysts; }},
        {"window server", [](auto& m) { m.running = {lone(1, "/x/WindowServer", 395)}; }},
        {"browser", [](auto& m) { m.running = {app("Google Chrome", 45, 1'500'000'000)}; }},
        {"two browsers", [&](auto& m) { m.running = browsers; }},
        {"hog of the system", [](auto& m) { m.running = {lone(1, "/x/hog", 80)}; }},
        {"hog of the user", [](auto& m) { m.running = {app("Tower", 120)}; }},
        {"hog with a fix", [](auto& m) { m.running = {app("Indexer", 120)}; }},
        {"hog left alone", [](auto& m) { m.running = {unquittable(app("Indexer", 120))}; }},
        {"two virtual machines",
         [](auto& m) {
             m.virtualize({guest(2, 250), app("Docker", 2)});
         }},
        {"host left alone", [](auto& m) { m.virtualize({unquittable(app("Docker", 2))}); }},
        {"no host", [](auto& m) { m.virtualize({lone(3, "/x/Docker", 0)}); }},
        {"disk almost full", [](auto& m) { m.disk(12, 100); }},
        {"disk getting full", [](auto& m) { m.disk(15, 151); }},
        {"large disk getting full", [](auto& m) { m.disk(40, 1000); }},
        {"disk full", [](auto& m) { m.disk(0, 1); }},
        {"low power", [](auto& m) { m.lowPowerMode = true; }},
        {"long uptime", [](auto& m) { m.upFor(15 * day, 2 * GiB + 1); }}};
    for (const auto& [name, upset] : cases) {
        Machine machine;
        upset(machine);
        const auto [found, weights] = machine.weigh();
        testing::expectTold(name, found.findings);
        for (std::size_t place = 0; place < found.findings.size(); ++place) {
            EXPECT_EQ(weights.at(place) > 0, found.findings[place].groupID().has_value()) << name;
        }
    }
}

TEST(Diagnosis, FiresFromItsThresholdsOnAndRanks) {
    const auto one = [](const std::string& path, double load) -> Upset {
        return [=](auto& m) { m.running = {lone(1, path, load)}; };
    };
    const std::tuple<const char*, Upset, std::string> cases[] = {
        {"busy, but not a hog",
         [](auto& m) {
             m.running = {app("Safari", 79.9, GiB), lone(1, "/usr/sbin/x", 20)};
         },
         ""},
        {"up for long without swap", [](auto& m) { m.signals.uptime = 400 * day; }, ""},
        {"swap at its bound", [](auto& m) { m.signals.swapUsedBytes = 4 * GiB; }, ""},
        {"swap, but memory to spare",
         [](auto& m) {
             m.signals.swapUsedBytes = 9 * GiB;
             m.leave(16 * GiB / 5);
         },
         ""},
        {"swap, and little memory to spare",
         [](auto& m) {
             m.signals.swapUsedBytes = 9 * GiB;
             m.leave(16 * GiB / 5 - 1);
             m.running = {lone(1, "/x/tenth", 0, 16 * GiB / 10)};
         },
         "memory:pid:1"},
        {"Spotlight below its bound", one("/x/mds", 49.9), ""},
        {"Spotlight at its bound", one("/x/mds", 50), "spotlight:pid:1"},
        {"names are compared exactly", one("/x/Mds", 90), "cpuHog:pid:1"},
        {"photos below their bound", one("/x/photoanalysisd", 29.9), ""},
        {"photos at their bound", one("/x/photoanalysisd", 30), "photos:pid:1"},
        {"WindowServer at its bound", one("/x/WindowServer", 40), "windowServer:pid:1"},
        {"WindowServer below its bound", one("/x/WindowServer", 39.9), ""},
        {"a browser below both bounds",
         [](auto& m) { m.running = {app("Google Chrome", 49.9, 1'499'999'999)}; }, ""},
        {"15 of 100 GB", [](auto& m) { m.disk(15, 100); }, ""},
        {"15 of 150 GB", [](auto& m) { m.disk(15, 150); }, ""},
        {"50 of 1000 GB", [](auto& m) { m.disk(50, 1000); }, ""},
        {"no disk", [](auto& m) { m.disk(0, 0); }, ""},
        {"swap at the bound of a long time", [](auto& m) { m.upFor(15 * day, 2 * GiB); }, ""},
        {"not yet a long time", [](auto& m) { m.upFor(15 * day - 1, 2 * GiB + 1); }, ""},
        {"critical before high",
         [](auto& m) {
             m.signals.thermal = Thermal::veryHot;
             m.stuckApp = "X";
         },
         "heat stuckApp"},
        {"high, and both of no weight",
         [](auto& m) {
             m.signals.thermal = Thermal::hot;
             m.stuckApp = "X";
         },
         "stuckApp heat"},
        {"by severity, then in the order of the rules",
         [](auto& m) {
             m.stuckApp = "X";
             m.disk(1, 1000);
             m.signals.thermal = Thermal::warm;
             m.lowPowerMode = true;
             m.running = {app("A", 100), app("B", 90), lone(1, "/x/mds", 60),
                          lone(2, "/x/hog", 250)};
         },
         "cpuHog:pid:2 stuckApp lowDisk cpuHog:/Applications/A.app cpuHog:/Applications/B.app "
         "spotlight:pid:1 heat lowPower"}};
    for (const auto& [name, upset, expected] : cases) {
        Machine machine;
        upset(machine);
        const DiagnosisResult result = machine.run();
        EXPECT_EQ(ids(result.findings), expected) << name;
        EXPECT_EQ(result.status, statusOf(result.findings)) << name;
    }
    Machine broken;
    broken.signals.uptime = 1e300;
    EXPECT_DEATH(broken.run(), "the uptime is out of range");
}

TEST(Diagnosis, OffersNothingThatDoesNotWorkAndSaysWhatDoes) {
    Machine machine;
    machine.disk(10, 1000);
    machine.lowPowerMode = true;
    machine.stuckApp = "Notes";
    machine.running = {app("Indexer", 90)};
    machine.groups = machine.running;
    const HostAbilities none{
        .missingPanes = {SettingsPane::battery, SettingsPane::wifi},
        .freesSpace = false,
        .rebuildsIndex = false,
        .restarts = false,
    };
    const auto told = [&](const HostAbilities& abilities) {
        const DiagnosisResult result =
            Diagnosis::run(machine, catalog.on(OperatingSystem::linuxDesktop, abilities));
        std::string text;
        for (const Finding& finding : result.findings) {
            text += finding.detail() + " [" +
                    (finding.primaryFix() ? std::string{rawValue(*finding.primaryFix())} : "") +
                    "]\n";
        }
        return text;
    };
    EXPECT_EQ(told({}),
              "Some apps can't be closed once they're stuck. A restart clears them. [restartMac]\n"
              "Only 9.31 GB free. Linux slows down when space runs low. [openTidyvault]\n"
              "It indexes. [rebuildSpotlightIndex]\n"
              "Turn it off in Power settings when you need full speed. [openBatterySettings]\n");
    EXPECT_EQ(told(none),
              "Some apps can't be closed once they're stuck. A restart clears them. Choose Restart "
              "in the menu of your desktop. []\n"
              "Only 9.31 GB free. Linux slows down when space runs low. Empty the trash and remove "
              "what you no longer need. []\n"
              "It indexes. [quitApp]\n"
              "Switch to a balanced power profile when you need full speed. []\n");
}

TEST(Diagnosis, TellsBrowsersByTheirBundleName) {
    EXPECT_EQ(Diagnosis::spotlightLoad(std::vector{lone(1, "/x/mds", 7), lone(2, "/x/y", 9)}), 7);
    EXPECT_FALSE(Diagnosis::isBrowser(app("Opera", 0)));
    EXPECT_TRUE(Diagnosis::isBrowser(app("Opera", 0), OperatingSystem::linuxDesktop));
    EXPECT_FALSE(Diagnosis::isBrowser(app("My Google Chrome", 0)));
    EXPECT_FALSE(Diagnosis::isBrowser(app("Google Chrome Canary", 0)));
    EXPECT_FALSE(Diagnosis::isBrowser(lone(1, "/x/Google Chrome", 0)));
    const std::vector<ProcessGroup> groups{app("Safari", 0)};
    EXPECT_TRUE(Diagnosis::isRunning("Safari", groups));
    EXPECT_FALSE(Diagnosis::isRunning("safari", groups));
}

TEST(Diagnosis, HogsAreGraveByTheSizeOfTheMachine) {
    const std::vector<std::tuple<int, double, Severity>> cases{
        {8, 199, Severity::medium}, {8, 200, Severity::high},     {16, 399, Severity::medium},
        {16, 400, Severity::high},  {4, 199.9, Severity::medium}, {4, 200, Severity::high}};
    for (const auto& [cores, load, severity] : cases) {
        Machine machine;
        machine.signals.coreCount = cores;
        machine.running = {lone(1, "/x/hog", load)};
        EXPECT_EQ(machine.run().hero()->severity(), severity) << cores << " cores, " << load;
    }
}

} // namespace
} // namespace pacelet
